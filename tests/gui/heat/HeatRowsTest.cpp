#include "gui/heat/HeatRows.h"

#include "support/RealTimeGuard.h"

#include <gtest/gtest.h>

#include <ostream>

// Bins were computed apart from this program, from the frequencies of the rows on a logarithmic axis.

namespace
{
using Bins = HeatRows::Bins;
using Spectrum = std::array<float, HeatPeaks::binCount>;

struct Case
{
    int height;
    double sampleRate;
    std::size_t count;
    Bins lowest;
    std::size_t rowOf1kHz;
    Bins of1kHz;
    Bins highest;
};

class RowsOfASizeTest : public testing::TestWithParam<Case>
{
};
} // namespace

void PrintTo (const Bins& bins, std::ostream* stream)
{
    *stream << bins.first << " to " << bins.last;
}

TEST_P (RowsOfASizeTest, rowsHoldTheBinsOfTheirFrequencies)
{
    HeatRows rows;
    rows.prepare (GetParam().height, GetParam().sampleRate);
    ASSERT_EQ (rows.count(), GetParam().count);
    EXPECT_EQ (rows.bins (0), GetParam().lowest);
    EXPECT_EQ (rows.bins (GetParam().rowOf1kHz), GetParam().of1kHz);
    EXPECT_EQ (rows.bins (rows.count() - 1), GetParam().highest);
}

INSTANTIATE_TEST_SUITE_P (HeightsAndRates,
                          RowsOfASizeTest,
                          testing::Values (Case { 622, 48000.0, 311, { 6, 7 }, 85, { 21, 22 }, { 421, 427 } },
                                           Case { 622, 44100.0, 311, { 7, 8 }, 85, { 23, 24 }, { 458, 465 } },
                                           Case { 516, 192000.0, 258, { 1, 2 }, 71, { 5, 6 }, { 104, 107 } },
                                           Case { 1110, 96000.0, 555, { 3, 4 }, 152, { 10, 11 }, { 211, 214 } }),
                          [] (const auto& tested)
                          {
                              return "height" + std::to_string (tested.param.height) + "rate"
                                     + std::to_string (static_cast<int> (tested.param.sampleRate));
                          });

TEST (HeatRowsTest, rowsLeaveNoBinBetweenThemOut)
{
    HeatRows rows;
    rows.prepare (623, 48000.0);
    ASSERT_EQ (rows.count(), 312u) << "an odd height has half a row at the ceiling";

    for (std::size_t row = 1; row < rows.count(); ++row)
        EXPECT_LE (rows.bins (row).first, rows.bins (row - 1).last) << row;
}

TEST (HeatRowsTest, aRateWhoseSpectrumEndsBelowTheCeilingShowsWhatThereIs)
{
    HeatRows rows;
    rows.prepare (622, 22050.0);
    EXPECT_EQ (rows.bins (310), (Bins { 512, 512 }));
}

TEST (HeatRowsTest, withoutASampleRateNothingGlows)
{
    HeatRows rows;
    rows.prepare (622, 0.0);
    Spectrum full;
    full.fill (1.0f);
    std::vector<std::uint8_t> alphas (rows.count(), 1);
    EXPECT_FALSE (rows.alphas (full, alphas));
    EXPECT_EQ (alphas, std::vector<std::uint8_t> (311, 0));
}

TEST (HeatRowsTest, aRowsAlphaIsTheSumOfItsBins)
{
    HeatRows rows;
    rows.prepare (622, 48000.0);
    std::vector<std::uint8_t> alphas (rows.count());
    Spectrum spectrum {};
    EXPECT_FALSE (rows.alphas (spectrum, alphas));
    spectrum[21] = 0.25f;
    spectrum[22] = 0.125f;
    EXPECT_TRUE (rows.alphas (spectrum, alphas));
    EXPECT_EQ (alphas[85], 96) << "0.375 of 255";
    EXPECT_EQ (alphas[0], 0);
    EXPECT_EQ (alphas[310], 0);

    // Seven bins in the row at the ceiling.
    spectrum.fill (0.1f);
    EXPECT_TRUE (rows.alphas (spectrum, alphas));
    EXPECT_EQ (alphas[310], 179);
    EXPECT_EQ (alphas[0], 51);
}

TEST (HeatRowsTest, aSumIsLimitedToTheWholeOfTheColour)
{
    EXPECT_EQ (HeatRows::alphaOf (-1.0f), 0);
    EXPECT_EQ (HeatRows::alphaOf (0.0f), 0);
    EXPECT_EQ (HeatRows::alphaOf (0.5f), 128);
    EXPECT_EQ (HeatRows::alphaOf (1.0f), 255);
    EXPECT_EQ (HeatRows::alphaOf (40.0f), 255);
}

TEST (HeatRowsTest, anotherSizeOrRateIsTakenAndTheSameOneCostsNothing)
{
    HeatRows rows;
    rows.prepare (622, 48000.0);
    rows.prepare (622, 44100.0);
    EXPECT_EQ (rows.bins (0), (Bins { 7, 8 }));
    rows.prepare (516, 44100.0);
    EXPECT_EQ (rows.count(), 258u);
    const RealTimeGuard guard;
    rows.prepare (516, 44100.0);
    EXPECT_EQ (guard.allocations(), 0);
}
