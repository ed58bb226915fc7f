#pragma once

#include "dsp/meters/BandAnalyser.h"

#include <array>
#include <atomic>
#include <span>

/** How far each band is from its target, renewed by every pass of the analysis.

    Values in dB; a positive one says that the band should rise. One thread updates; any thread may read `gainTarget`
    and `maxChange`, which are relaxed. */
class GainTargets
{
public:
    using Values = std::span<const float, analysisBandCount>;

    /** Computes the ten values from measured levels and targets, less the difference of the overall loudness, so that
        they show tonal balance alone. A value that is not finite becomes 0. Real-time safe.

        @param lufsDifference target's loudness minus the measured one
        @param alreadyReady   true once both the smart bands and the targets are ready; then `maxChange` is set to 0
        @return true when a band moved by more than 0.05 dB since the last update */
    bool updateGainTargets (Values bandLevels, Values targets, float lufsDifference, bool alreadyReady) noexcept;

    /** Sets the ten values to 0. The values to compare the next with stay. Any thread. */
    void clear() noexcept;

    std::array<std::atomic<float>, analysisBandCount> gainTarget {};

    /** The largest move of the last update, in dB. */
    std::atomic<float> maxChange { 0.0f };

private:
    std::array<float, analysisBandCount> previousGainTarget {};
};
