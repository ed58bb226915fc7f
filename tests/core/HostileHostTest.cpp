#include "support/DesignedFilter.h"
#include "support/PluginRig.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <thread>

namespace
{
using Kind = Settings::Parameter;

constexpr auto notANumber = std::numeric_limits<float>::quiet_NaN();
constexpr auto infinity = std::numeric_limits<float>::infinity();

bool allFinite (const PluginRig::Signal& signal)
{
    for (const auto& channel : signal)
        for (const auto sample : channel)
            if (! std::isfinite (sample))
                return false;

    return true;
}

TEST (HostileHostTest, blocksLargerThanAnnouncedAreProcessedWhole)
{
    for (const auto announced : { 1, 5, 64, 100 })
        for (const auto rate : { 48000.0, 192000.0 })
        {
            PluginRig rig;
            rig.prepare (rate, announced);
            rig.waitForWorkers();
            const auto input = signals::noise (2, 20000, 31);
            std::mt19937 random (5);
            std::uniform_int_distribution<int> anySize (1, 3000);
            const auto output = rig.run (input, [&] { return anySize (random); });
            EXPECT_EQ (signals::firstDifference (output, signals::delayedBy (input, rig.trueLatency())), "")
                << announced << " at " << rate;
        }
}

TEST (HostileHostTest, emptyBlocksChangeNothing)
{
    PluginRig rig;
    rig.prepare (48000.0, 64);
    rig.waitForWorkers();
    const auto input = signals::noise (2, 5000, 32);
    auto empty = false;
    juce::AudioBuffer<float> nothing (2, 0);
    const auto output = rig.run (input,
                                 [&]
                                 {
                                     empty = ! empty;
                                     rig.process (nothing);
                                     return empty ? 33 : 64;
                                 });
    EXPECT_EQ (signals::firstDifference (output, signals::delayedBy (input, rig.trueLatency())), "");

    juce::MidiBuffer noMidi;
    rig.processor.processBlockBypassed (nothing, noMidi);
}

TEST (HostileHostTest, withoutPrepareAudioPasses)
{
    PluginRig rig;
    rig.set (ParameterIds::outputGain, 6.0f);
    rig.setBand (0, 8000.0f, 6.0f);
    const auto input = signals::noise (2, 1000, 33);
    EXPECT_EQ (signals::firstDifference (rig.run (input, 100), input), "");
    juce::AudioBuffer<float> buffer (2, 100);
    buffer.clear();
    buffer.setSample (1, 7, 0.5f);
    juce::MidiBuffer noMidi;
    rig.processor.processBlockBypassed (buffer, noMidi);
    EXPECT_EQ (buffer.getSample (1, 7), 0.5f);
}

TEST (HostileHostTest, aBlockSizeOfZeroOrBelowPassesAudio)
{
    for (const auto size : { 0, -1, -512 })
    {
        PluginRig rig;
        rig.prepare (48000.0, size);
        const auto input = signals::noise (2, 1000, 34);
        EXPECT_EQ (signals::firstDifference (rig.run (input, 100), input), "") << size;
    }
}

TEST (HostileHostTest, oddRatesStayFiniteAndComeBack)
{
    PluginRig rig;
    rig.set (ParameterIds::mode, 1.0f);
    rig.setBand (0, 8000.0f, 6.0f);
    rig.setBand (1, 500.0f, 6.0f);

    for (const auto rate :
         { 64000.0, 384000.0, 1.0, 0.0, 32000.0, 44099.0, 50000.0, 768000.0, -48000.0, 192000.0, 64000.0 })
    {
        rig.prepare (rate, 64);
        rig.settle();
        EXPECT_TRUE (allFinite (rig.run (signals::noise (2, 4000, 35), 64))) << rate;
    }

    rig.prepare (48000.0, 64);
    rig.settle();
    EXPECT_NEAR (designedFilter::highLevelDb (rig, 8000.0), 6.0, 0.1);
    EXPECT_TRUE (allFinite (rig.run (signals::noise (2, 4000, 35), 64)));
}

TEST (HostileHostTest, anUnlistedRateWithoutAnyFactorStillDelays)
{
    PluginRig rig;
    rig.prepare (64000.0, 64);
    rig.waitForWorkers();
    const auto input = signals::noise (2, 4000, 36);
    const auto output = rig.run (input, 64);
    EXPECT_TRUE (allFinite (output));

    // The delays of the table's row, and the one sample that a factor of 1 leaves in the FIFO.
    EXPECT_EQ (signals::firstDifference (output, signals::delayedBy (input, 264 + 60 + 1)), "");
}

class LayoutTest : public testing::TestWithParam<std::pair<int, int>>
{
};

TEST_P (LayoutTest, passesTheInputsAndClearsTheOtherOutputs)
{
    const auto [inputs, outputs] = GetParam();

    // The processor refuses such layouts, so the callback stands here without it.
    PluginRig rig;
    rig.prepare (48000.0, 64);
    auto& model = rig.processor.model;
    const auto description = PluginRig::plainHost();
    const HostTraits host (description);
    AudioCallback callback (model,
                            rig.processor.bandEngine(),
                            rig.processor.liveAnalysis(),
                            rig.processor.referenceTracks.audition,
                            host,
                            description,
                            [] { return false; });
    model.numChannels = inputs;
    model.isStereo = inputs == 2;
    callback.updateLatency (model.baseLatency);
    callback.prepare();

    const auto channels = std::max (inputs, outputs);
    juce::AudioBuffer<float> buffer (channels, 64);

    for (const auto bypassed : { false, true })
    {
        // The line of a bypassed block is empty at first, and longer than all of these blocks.
        for (int block = 0; block < 2; ++block)
        {
            for (int channel = 0; channel < channels; ++channel)
                juce::FloatVectorOperations::fill (buffer.getWritePointer (channel), 0.25f, 64);

            if (bypassed)
                callback.processBypassed (buffer, inputs, outputs);
            else
                callback.process (buffer, inputs, outputs, nullptr);

            for (int channel = 0; channel < outputs; ++channel)
            {
                const auto isDelayed = bypassed && channel < std::min (inputs, 2);
                const auto wanted = channel < inputs && ! isDelayed ? 0.25f : 0.0f;
                EXPECT_EQ (buffer.getSample (channel, 5), wanted)
                    << "channel " << channel << (bypassed ? " bypassed" : "");
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P (Channels,
                          LayoutTest,
                          testing::Values (std::pair (0, 0),
                                           std::pair (0, 2),
                                           std::pair (2, 0),
                                           std::pair (1, 2),
                                           std::pair (2, 1),
                                           std::pair (3, 3),
                                           std::pair (6, 6),
                                           std::pair (2, 6),
                                           std::pair (6, 2)),
                          [] (const auto& tested) {
                              return std::to_string (tested.param.first) + "to" + std::to_string (tested.param.second);
                          });

TEST (HostileHostTest, aBufferWithFewerChannelsThanTheLayoutPasses)
{
    PluginRig rig;
    rig.prepare (48000.0, 64);
    juce::AudioBuffer<float> mono (1, 64);
    juce::FloatVectorOperations::fill (mono.getWritePointer (0), 0.5f, 64);
    rig.process (mono);
    EXPECT_EQ (mono.getSample (0, 10), 0.5f);

    juce::AudioBuffer<float> none (0, 64);
    rig.process (none);
    juce::MidiBuffer noMidi;
    rig.processor.processBlockBypassed (none, noMidi);
    rig.processor.processBlockBypassed (mono, noMidi);
}

class BadSamplesTest : public testing::TestWithParam<float>
{
};

TEST_P (BadSamplesTest, areGoneAfterOneFiltersLength)
{
    for (const auto phase : { 0.0f, 1.0f })
        for (const auto solo : { false, true })
        {
            PluginRig rig;
            rig.set (ParameterIds::mode, 1.0f);
            rig.set (ParameterIds::phase, phase);
            rig.prepare (48000.0, 64);
            rig.setBand (0, 8000.0f, 6.0f);
            rig.setBand (1, 500.0f, 6.0f);
            rig.setBand (2, 3000.0f, 6.0f);
            rig.set (2, Kind::midSide, 0.1f);
            rig.set (0, Kind::solo, solo ? 1.0f : 0.0f);
            rig.settle();

            auto input = signals::noise (2, 20000, 37);

            for (std::size_t index = 1000; index < 1100; ++index)
            {
                input[0][index] = GetParam();
                input[1][index + 50] = -GetParam();
            }

            auto clean = input;

            for (auto& channel : clean)
                for (std::size_t index = 1000; index < 1150; ++index)
                    channel[index] = 0.0f;

            const auto output = rig.run (input, 64);
            EXPECT_TRUE (allFinite (output));

            // The longest filter, the delays, and the rate filters' ringing, which falls by 120 dB in some hundred
            // samples; what is left of a full-scale error is measured against a render of clean samples.
            rig.runSilence (8192, 64);
            const auto wanted = rig.run (clean, 64);
            PluginRig::Signal tail, wantedTail;

            for (std::size_t channel = 0; channel < 2; ++channel)
            {
                tail.emplace_back (output[channel].begin() + 6000, output[channel].end());
                wantedTail.emplace_back (wanted[channel].begin() + 6000, wanted[channel].end());
            }

            EXPECT_EQ (signals::firstDifference (tail, wantedTail, 1.0e-5f), "") << phase << solo;
        }
}

std::string nameOfSample (std::size_t index)
{
    constexpr std::array names { "notANumber",       "infinity", "minusInfinity", "denormal",
                                 "smallestDenormal", "huge",     "largest" };
    return names[index];
}

INSTANTIATE_TEST_SUITE_P (Samples,
                          BadSamplesTest,
                          testing::Values (notANumber,
                                           infinity,
                                           -infinity,
                                           1.0e-40f,
                                           std::numeric_limits<float>::denorm_min(),
                                           1.0e30f,
                                           std::numeric_limits<float>::max()),
                          [] (const auto& tested) { return nameOfSample (tested.index); });

TEST (HostileHostTest, badSamplesThatPassUntouchedStayAsTheyAre)
{
    PluginRig rig;
    rig.prepare (32000.0, 64);
    const auto output = rig.run ({ { notANumber, infinity, 1.0e30f }, { -infinity, 1.0e-40f, 0.5f } }, 3);
    EXPECT_TRUE (std::isnan (output[0][0]));
    EXPECT_EQ (output[0][1], infinity);
    EXPECT_EQ (output[0][2], 1.0e30f);
    EXPECT_EQ (output[1][0], -infinity);
    EXPECT_EQ (output[1][1], 1.0e-40f);
    EXPECT_EQ (output[1][2], 0.5f);
}

TEST (HostileHostTest, preparingTwiceIsLikePreparingOnce)
{
    PluginRig rig;
    rig.set (ParameterIds::mode, 1.0f);
    rig.setBand (0, 8000.0f, 6.0f);
    rig.prepare (48000.0, 64);
    rig.prepare (48000.0, 64);
    rig.settle();

    PluginRig once;
    once.set (ParameterIds::mode, 1.0f);
    once.setBand (0, 8000.0f, 6.0f);
    once.prepare (48000.0, 64);
    once.settle();
    const auto input = signals::noise (2, 4000, 38);
    EXPECT_EQ (signals::firstDifference (rig.run (input, 64), once.run (input, 64)), "");
}

TEST (HostileHostTest, aHundredInstancesOpenAndClose)
{
    for (int round = 0; round < 100; ++round)
    {
        PluginRig rig;

        if (round % 3 != 0)
            rig.prepare (round % 2 == 0 ? 48000.0 : 192000.0, 64);

        rig.setBand (0, 8000.0f, 3.0f);

        if (round % 5 == 0)
            rig.runSilence (128, 64);

        // Closed while its workers may still be at work.
    }
}

TEST (HostileHostTest, twentyInstancesDoNotMeet)
{
    std::vector<std::unique_ptr<PluginRig>> rigs;
    constexpr std::array rates { 44100.0, 48000.0, 88200.0, 96000.0, 176400.0, 192000.0 };

    for (std::size_t index = 0; index < 20; ++index)
    {
        rigs.push_back (std::make_unique<PluginRig>());
        rigs.back()->prepare (rates[index % rates.size()], 64, 1 + static_cast<int> (index % 2));
        rigs.back()->setBand (0, 8000.0f, 0.2f * static_cast<float> (index));
    }

    for (std::size_t index = 0; index < rigs.size(); ++index)
    {
        auto& rig = *rigs[index];
        rig.settle();
        PluginRig alone;
        const auto channels = 1 + static_cast<int> (index % 2);
        alone.prepare (rates[index % rates.size()], 64, channels);
        alone.setBand (0, 8000.0f, 0.2f * static_cast<float> (index));
        alone.settle();
        const auto input = signals::noise (channels, 2000, 39);
        EXPECT_EQ (signals::firstDifference (rig.run (input, 64), alone.run (input, 64)), "") << index;
    }
}

TEST (HostileHostTest, aSessionComesFromABackgroundThread)
{
    juce::MemoryBlock session;
    {
        PluginRig saved;
        saved.set (ParameterIds::mode, 1.0f);
        saved.setBand (0, 8000.0f, 6.0f);
        saved.processor.getStateInformation (session);
    }

    PluginRig rig;
    rig.prepare (48000.0, 64);
    std::thread background (
        [&] { rig.processor.setStateInformation (session.getData(), static_cast<int> (session.getSize())); });
    background.join();
    rig.settle();
    EXPECT_EQ (rig.processor.model.filterMode(), FilterMode::mix);
    EXPECT_NEAR (designedFilter::highLevelDb (rig, 8000.0), 6.0, 0.1);
    EXPECT_TRUE (rig.processor.model.stateInformationSet());
}

TEST (HostileHostTest, damagedSessionsLeaveTheParameters)
{
    PluginRig rig;
    rig.prepare (48000.0, 64);
    rig.setBand (0, 8000.0f, 3.0f);
    juce::MemoryBlock session;
    rig.processor.getStateInformation (session);

    for (const auto size : { std::size_t { 0 }, std::size_t { 1 }, std::size_t { 8 }, session.getSize() / 2 })
    {
        rig.processor.setStateInformation (session.getData(), static_cast<int> (size));
        EXPECT_EQ (rig.processor.model.getBandValue (0, Kind::gain), 3.0f) << size;
    }

    rig.processor.setStateInformation (nullptr, 0);
    EXPECT_EQ (rig.processor.model.getBandValue (0, Kind::gain), 3.0f);
}
} // namespace
