#pragma once

#include "core/parameters/Settings.h"

/** What the filter mode and the gain scale leave of a gain or a Q that a hand asks for. */
struct GainLimits
{
    FilterMode mode = FilterMode::mix;

    /** The gain scale in percent. At 0 nothing is heard of the bands and nothing is limited. */
    float gainScalePercent = 100.0f;

    /** Half the room's depth in dB. */
    float scaleDb = 12.0f;

    /** The largest gain that Master takes: what the gain scale makes 4 dB of, at most the parameter's end. Infinite in
        Mix. */
    [[nodiscard]] float largestGainDb() const noexcept;

    /** True where the gain that would be heard is too much for Master, whatever the mode is now. */
    [[nodiscard]] bool exceedsMaster (float gainDb) const noexcept;

    /** A depth of the room that Master's limit allows; in Mix the depth as it is. */
    [[nodiscard]] float limitDepth (float depth) const noexcept;

    /** A Q that the mode allows. */
    [[nodiscard]] float limitQ (float q) const noexcept;
};
