#pragma once

#include "app/EqualiserSettings.h"
#include "app/SmartBandsChoice.h"

#include <vector>

/** Bands found by least squares, and the output gain with which they are no jump in level. */
struct FittedBandsChoice
{
    std::vector<BandOption> bands;
    float outputGainDb = 0.0f;

    /** @param sampleRate    in Hz; @param settings whose mode and phase the bands are for
        @param amountPercent how much of the distance they are to cover */
    [[nodiscard]] static FittedBandsChoice
    of (const TargetDistance& distance, double sampleRate, const EqualiserSettings& settings, float amountPercent);
};
