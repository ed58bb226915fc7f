#include "dsp/design/FirLengths.h"

#include <gtest/gtest.h>

namespace
{
struct LatencyRow
{
    double sampleRate;
    int factor;
    int mixLinear, masterLinear, mixMinimum, masterMinimum;
};

class LatencyTableTest : public testing::TestWithParam<LatencyRow>
{
};

TEST_P (LatencyTableTest, givesTheLatencyOfEveryModeAndPhase)
{
    const auto& row = GetParam();
    EXPECT_EQ (baseLatencyFor (row.sampleRate, FilterMode::mix, FilterPhase::linear), row.mixLinear);
    EXPECT_EQ (baseLatencyFor (row.sampleRate, FilterMode::master, FilterPhase::linear), row.masterLinear);
    EXPECT_EQ (baseLatencyFor (row.sampleRate, FilterMode::mix, FilterPhase::minimum), row.mixMinimum);
    EXPECT_EQ (baseLatencyFor (row.sampleRate, FilterMode::master, FilterPhase::minimum), row.masterMinimum);
}

TEST_P (LatencyTableTest, dryDelayIsTheLowFiltersCentreAndTheRateFilters)
{
    const auto& row = GetParam();
    const auto rateFilterDelay = row.factor == 4 ? 24 : 54;

    for (const auto mode : { FilterMode::mix, FilterMode::master })
    {
        const auto lengths = firLengthsFor (row.sampleRate, mode);
        EXPECT_EQ (lengths.dryDelaySamples, row.factor * lengths.lowDelaySamples() + rateFilterDelay);
        EXPECT_EQ (lengths.minimumTapCount, lengths.minimumSourceTapCount / 2);
        EXPECT_LE (lengths.linearHighTapCount, maxFirTapCount);
        EXPECT_LE (lengths.dryDelaySamples, maxDryDelaySamples);
    }
}

INSTANTIATE_TEST_SUITE_P (HostRates,
                          LatencyTableTest,
                          testing::Values (LatencyRow { 44100.0, 4, 274, 174, 224, 144 },
                                           LatencyRow { 48000.0, 4, 274, 174, 224, 144 },
                                           LatencyRow { 88200.0, 4, 524, 324, 424, 264 },
                                           LatencyRow { 96000.0, 4, 524, 324, 424, 264 },
                                           LatencyRow { 176400.0, 8, 1404, 864, 1404, 864 },
                                           LatencyRow { 192000.0, 8, 1404, 864, 1404, 864 }),
                          [] (const auto& tested) { return std::to_string (int (tested.param.sampleRate)); });

TEST (FirLengthsTest, unlistedRatesHaveNoLatency)
{
    for (const auto rate : { 0.0, 1000.0, 32000.0, 44099.0, 44100.5, 64000.0, 384000.0 })
        EXPECT_FALSE (baseLatencyFor (rate, FilterMode::mix, FilterPhase::linear).has_value()) << rate;
}

TEST (FirLengthsTest, unlistedRatesShareTheRowUpToTheNextLimit)
{
    EXPECT_EQ (firLengthsFor (32000.0, FilterMode::mix), firLengthsFor (48000.0, FilterMode::mix));
    EXPECT_EQ (firLengthsFor (48000.1, FilterMode::master), firLengthsFor (96000.0, FilterMode::master));
    EXPECT_EQ (firLengthsFor (384000.0, FilterMode::mix), firLengthsFor (192000.0, FilterMode::mix));
}

TEST (FirLengthsTest, masterAtTheDoubleRatesHasFewerSourceTapsThanAtTheSingleRates)
{
    EXPECT_EQ (firLengthsFor (48000.0, FilterMode::master).minimumSourceTapCount, 60);
    EXPECT_EQ (firLengthsFor (96000.0, FilterMode::master).minimumSourceTapCount, 40);
}
} // namespace
