#include "support/PluginRig.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <malloc.h>

namespace
{
using testing::ElementsAre;

int scriptedPriority = 0;

HostDescription withScriptedPriority()
{
    scriptedPriority = 0;
    auto description = PluginRig::plainHost();
    description.threadPriority = []() noexcept { return scriptedPriority; };
    return description;
}

class AudioCallbackTest : public testing::Test
{
protected:
    void runBlock (int length) { rig.runSilence (length, length); }

    PluginRig rig { withScriptedPriority() };
    PluginModel& model = rig.processor.model;
};

TEST_F (AudioCallbackTest, keepsTheHighestPriorityBesideTheCurrentOne)
{
    rig.prepare (48000.0, 64);

    for (const auto priority : { 20, 70, 5 })
    {
        scriptedPriority = priority;
        runBlock (64);
        EXPECT_EQ (model.threadPriority, priority);
    }

    EXPECT_EQ (model.maxThreadPriority, 70);
}

TEST_F (AudioCallbackTest, firesTransportPlayingOnceOnEveryBlock)
{
    auto fired = 0;
    model.channels.add ([&] { ++fired; }, Channels::transportPlaying);
    rig.prepare (48000.0, 64);
    runBlock (64);
    runBlock (1);
    EXPECT_EQ (fired, 2);

    juce::AudioBuffer<float> empty (2, 0);
    rig.process (empty);
    EXPECT_EQ (fired, 3) << "a block without samples";

    juce::AudioBuffer<float> tooLong (2, 500);
    tooLong.clear();
    rig.process (tooLong);
    EXPECT_EQ (fired, 4) << "once for the host's block, not for its pieces";

    rig.prepare (8000.0, 64);
    runBlock (64);
    EXPECT_EQ (fired, 5) << "also where audio passes untouched";
}

TEST_F (AudioCallbackTest, hasPriorityFloatingPointModeAndTransportReadyBeforeItTellsAnyone)
{
    struct Seen
    {
        int priority;
        bool denormalsOff;
        bool audioSeen;
        int blockSize;
        int toProcess;
    };

    std::vector<Seen> seen;
    model.channels.add (
        [&]
        {
            seen.push_back ({ model.threadPriority,
                              juce::FloatVectorOperations::areDenormalsDisabled(),
                              model.audioCallbackSeen,
                              model.currentBlockSize,
                              model.samplesToProcess });
        },
        Channels::transportPlaying);
    rig.prepare (48000.0, 64);
    EXPECT_FALSE (model.audioCallbackSeen);

    scriptedPriority = 42;
    runBlock (64);
    runBlock (32);
    ASSERT_EQ (seen.size(), 2u);
    EXPECT_EQ (seen[0].priority, 42);
    EXPECT_TRUE (seen[0].denormalsOff);
    EXPECT_TRUE (seen[0].audioSeen);
    EXPECT_EQ (seen[0].blockSize, 0) << "the block's size comes after";
    EXPECT_EQ (seen[1].blockSize, 64);
    EXPECT_EQ (seen[1].toProcess, 64);
    EXPECT_FALSE (juce::FloatVectorOperations::areDenormalsDisabled()) << "the host's mode is back";
}

TEST_F (AudioCallbackTest, restoresTheFloatingPointModeWhereAudioPassesToo)
{
    rig.prepare (8000.0, 64);
    runBlock (64);
    EXPECT_FALSE (juce::FloatVectorOperations::areDenormalsDisabled());
}

TEST_F (AudioCallbackTest, processesMultiplesOfTheFactorAndKeepsTheRest)
{
    rig.prepare (48000.0, 64);
    std::vector<int> processed;

    for (int block = 0; block < 4; ++block)
    {
        runBlock (10);
        processed.push_back (model.samplesToProcess);
        EXPECT_EQ (model.currentBlockSize, 10);
    }

    EXPECT_THAT (processed, ElementsAre (8, 12, 8, 12));
}

TEST_F (AudioCallbackTest, aBlockShorterThanTheFactorMayRunNoFilter)
{
    rig.prepare (192000.0, 64);
    std::vector<int> processed;

    for (int block = 0; block < 5; ++block)
    {
        runBlock (3);
        processed.push_back (model.samplesToProcess);
    }

    EXPECT_THAT (processed, ElementsAre (0, 0, 8, 0, 0));
}

TEST_F (AudioCallbackTest, servesNoFilterWhileNothingIsProcessed)
{
    rig.prepare (48000.0, 64);
    rig.waitForWorkers();
    auto& stereo = rig.processor.bandEngine().block (BlockProcessorMode::stereo);
    EXPECT_TRUE (stereo.tapsReady);

    for (int block = 0; block < 3; ++block)
    {
        runBlock (1);
        EXPECT_TRUE (stereo.tapsReady) << block;
    }

    runBlock (1);
    EXPECT_FALSE (stereo.tapsReady) << "the fourth sample makes a whole one";
}

TEST_F (AudioCallbackTest, theOutputGainActsInOneStepAtTheBlocksEdge)
{
    rig.prepare (48000.0, 64);
    const PluginRig::Signal ones (2, std::vector<float> (64, 0.5f));

    for (int block = 0; block < 8; ++block)
        std::ignore = rig.run (ones, 64);

    for (const auto gainDb : { -12.0f, 6.0f, 0.0f })
    {
        rig.set (ParameterIds::outputGain, gainDb);
        const auto output = rig.run (ones, 64);

        for (const auto sample : output[1])
            ASSERT_FLOAT_EQ (sample, 0.5f * std::pow (10.0f, gainDb / 20.0f));
    }
}

TEST_F (AudioCallbackTest, aBypassedBlockTouchesNothingButItsDelay)
{
    rig.prepare (48000.0, 64);
    rig.waitForWorkers();
    auto fired = 0;
    model.channels.add ([&] { ++fired; }, Channels::transportPlaying);
    juce::AudioBuffer<float> buffer (2, 64);
    buffer.clear();
    juce::MidiBuffer noMidi;
    rig.processor.processBlockBypassed (buffer, noMidi);
    EXPECT_FALSE (model.fifosEngaged);
    EXPECT_EQ (model.samplesToProcess, 0);
    EXPECT_EQ (fired, 0);
    EXPECT_TRUE (rig.processor.bandEngine().block (BlockProcessorMode::stereo).tapsReady);
}

TEST_F (AudioCallbackTest, aBypassedMonoBlockIsDelayedToo)
{
    rig.prepare (48000.0, 1024, 1);
    juce::AudioBuffer<float> buffer (1, 1024);
    buffer.clear();
    buffer.setSample (0, 3, 0.5f);
    juce::MidiBuffer noMidi;
    rig.processor.processBlockBypassed (buffer, noMidi);
    EXPECT_EQ (buffer.getSample (0, 3), 0.0f);
    EXPECT_EQ (buffer.getSample (0, 3 + 174), 0.5f);
}

TEST_F (AudioCallbackTest, carriesTheUnfilteredMiddleThroughWhenBothPathsRun)
{
    // A high stereo band and a low mid band: what neither touches comes back as it was.
    rig.set (ParameterIds::mode, 1.0f);
    rig.prepare (48000.0, 64);
    rig.setBand (0, 16000.0f, 6.0f, 5.0f);
    rig.setBand (1, 400.0f, 6.0f, 5.0f);
    rig.set (1, Settings::Parameter::midSide, 0.0f);
    rig.settle();
    EXPECT_TRUE (model.stereoPathActive() && model.midSidePathActive());

    rig.runSilence (4096, 64);
    const auto response = rig.run (signals::impulse (2, 4096, 0), 64);
    const std::vector<double> left (response[0].begin(), response[0].end());
    const std::vector<double> right (response[1].begin(), response[1].end());

    // The bell's own skirts, from its formula, are below 0.1 dB there.
    EXPECT_NEAR (signals::magnitudeDb (left, 3000.0, 48000.0), 0.0, 0.1);
    EXPECT_LT (signals::magnitudeDb (right, 3000.0, 48000.0), -30.0);
    EXPECT_NEAR (signals::magnitudeDb (left, 16000.0, 48000.0), 6.0, 0.3);
    EXPECT_GT (signals::magnitudeDb (right, 400.0, 48000.0), -10.0) << "the mid band sends left to right";
}
TEST_F (AudioCallbackTest, nothingIsKeptForBlocksThatOnlyPass)
{
    const auto bytesInUse = []
    {
        const auto use = mallinfo2();
        return static_cast<std::ptrdiff_t> (use.uordblks + use.hblkhd);
    };

    // Four buffers of two channels would take 64 MB. Where a sanitizer allocates, nothing is counted.
    constexpr auto announced = 1 << 20;
    rig.prepare (48000.0, 64);
    const auto before = bytesInUse();
    rig.prepare (48000.0, announced);
    EXPECT_LT (bytesInUse() - before, 1 << 20);

    if (HasFailure())
        return;

    for (const auto length : { 8193, announced, std::numeric_limits<int>::max() })
    {
        rig.prepare (48000.0, length);
        const auto input = signals::noise (2, 9000, 4);
        EXPECT_EQ (signals::firstDifference (rig.run (input, 9000), input), "") << length;
    }

    rig.prepare (48000.0, 64);
    const auto input = signals::noise (2, 2048, 4);
    EXPECT_EQ (signals::firstDifference (rig.run (input, 64), signals::delayedBy (input, rig.trueLatency())), "");
}

TEST_F (AudioCallbackTest, aBlockGoesByTheMainBypassWithWhichItBegan)
{
    rig.prepare (48000.0, 64);
    rig.set (ParameterIds::outputGain, -6.0f);
    const HostDescription description = PluginRig::plainHost();
    const HostTraits host (description);
    auto changes = 0;

    // Asked on the way through a block: by then another thread may have switched.
    AudioCallback callback (model,
                            rig.processor.bandEngine(),
                            rig.processor.liveAnalysis(),
                            rig.processor.referenceTracks.audition,
                            host,
                            description,
                            [&]
                            {
                                model.setMainBypass (++changes % 2 == 1);
                                return false;
                            });
    callback.prepare();
    callback.updateLatency (model.baseLatency);
    const auto levelOfBlock = [&]
    {
        juce::AudioBuffer<float> buffer (2, 64);

        // So long that what the paths hold is of this value alone.
        for (int channel = 0; channel < 2; ++channel)
            juce::FloatVectorOperations::fill (buffer.getWritePointer (channel), 0.5f, 64);

        callback.process (buffer, 2, 2, nullptr);
        return buffer.getSample (0, 63);
    };

    for (int block = 0; block < 40; ++block)
        std::ignore = levelOfBlock();

    EXPECT_NEAR (levelOfBlock(), 0.5f * std::pow (10.0f, -0.3f), 1.0e-4f) << "begun without, ended with it";
    EXPECT_NEAR (levelOfBlock(), 0.5f, 1.0e-4f);
}
} // namespace
