#include "app/OfflineRenderer.h"

#include "support/PluginRig.h"
#include "support/SignalMatchers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{
constexpr std::array rates { 44100.0, 48000.0, 88200.0, 96000.0, 176400.0, 192000.0 };

PluginRig::Signal
rendered (const PluginRig::Signal& input, double rate, int blockSize, const EqualiserSettings& settings)
{
    const auto channelCount = static_cast<int> (input.size());
    OfflineRenderer renderer (rate, channelCount, blockSize, settings);
    PluginRig::Signal output (input.size());

    renderer.render (
        static_cast<juce::int64> (input[0].size()),
        [&] (juce::AudioBuffer<float>& block, juce::int64 start, int count)
        {
            for (int channel = 0; channel < channelCount; ++channel)
                block.copyFrom (channel, 0, input[static_cast<std::size_t> (channel)].data() + start, count);
        },
        [&] (const juce::AudioBuffer<float>& block, int start, int count)
        {
            for (int channel = 0; channel < channelCount; ++channel)
            {
                const auto* samples = block.getReadPointer (channel, start);
                auto& target = output[static_cast<std::size_t> (channel)];
                target.insert (target.end(), samples, samples + count);
            }
        });

    return output;
}

EqualiserSettings settingsOf (FilterMode mode, FilterPhase phase, std::vector<BandOption> bands = {})
{
    EqualiserSettings settings;
    settings.mode = mode;
    settings.phase = phase;
    settings.bands = std::move (bands);
    return settings;
}

/** Low and high bands on left and right, on mid and on side, so that every path runs. */
std::vector<BandOption> bandsOnEveryPath()
{
    return { BandOption::parse ("400,3,1"),         BandOption::parse ("1200,-4,2"),
             BandOption::parse ("2500,4,1.4"),      BandOption::parse ("9000,-3,1,shelf"),
             BandOption::parse ("800,2,1,ms=0"),    BandOption::parse ("5000,-4,0.7,ms=0.25"),
             BandOption::parse ("12000,3.5,1,ms=1") };
}

using Combination = std::tuple<double, FilterMode, FilterPhase>;

class OfflineRendererTest : public testing::TestWithParam<Combination>
{
protected:
    const double rate = std::get<0> (GetParam());

    [[nodiscard]] EqualiserSettings settings (std::vector<BandOption> bands = {}) const
    {
        return settingsOf (std::get<1> (GetParam()), std::get<2> (GetParam()), std::move (bands));
    }
};

TEST_P (OfflineRendererTest, givesTheInputBackToTheBitWithoutEffect)
{
    const auto flat = settings ({ BandOption::parse ("1000,0,1"),
                                  BandOption::parse ("4000,0,1,shelf"),
                                  BandOption::parse ("2000,-4,1,bypass") });

    for (const auto channelCount : { 1, 2 })
        for (const auto length : { 1, 3, 10007 })
            EXPECT_EQ (rendered (signals::noise (channelCount, length, 11), rate, 512, flat),
                       signals::noise (channelCount, length, 11))
                << channelCount << " channels, " << length << " samples";
}

TEST_P (OfflineRendererTest, givesTheInputBackWithFlatBandsOnMidAndSide)
{
    const auto flat = settings ({ BandOption::parse ("1000,0,1,ms=0"), BandOption::parse ("4000,0,1,ms=1") });
    const auto input = signals::noise (2, 10007, 12);

    EXPECT_EQ (rendered (input, rate, 512, flat), input);
}

TEST_P (OfflineRendererTest, rendersTheSameWhateverTheBlockSize)
{
    const auto input = signals::noise (2, 30011, 13);
    const auto reference = rendered (input, rate, 512, settings (bandsOnEveryPath()));

    // 5 and 7 divide neither factor.
    for (const auto blockSize : { 1, 5, 7, 64, 8192 })
        EXPECT_THAT (rendered (input, rate, blockSize, settings (bandsOnEveryPath())), IsSignalNear (reference, 1.0e-6))
            << blockSize;
}

TEST_P (OfflineRendererTest, rendersTheSameBitsTwice)
{
    const auto input = signals::noise (2, 20011, 14);
    EXPECT_EQ (rendered (input, rate, 512, settings (bandsOnEveryPath())),
               rendered (input, rate, 512, settings (bandsOnEveryPath())));
}

