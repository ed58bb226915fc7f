#include "core/ParameterRouter.h"

#include "support/PluginRig.h"
#include "support/RealTimeGuard.h"

#include <gtest/gtest.h>

#include <thread>

namespace
{
using Kind = Settings::Parameter;

/** What the framework calls from the audio thread, counted. Everything that a host brings is made beforehand. */
class AudioThread
{
public:
    AudioThread (VelmoraAudioProcessor& processorToCall, int channelCount, int blockSize)
        : processor (processorToCall), buffer (channelCount, blockSize)
    {
    }

    /** One block, with what it takes added to the counts. */
    void block()
    {
        fill();
        const RealTimeGuard guard;
        processor.processBlock (buffer, noMidi);
        allocations += guard.allocations();
        const auto locks = guard.locks();
        mostLocks = std::max (mostLocks, locks);
        fewestLocks = std::min (fewestLocks, locks);
    }

    void bypassedBlock()
    {
        fill();
        const RealTimeGuard guard;
        processor.processBlockBypassed (buffer, noMidi);
        allocations += guard.allocations();
        mostLocks = std::max (mostLocks, guard.locks());
    }

    /** A parameter's change in the middle of the callback's thread. The framework takes locks of its own here. */
    void change (const juce::String& id, float value)
    {
        const RealTimeGuard guard;
        processor.model.setParameterValue (id, value);
        allocations += guard.allocations();
    }

    void resetCounts()
    {
        allocations = 0;
        mostLocks = 0;
        fewestLocks = 1000;
    }

    int allocations = 0;
    int mostLocks = 0;
    int fewestLocks = 1000;

private:
    void fill() noexcept
    {
        for (int channel = 0; channel < buffer.getNumChannels(); ++channel)
            for (int sample = 0; sample < buffer.getNumSamples(); ++sample)
                buffer.setSample (channel, sample, 0.1f * static_cast<float> (sample % 7) - 0.3f);
    }

    VelmoraAudioProcessor& processor;
    juce::AudioBuffer<float> buffer;
    juce::MidiBuffer noMidi;
};

/** Locks that a block takes: the one around its notification. Builds with sanitizers do not count. */
const int lockOfTheNotification = RealTimeGuard::countsLocks() ? 1 : 0;

/** And one of a worker's queue, where a rebuild asks for a new design. */
const int lockOfAPost = RealTimeGuard::countsLocks() ? 1 : 0;

struct RealTimeCase
{
    double sampleRate;
    int channelCount;
    bool offline;
};

class RealTimeTest : public testing::TestWithParam<RealTimeCase>
{
protected:
    void SetUp() override
    {
        if (GetParam().offline)
            rig.renderOffline();

        prepare (GetParam().sampleRate);
        rig.setBand (0, 8000.0f, 3.0f);
        rig.setBand (1, 500.0f, -3.0f);
        rig.setBand (2, 4000.0f, 2.0f);
        rig.set (2, Kind::midSide, 0.2f);
        rig.settle();
    }

    void prepare (double sampleRate) { rig.prepare (sampleRate, blockSize, GetParam().channelCount); }

    /** Runs a function on a thread of its own, as the host's audio thread. */
    template <typename Function>
    void onTheAudioThread (Function&& function)
    {
        std::thread thread (
            [&]
            {
                AudioThread audio (rig.processor, GetParam().channelCount, blockSize);
                function (audio);
            });
        thread.join();
    }

