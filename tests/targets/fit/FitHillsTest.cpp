#include "targets/fit/FitHills.h"

#include <gtest/gtest.h>

#include <vector>

namespace
{
const std::vector frequencies { 400.0, 566.0, 800.0, 1131.0, 1600.0, 2263.0, 3200.0, 4525.0 };
const std::vector flat (8, 0.0);

TEST (FitHillsTest, theLargestPartOfTheWorkComesFirst)
{
    const auto hills = fitHills (frequencies, std::vector { 1.0, 5.0, 1.0, -2.0, -4.0, -5.0, -4.0, -2.0 }, flat);
    ASSERT_EQ (hills.size(), 2u);
    EXPECT_EQ (hills[0].peakHz, 2263.0);
    EXPECT_EQ (hills[0].lowHz, 1131.0);
    EXPECT_EQ (hills[0].highHz, 4525.0);
    EXPECT_TRUE (hills[0].reachesTop);
    EXPECT_EQ (hills[1].peakHz, 566.0);
    EXPECT_FALSE (hills[1].reachesTop);
    EXPECT_NEAR (hills[1].gainDb, 5.0, 1e-9);
}

TEST (FitHillsTest, whereABandActsAlreadyAnotherAddsInAmplitude)
{
    const std::vector error (8, 6.0);

    // From 6 to 12 dB, which is from twice to four times: a band alone that triples does it.
    EXPECT_NEAR (fitHills (frequencies, error, std::vector (8, 6.0))[0].gainDb, 9.53, 0.05);

    // From -6 to -12 dB: a quarter less.
    EXPECT_NEAR (fitHills (frequencies, std::vector (8, -6.0), std::vector (8, -6.0))[0].gainDb, -2.5, 0.05);
}

TEST (FitHillsTest, noWorkHasNoHeight)
{
    const auto hills = fitHills (frequencies, flat, flat);
    ASSERT_EQ (hills.size(), 1u);
    EXPECT_EQ (hills[0].area, 0.0);
    EXPECT_EQ (hills[0].gainDb, 0.0);
}
} // namespace