TEST_P (OfflineRendererTest, actsFromTheFirstSample)
{
    constexpr int length = 8192;
    constexpr int later = 2048; // a multiple of both factors, behind which decimation stands as at the start
    const auto impulse = signals::impulse (2, length, 0);
    auto delayed = signals::impulse (2, length + later, 0);
    std::swap (delayed[0][0], delayed[0][later]);

    const auto atStart = rendered (impulse, rate, 512, settings (bandsOnEveryPath()));
    auto afterwards = rendered (delayed, rate, 512, settings (bandsOnEveryPath()));

    for (auto& channel : afterwards)
        channel.erase (channel.begin(), channel.begin() + later);

    EXPECT_THAT (atStart, IsSignalNear (afterwards, 1.0e-7));
    EXPECT_GT (std::abs (atStart[1][0]), 1.0e-3f) << "nothing crossed from left to right, so the settings did not act";
}

TEST_P (OfflineRendererTest, takesTheDelayOffInSoloToo)
{
    constexpr std::size_t centre = 1000;
    constexpr std::size_t reach = 128;
    auto input = signals::impulse (2, 2048, 0);
    std::swap (input[0][0], input[0][centre]);

    const auto output = rendered (
        input, rate, 512, settings ({ BandOption::parse ("3000,4,1,solo"), BandOption::parse ("6000,4,1") }))[0];

    EXPECT_GT (std::abs (output[centre]), 1.0e-3f);

    // The solo filter is symmetric, so the impulse stands in the middle of its response.
    for (std::size_t distance = 1; distance <= reach; ++distance)
        EXPECT_NEAR (output[centre - distance], output[centre + distance], 1.0e-7) << distance;

    EXPECT_EQ (output[centre - reach - 1], 0.0f);
    EXPECT_EQ (output[centre + reach + 1], 0.0f);
}

std::string nameOf (const Combination& combination)
{
    const auto& [rate, mode, phase] = combination;
    return std::to_string (static_cast<int> (rate)) + (mode == FilterMode::mix ? "_mix" : "_master")
           + (phase == FilterPhase::linear ? "_linear" : "_minimum");
}

INSTANTIATE_TEST_SUITE_P (Everywhere,
                          OfflineRendererTest,
                          testing::Combine (testing::ValuesIn (rates),
                                            testing::Values (FilterMode::mix, FilterMode::master),
                                            testing::Values (FilterPhase::linear, FilterPhase::minimum)),
                          [] (const auto& tested) { return nameOf (tested.param); });

TEST (OfflineRendererGainTest, appliesTheOutputGain)
{
    EqualiserSettings settings;
    settings.outputGainDb = -6.0f;
    const auto output = rendered (signals::impulse (1, 64, 0), 48000.0, 512, settings);
    EXPECT_NEAR (output[0][0], std::pow (10.0, -0.3), 1.0e-6);
}

TEST (OfflineRendererGainTest, aGainScaleOfZeroLeavesTheInputAsItIs)
{
    auto settings = settingsOf (FilterMode::mix, FilterPhase::linear, bandsOnEveryPath());
    settings.gainScalePercent = 0.0f;
    const auto input = signals::noise (2, 5000, 15);
    EXPECT_THAT (rendered (input, 48000.0, 512, settings), IsSignalNear (input, 1.0e-6));
}

TEST (OfflineRendererGainTest, scaledGainsSoundLikeTheGainsThatTheyBecome)
{
    auto scaled = settingsOf (FilterMode::mix, FilterPhase::linear, { BandOption::parse ("3000,4,1") });
    scaled.gainScalePercent = 150.0f;
    const auto plain = settingsOf (FilterMode::mix, FilterPhase::linear, { BandOption::parse ("3000,6,1") });
    const auto input = signals::noise (2, 5000, 16);

    EXPECT_THAT (rendered (input, 48000.0, 512, scaled), IsSignalNear (rendered (input, 48000.0, 512, plain), 1.0e-6));
}

TEST (OfflineRendererGainTest, masterHoldsGainsAtFourDecibels)
{
    const auto input = signals::noise (2, 5000, 17);
    const auto asked = settingsOf (FilterMode::master, FilterPhase::linear, { BandOption::parse ("3000,9,1") });
    const auto held = settingsOf (FilterMode::master, FilterPhase::linear, { BandOption::parse ("3000,4,1") });

    EXPECT_EQ (rendered (input, 48000.0, 512, asked), rendered (input, 48000.0, 512, held));
}

TEST (OfflineRendererSettingsTest, leavesTheUsersPreferencesAlone)
{
    juce::File file;

    {
        OfflineRenderer renderer (48000.0, 2, 512, {});
        file = renderer.processor().settingsFile();
        file.deleteFile();
    }

    EXPECT_FALSE (file.exists()) << "a processor that used it would have saved it as it went";
}
} // namespace