    static constexpr int blockSize = 64;
    PluginRig rig;
};

TEST_P (RealTimeTest, aBlockAllocatesNothingAndTakesTheNotifyLockAlone)
{
    onTheAudioThread (
        [] (AudioThread& audio)
        {
            for (int block = 0; block < 50; ++block)
                audio.block();

            EXPECT_EQ (audio.allocations, 0);
            EXPECT_EQ (audio.mostLocks, lockOfTheNotification);
            EXPECT_EQ (audio.fewestLocks, lockOfTheNotification);
        });
}

TEST_P (RealTimeTest, aBypassedBlockTakesNothingAtAll)
{
    onTheAudioThread (
        [] (AudioThread& audio)
        {
            for (int block = 0; block < 10; ++block)
                audio.bypassedBlock();

            EXPECT_EQ (audio.allocations, 0);
            EXPECT_EQ (audio.mostLocks, 0);
        });
}

TEST_P (RealTimeTest, aBlockLargerThanAnnouncedAllocatesNothing)
{
    rig.prepare (GetParam().sampleRate, 10, GetParam().channelCount);
    rig.settle();
    onTheAudioThread (
        [] (AudioThread& audio)
        {
            for (int block = 0; block < 10; ++block)
                audio.block();

            EXPECT_EQ (audio.allocations, 0);
            EXPECT_EQ (audio.mostLocks, lockOfTheNotification);
        });
}

TEST_P (RealTimeTest, parametersChangedOnTheAudioThreadAllocateNothing)
{
    std::vector<std::pair<juce::String, std::vector<float>>> changes;

    for (const auto band : { 0, 1, 9 })
    {
        changes.push_back ({ ParameterIds::ofBand (band, Kind::frequency), { 2000.0f, 700.0f, 9000.0f } });
        changes.push_back ({ ParameterIds::ofBand (band, Kind::gain), { 3.5f, -2.0f, 0.0f, 1.0f } });
        changes.push_back ({ ParameterIds::ofBand (band, Kind::q), { 0.7f, 2.5f } });
        changes.push_back ({ ParameterIds::ofBand (band, Kind::highShelf), { 1.0f, 0.0f } });
        changes.push_back ({ ParameterIds::ofBand (band, Kind::bypass), { 1.0f, 0.0f } });
        changes.push_back ({ ParameterIds::ofBand (band, Kind::midSide), { 0.3f, 0.8f, 0.5f } });
        changes.push_back ({ ParameterIds::ofBand (band, Kind::solo), { 1.0f, 0.0f } });
        changes.push_back ({ ParameterIds::ofBand (band, Kind::active), { 1.0f } });
    }

    changes.push_back ({ ParameterIds::outputGain, { -3.0f, 0.0f } });
    changes.push_back ({ ParameterIds::gainScale, { 150.0f, 80.0f, 100.0f } });
    changes.push_back ({ ParameterIds::bypass, { 1.0f, 0.0f } });
    changes.push_back ({ ParameterIds::currentPreset, { 3.0f, 131.0f } });

    onTheAudioThread (
        [&] (AudioThread& audio)
        {
            audio.block();

            for (const auto& [id, values] : changes)
                for (const auto value : values)
                {
                    audio.resetCounts();
                    audio.change (id, value);
                    EXPECT_EQ (audio.allocations, 0) << id << " " << value;

                    for (int block = 0; block < 4; ++block)
                        audio.block();

                    EXPECT_EQ (audio.allocations, 0) << "blocks after " << id << " " << value;
                    EXPECT_EQ (audio.mostLocks, lockOfTheNotification) << id;
                }
        });
}

TEST_P (RealTimeTest, modeAndPhaseSwitchesRebuildWithoutAllocating)
{
    const juce::String mode (ParameterIds::mode);
    const juce::String phase (ParameterIds::phase);
    onTheAudioThread (
        [&] (AudioThread& audio)
        {
            audio.block();

            for (const auto* id : { &mode, &phase, &mode, &phase })
            {
                audio.resetCounts();
                audio.change (*id, rig.processor.model.filterMode() == FilterMode::mix ? 0.0f : 1.0f);
                audio.change (*id, 1.0f);
                audio.change (*id, 0.0f);
                EXPECT_EQ (audio.allocations, 0) << *id;

                for (int block = 0; block < 16; ++block)
                    audio.block();

                EXPECT_EQ (audio.allocations, 0) << "rebuilds after " << *id;

                // Offline the new design is made at once, from what is kept with the queue, and its curve published.
                EXPECT_LE (audio.mostLocks, lockOfTheNotification + (GetParam().offline ? 2 : 1) * lockOfAPost);
            }
        });
}

TEST_P (RealTimeTest, aNewRateLeavesTheCallbackAsItWas)
{
    for (const auto rate : { 44100.0, 192000.0, 32000.0, 96000.0 })
    {
        prepare (rate);
        onTheAudioThread (
            [] (AudioThread& audio)
            {
                for (int block = 0; block < 20; ++block)
                    audio.block();

                EXPECT_EQ (audio.allocations, 0);
                EXPECT_EQ (audio.mostLocks, lockOfTheNotification);
            });
    }
}

TEST_P (RealTimeTest, theListenerTakesNoMoreThanTheQueuesLocksAndTheNotifyLock)
{
    ParameterRouter router (rig.processor.model,
                            rig.processor.bandEngine(),
                            { [this] { rig.processor.updateLatency (false); }, [] (int) {} });

    struct Expectation
    {
        juce::String id;
        float value;
        int liveLocks;
    };

    const auto stereo = GetParam().channelCount == 2;
    const std::vector<Expectation> expectations {
        { ParameterIds::ofBand (0, Kind::gain), 2.0f, 4 },
        { ParameterIds::ofBand (0, Kind::frequency), 7000.0f, 4 },
        { ParameterIds::ofBand (0, Kind::midSide), 0.5f, stereo ? 4 : 0 },
        { ParameterIds::ofBand (0, Kind::solo), 1.0f, 4 },
        { ParameterIds::ofBand (0, Kind::solo), 0.0f, 4 + 4 },
        { ParameterIds::phase, 1.0f, 0 },

        // The queues, for the first band's gain as the mode has it, and the channel that tells whether Master fits.
        { ParameterIds::mode, 1.0f, 4 + 1 },
        { ParameterIds::currentPreset, 5.0f, 0 },

        // The barrier, all active bands at once for each of four modes, the channel.
        { ParameterIds::gainScale, 100.0f, 1 + 4 + 1 },
    };

    onTheAudioThread (
        [&] (AudioThread&)
        {
            for (const auto& [id, value, liveLocks] : expectations)
            {
                const RealTimeGuard guard;
                router.parameterChanged (id, value);
                EXPECT_EQ (guard.allocations(), 0) << id;

                if (! GetParam().offline)
                {
                    EXPECT_EQ (guard.locks(), RealTimeGuard::countsLocks() ? liveLocks : 0) << id;
                }
            }
        });
}

INSTANTIATE_TEST_SUITE_P (Streams,
                          RealTimeTest,
                          testing::Values (RealTimeCase { 48000.0, 2, false },
                                           RealTimeCase { 48000.0, 2, true },
                                           RealTimeCase { 48000.0, 1, false },
                                           RealTimeCase { 96000.0, 2, false },
                                           RealTimeCase { 192000.0, 2, false },
                                           RealTimeCase { 192000.0, 1, true }),
                          [] (const auto& tested)
                          {
                              return std::to_string (static_cast<int> (tested.param.sampleRate))
                                     + (tested.param.channelCount == 2 ? "stereo" : "mono")
                                     + (tested.param.offline ? "Offline" : "Live");
                          });
} // namespace
