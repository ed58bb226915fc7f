#pragma once

#include "gui/band/GainLimits.h"

/** What a typed gain becomes. */
struct TypedGain
{
    float gainDb = 0.0f;

    /** It lies beyond the room's scale, which has to open first. */
    bool widensScale = false;
};

/** Limits a typed gain to the parameter's range, and in Master to what the mode allows. */
[[nodiscard]] TypedGain typedGain (double number, const GainLimits& limits) noexcept;
