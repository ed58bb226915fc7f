#include "app/HeardResponse.h"

#include "app/AskedResponse.h"
#include "app/OfflineRenderer.h"
#include "support/PluginRig.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace
{
using Signal = HeardResponse::Signal;

EqualiserSettings settingsOf (std::vector<BandOption> bands, FilterPhase phase = FilterPhase::linear)
{
    EqualiserSettings settings;
    settings.mode = FilterMode::mix;
    settings.phase = phase;
    settings.bands = std::move (bands);
    settings.outputGainDb = 6.0f;
    return settings;
}

/** What a sine in the middle or on the sides comes out as, in dB, without the output gain. */
double levelOfSine (double rate, double frequency, Signal signal, const EqualiserSettings& settings)
{
    constexpr int length = 48000;
    constexpr int margin = 12000;
    OfflineRenderer renderer (rate, 2, 512, settings);
    const auto phaseStep = 2.0 * std::numbers::pi * frequency / rate;
    auto in = 0.0;
    auto out = 0.0;
    auto position = 0;

    renderer.render (
        length,
        [&] (juce::AudioBuffer<float>& block, juce::int64 start, int count)
        {
            for (int index = 0; index < count; ++index)
            {
                const auto value = 0.25 * std::sin (phaseStep * static_cast<double> (start + index));
                block.setSample (0, index, static_cast<float> (value));
                block.setSample (1, index, static_cast<float> (signal == Signal::middle ? value : -value));
            }
        },
        [&] (const juce::AudioBuffer<float>& block, int start, int count)
        {
            for (int index = 0; index < count; ++index, ++position)
                if (position >= margin && position < length - margin)
                {
                    const auto value = static_cast<double> (block.getSample (0, start + index));
                    const auto input = 0.25 * std::sin (phaseStep * position);
                    in += input * input;
                    out += value * value;
                }
        });

    return 10.0 * std::log10 (out / in) - static_cast<double> (settings.outputGainDb);
}

TEST (HeardResponseTest, isWhatSinesComeOutAs)
{
    for (const auto rate : { 44100.0, 96000.0, 192000.0 })
        for (const auto phase : { FilterPhase::linear, FilterPhase::minimum })
        {
            const auto settings = settingsOf ({ BandOption::parse ("500,6,1"),
                                                BandOption::parse ("3000,-6,1,ms=0"),
                                                BandOption::parse ("9000,4,1,shelf,ms=0.75") },
                                              phase);
            const HeardResponse heard (rate, 2, settings);

            for (const auto signal : { Signal::middle, Signal::sides })
                for (const auto frequency : { 500.0, 1500.0, 3000.0, 12000.0 })
                    EXPECT_NEAR (
                        heard.decibelsAt (signal, frequency), levelOfSine (rate, frequency, signal, settings), 0.02)
                        << rate << " Hz, " << frequency << " Hz";
        }
}

TEST (HeardResponseTest, ofOneChannelIsThatOfTheMiddle)
{
    const auto settings = settingsOf ({ BandOption::parse ("3000,-6,1") });
    const HeardResponse mono (48000.0, 1, settings);
    const HeardResponse stereo (48000.0, 2, settings);
    EXPECT_NEAR (mono.decibelsAt (Signal::middle, 3000.0), stereo.decibelsAt (Signal::middle, 3000.0), 1.0e-4);
    EXPECT_EQ (mono.decibelsAt (Signal::sides, 3000.0), mono.decibelsAt (Signal::middle, 3000.0));
}

/** Three times 0.25 less 2, in a filter of linear phase. */
TEST (HeardResponseTest, isNegativeWhereThePolarityIsTurned)
{
    const auto cut = BandOption::parse ("3000,-12,1");
    const auto value = HeardResponse (48000.0, 2, settingsOf ({ cut, cut, cut })).at (Signal::middle, 3000.0);
    EXPECT_NEAR (value.real(), 3.0 * std::pow (10.0, -12.0 / 20.0) - 2.0, 0.02);
    EXPECT_NEAR (value.imag(), 0.0, 0.001);
}

TEST (AskedResponseTest, isWhatTheFiltersAreFittedTo)
{
    const auto settings = settingsOf (
        { BandOption::parse ("400,3,1.4"), BandOption::parse ("4000,-4,0.7"), BandOption::parse ("4000,-4,0.7,ms=0") });
    OfflineRenderer renderer (48000.0, 2, 512, settings);
    const AskedResponse asked (renderer.processor());
    const HeardResponse heard (48000.0, 2, settings);

    for (const auto frequency : { 400.0, 4000.0, 8000.0 })
    {
        EXPECT_NEAR (
            20.0 * std::log10 (asked.at (Signal::middle, frequency)), heard.decibelsAt (Signal::middle, frequency), 0.2)
            << frequency;
        EXPECT_NEAR (
            20.0 * std::log10 (asked.at (Signal::sides, frequency)), heard.decibelsAt (Signal::sides, frequency), 0.2)
            << frequency;
    }

    EXPECT_TRUE (asked.acts (2, Signal::middle));
    EXPECT_FALSE (asked.acts (2, Signal::sides));
    EXPECT_TRUE (asked.acts (0, Signal::sides));
    EXPECT_FALSE (asked.acts (5, Signal::middle));
}
} // namespace
