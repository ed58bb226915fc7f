#include "support/DesignedFilter.h"
#include "support/PluginRig.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <thread>

// Bounded work on several threads at once. Most of what these tests find is found by the thread sanitizer.

namespace
{
using Kind = Settings::Parameter;

/** Runs its functions at the same time, one thread each, and waits for all of them. */
void together (std::initializer_list<std::function<void()>> functions)
{
    std::atomic<int> ready { 0 };
    std::vector<std::thread> threads;

    for (const auto& function : functions)
        threads.emplace_back (
            [&ready, &function, count = static_cast<int> (functions.size())]
            {
                ++ready;

                while (ready < count)
                    std::this_thread::yield();

                function();
            });

    for (auto& thread : threads)
        thread.join();
}

class ThreadHammerTest : public testing::Test
{
protected:
    ThreadHammerTest() { rig.set (ParameterIds::mode, 1.0f); }

    /** The host's audio thread: `count` blocks of random sizes, whose output must be finite. */
    [[nodiscard]] std::function<void()> audio (int count)
    {
        return [this, count]
        {
            std::mt19937 random (1);
            std::uniform_int_distribution<int> anySize (0, 64);
            std::uniform_real_distribution<float> anyValue (-0.5f, 0.5f);
            juce::MidiBuffer noMidi;

            for (int block = 0; block < count; ++block)
            {
                juce::AudioBuffer<float> buffer (2, anySize (random));

                for (int channel = 0; channel < 2; ++channel)
                    for (int sample = 0; sample < buffer.getNumSamples(); ++sample)
                        buffer.setSample (channel, sample, anyValue (random));

                if (block % 50 == 49)
                    rig.processor.processBlockBypassed (buffer, noMidi);
                else
                    rig.processor.processBlock (buffer, noMidi);

                for (int channel = 0; channel < 2; ++channel)
                    for (int sample = 0; sample < buffer.getNumSamples(); ++sample)
                        if (! std::isfinite (buffer.getSample (channel, sample)))
                            ++samplesThatAreNoNumbers;
            }
        };
    }

    /** An automation thread that changes three bands' parameters, within what Master takes as it is. */
    [[nodiscard]] std::function<void()> automation (int firstBand, int changes)
    {
        for (int band = firstBand; band < firstBand + 3; ++band)
            rig.set (band, Kind::active, 1.0f);

        return [this, firstBand, changes]
        {
            std::mt19937 random (static_cast<unsigned> (firstBand));
            std::uniform_int_distribution<int> anyBand (firstBand, firstBand + 2);
            std::uniform_real_distribution<float> anyPart (0.0f, 1.0f);

            for (int change = 0; change < changes; ++change)
            {
                const auto band = anyBand (random);
                rig.set (band, Kind::frequency, 320.0f + 15000.0f * anyPart (random));
                rig.set (band, Kind::gain, 8.0f * anyPart (random) - 4.0f);
                rig.set (band, Kind::q, 0.5f + anyPart (random));
            }
        };
    }

    /** What the timer does on the message thread. */
    [[nodiscard]] std::function<void()> maintenance (int count)
    {
        return [this, count]
        {
            for (int turn = 0; turn < count; ++turn)
            {
                rig.processor.bandEngine().maintainQueues();
                std::this_thread::yield();
            }
        };
    }

    [[nodiscard]] std::function<void()> switching (const char* id, int count)
    {
        return [this, id, count]
        {
            for (int turn = 0; turn < count; ++turn)
            {
                rig.set (id, turn % 2 == 0 ? 0.0f : 1.0f);
                std::this_thread::yield();
            }
        };
    }

    /** Lets what was dropped or cut short follow. */
    void finish()
    {
        for (int turn = 0; turn < 3; ++turn)
        {
            rig.settle();
            rig.processor.bandEngine().maintainQueues();
        }

        rig.settle();
        EXPECT_EQ (samplesThatAreNoNumbers, 0);
    }

    /** The processor sounds like a fresh one with the same parameters. */
    void expectThatTheLastValuesArrived()
    {
        PluginRig fresh;

        for (auto* parameter : rig.processor.getParameters())
        {
            const auto* ranged = dynamic_cast<juce::RangedAudioParameter*> (parameter);
            fresh.set (ranged->paramID, ranged->convertFrom0to1 (ranged->getValue()));
        }

        fresh.prepare (rig.processor.model.sampleRate, 64);
        fresh.settle();

        for (const auto mode : { BlockProcessorMode::stereo, BlockProcessorMode::mid, BlockProcessorMode::side })
        {
            EXPECT_EQ (designedFilter::high (rig, mode), designedFilter::high (fresh, mode)) << static_cast<int> (mode);
            EXPECT_EQ (designedFilter::low (rig, mode), designedFilter::low (fresh, mode)) << static_cast<int> (mode);
        }
    }

