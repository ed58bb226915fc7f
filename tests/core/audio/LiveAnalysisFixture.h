#pragma once

#include "support/LiveRig.h"

#include <gtest/gtest.h>

#include <limits>

namespace liveSignals
{
constexpr double rate = 48000.0;

/** What a meter reads before it has measured anything, in LUFS. */
constexpr auto nothing = -std::numeric_limits<float>::infinity();

/** The mixture of the reference figures, which were computed from its formula by an independent program. */
inline PluginRig::Signal referenceMixture (int length)
{
    return signals::tones (
        { { 330, 0.1 }, { 1000, 0.2 }, { 3000, 0.05 }, { 6000, 0.04 }, { 10500, 0.02 }, { 15000, 0.01 } },
        length,
        rate,
        2,
        0.5);
}

inline PluginRig::Signal sine (double frequencyHz, int length, double sampleRate = rate, int channelCount = 2)
{
    return signals::tones ({ { frequencyHz, 0.1 } }, length, sampleRate, channelCount);
}
} // namespace liveSignals

/** A processor that plays, and what its live analysis makes of it. */
class LiveAnalysisFixture : public testing::Test
{
protected:
    void prepare (int blockSize = 512, double sampleRate = liveSignals::rate, int channelCount = 2)
    {
        live.rig.prepare (sampleRate, blockSize, channelCount);
    }

    LiveRig live;
    VelmoraAudioProcessor& processor = live.processor;
    LiveAnalysis& analysis = processor.liveAnalysis();
};
