#include "dsp/rate/ReducedRate.h"

#include <gtest/gtest.h>

namespace
{
TEST (ReducedRateTest, theSixRatesHaveTheirFactors)
{
    for (const auto rate : { 44100.0, 48000.0, 88200.0, 96000.0 })
        EXPECT_EQ (decimationFactorFor (rate), 4) << rate;

    for (const auto rate : { 176400.0, 192000.0 })
        EXPECT_EQ (decimationFactorFor (rate), 8) << rate;
}

TEST (ReducedRateTest, otherRatesHaveNoFactor)
{
    for (const auto rate : { 0.0, 1000.0, 32000.0, 44099.0, 44100.5, 64000.0, 384000.0 })
        EXPECT_FALSE (decimationFactorFor (rate).has_value()) << rate;
}
} // namespace
