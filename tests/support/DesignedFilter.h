#pragma once

#include "support/PluginRig.h"

#include <vector>

/** Looks at the filters that one mode's worker designed last. Each waits for the workers. */
namespace designedFilter
{
inline std::vector<double> high (PluginRig& rig, BlockProcessorMode mode = BlockProcessorMode::stereo)
{
    const auto sets = rig.designedTaps (mode);
    const auto taps = sets.linearHigh.taps();
    return { taps.begin(), taps.end() };
}

inline std::vector<double> low (PluginRig& rig, BlockProcessorMode mode = BlockProcessorMode::stereo)
{
    const auto sets = rig.designedTaps (mode);
    const auto taps = sets.low.taps();
    return { taps.begin(), taps.end() };
}

/** Level of the filter for the high bands at a frequency, in dB, at a host rate of 48 kHz. */
inline double highLevelDb (PluginRig& rig, double frequencyHz, BlockProcessorMode mode = BlockProcessorMode::stereo)
{
    return signals::magnitudeDb (high (rig, mode), frequencyHz, 48000.0);
}
} // namespace designedFilter