    /** Where an impulse comes out of a bypassed block. */
    [[nodiscard]] std::ptrdiff_t bypassedDelay()
    {
        juce::MidiBuffer noMidi;
        juce::AudioBuffer<float> buffer (2, 1024);
        buffer.clear();
        buffer.setSample (0, 0, 1.0f);
        rig.processor.processBlockBypassed (buffer, noMidi);
        const auto* output = buffer.getReadPointer (0);
        return std::find (output, output + buffer.getNumSamples(), 1.0f) - output;
    }

    PluginRig rig;
    std::atomic<int> samplesThatAreNoNumbers { 0 };
};

TEST_F (ThreadHammerTest, parametersFromSeveralThreadsWhileAudioRuns)
{
    rig.prepare (48000.0, 64);
    together ({ audio (400), automation (0, 60), automation (3, 60), automation (6, 60), maintenance (100) });
    finish();
    expectThatTheLastValuesArrived();
}

TEST_F (ThreadHammerTest, ofTwoThreadsThatSwitchTheLastLeavesTheRightLatency)
{
    rig.prepare (48000.0, 64);
    rig.runSilence (64, 64);

    for (int round = 0; round < 1000 && ! HasFailure(); ++round)
    {
        together ({ switching (ParameterIds::mode, 4), switching (ParameterIds::phase, 4) });
        EXPECT_EQ (rig.processor.model.baseLatency, 274) << "round " << round;
        EXPECT_EQ (bypassedDelay(), 274 + 4) << "round " << round;

        // Neither is the message thread, so the host hears by the timer.
        if (round % 100 == 0)
            PluginRig::serveMessagesUntil ([this] { return rig.reportedLatency() == 274 + 4; });
    }
}

TEST_F (ThreadHammerTest, modeAndPhaseSwitchedFromTwoThreadsWhileAudioRuns)
{
    rig.prepare (48000.0, 64);
    rig.runSilence (64, 64); // the part of the delay that joins with the first block
    rig.setBand (0, 8000.0f, 4.0f);
    together ({ audio (400),
                switching (ParameterIds::mode, 100),
                switching (ParameterIds::phase, 100),
                automation (3, 30),
                maintenance (100) });
    finish();
    EXPECT_EQ (rig.processor.model.filterMode(), FilterMode::mix);
    EXPECT_EQ (rig.processor.model.baseLatency, 274);
    PluginRig::serveMessagesUntil ([this] { return rig.reportedLatency() == 274 + 4; });
    expectThatTheLastValuesArrived();
}

TEST_F (ThreadHammerTest, soloMidSideBypassAndScaleWhileAudioRuns)
{
    rig.prepare (48000.0, 64);

    for (int band = 0; band < 6; ++band)
        rig.setBand (band, 1000.0f + 2000.0f * static_cast<float> (band), 6.0f);

    const auto solo = [this]
    {
        for (int turn = 0; turn < 30; ++turn)
        {
            rig.set (turn % 6, Kind::solo, 1.0f);
            rig.set (turn % 6, Kind::solo, 0.0f);
        }
    };
    const auto midSide = [this]
    {
        for (int turn = 0; turn < 60; ++turn)
            rig.set (turn % 6, Kind::midSide, 0.1f * static_cast<float> (turn % 11));

        for (int band = 0; band < 6; ++band)
            rig.set (band, Kind::midSide, 0.5f);
    };
    const auto scale = [this]
    {
        for (int turn = 0; turn < 40; ++turn)
            rig.set (ParameterIds::gainScale, static_cast<float> (5 * turn));

        rig.set (ParameterIds::gainScale, 100.0f);
    };
    together ({ audio (400), solo, midSide, scale, switching (ParameterIds::bypass, 41), maintenance (100) });
    finish();
    EXPECT_FALSE (rig.processor.model.soloActive());
    EXPECT_FALSE (rig.processor.model.mainBypass());
    EXPECT_EQ (rig.processor.model.stereoPathActive(), true);
    EXPECT_EQ (rig.processor.model.midSidePathActive(), false);
}

TEST_F (ThreadHammerTest, offlineAndLiveInTurnWhileAudioRuns)
{
    rig.prepare (48000.0, 64);
    rig.setBand (0, 8000.0f, 4.0f);
    const auto toggle = [this]
    {
        for (int turn = 0; turn < 100; ++turn)
        {
            rig.processor.setNonRealtime (turn % 2 == 0);
            std::this_thread::yield();
        }
    };
    together ({ audio (200),
                toggle,
                automation (1, 20),
                automation (4, 20),
                switching (ParameterIds::bypass, 21),
                switching (ParameterIds::mode, 20),
                maintenance (50) });
    rig.processor.setNonRealtime (false);
    finish();
    expectThatTheLastValuesArrived();
}

TEST_F (ThreadHammerTest, preparedAnewBetweenBlocksWhileParametersChange)
{
    const auto host = [this]
    {
        constexpr std::array rates { 44100.0, 192000.0, 32000.0, 96000.0, 0.0, 48000.0 };

        for (const auto rate : rates)
        {
            rig.processor.setRateAndBufferSizeDetails (rate, 64);
            rig.processor.prepareToPlay (rate, 64);
            audio (30)();
        }
    };
    rig.prepare (48000.0, 64);
    together ({ host, automation (0, 40), automation (3, 40), switching (ParameterIds::phase, 40), maintenance (50) });
    finish();
    expectThatTheLastValuesArrived();
}

TEST_F (ThreadHammerTest, aModeThatChangesDuringAPrepareIsTheOneOfAllFilters)
{
    rig.prepare (48000.0, 64);

    for (int round = 0; round < 20; ++round)
    {
        const auto host = [this, round] { rig.prepare (round % 2 == 0 ? 96000.0 : 48000.0, 64); };
        const auto change = [this, round]
        {
            std::this_thread::sleep_for (std::chrono::microseconds (300 * (round % 7)));
            rig.set (ParameterIds::mode, static_cast<float> (round / 2 % 2));
        };
        together ({ host, change });
        finish();

        const auto expected = rig.designedTaps (BlockProcessorMode::stereo).linearHigh.count();

        for (const auto mode : { BlockProcessorMode::mid, BlockProcessorMode::side })
            ASSERT_EQ (rig.designedTaps (mode).linearHigh.count(), expected) << round;

        PluginRig plain;
        plain.set (ParameterIds::mode, static_cast<float> (round / 2 % 2));
        plain.prepare (rig.processor.model.sampleRate, 64);
        ASSERT_EQ (plain.designedTaps (BlockProcessorMode::stereo).linearHigh.count(), expected) << round;
    }
}

TEST_F (ThreadHammerTest, twoThreadsThatMoveBandsLeaveThePathsThatTheyNeed)
{
    rig.prepare (48000.0, 64);
    rig.setBand (0, 8000.0f, 3.0f);
    rig.setBand (1, 9000.0f, 3.0f);

    for (int round = 0; round < 300; ++round)
    {
        const auto toSide = round % 2 == 0;
        together ({ [&] { rig.set (0, Settings::Parameter::midSide, toSide ? 1.0f : 0.5f); },
                    [&] { rig.set (1, Settings::Parameter::midSide, toSide ? 0.0f : 0.5f); } });
        ASSERT_EQ (rig.processor.model.stereoPathActive(), ! toSide) << round;
        ASSERT_EQ (rig.processor.model.midSidePathActive(), toSide) << round;
    }
}

TEST_F (ThreadHammerTest, sessionsFromABackgroundThreadWhileAudioRuns)
{
    rig.prepare (48000.0, 64);
    rig.setBand (0, 8000.0f, 4.0f);
    rig.setBand (5, 700.0f, -6.0f);
    juce::MemoryBlock session;
    rig.processor.getStateInformation (session);

    const auto restore = [&]
    {
        for (int turn = 0; turn < 10; ++turn)
            rig.processor.setStateInformation (session.getData(), static_cast<int> (session.getSize()));
    };
    const auto save = [this]
    {
        for (int turn = 0; turn < 10; ++turn)
        {
            juce::MemoryBlock saved;
            rig.processor.getStateInformation (saved);
            EXPECT_GT (saved.getSize(), 0u);
        }
    };
    together ({ audio (300), restore, save, maintenance (50) });
    finish();
    EXPECT_EQ (rig.processor.model.getBandValue (0, Kind::gain), 4.0f);
    expectThatTheLastValuesArrived();
}

TEST_F (ThreadHammerTest, listenersComeAndGoWhileAudioFires)
{
    rig.prepare (48000.0, 64);
    std::atomic<int> calls { 0 };
    const auto subscribe = [&]
    {
        for (int turn = 0; turn < 200; ++turn)
        {
            const auto token = rig.processor.model.channels.add ([&calls] { ++calls; }, Channels::transportPlaying);
            rig.processor.model.channels.remove (token);
        }
    };
    together ({ audio (300), subscribe, subscribe });
    const auto before = calls.load();
    rig.runSilence (64, 64);
    EXPECT_EQ (calls, before) << "nobody is left";
}

TEST_F (ThreadHammerTest, instancesOpenAndCloseOnSeveralThreads)
{
    const auto openAndClose = []
    {
        for (int round = 0; round < 5; ++round)
        {
            PluginRig other;
            other.prepare (round % 2 == 0 ? 44100.0 : 96000.0, 64);
            other.setBand (0, 8000.0f, 3.0f);
            other.runSilence (256, 64);
        }
    };
    rig.prepare (48000.0, 64);
    together ({ audio (100), openAndClose, openAndClose, openAndClose });
    finish();
}
} // namespace
