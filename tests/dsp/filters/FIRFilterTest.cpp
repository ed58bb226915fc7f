#include "dsp/filters/FIRFilter.h"

#include "support/RealTimeGuard.h"

#include <gtest/gtest.h>

#include <array>

namespace
{
TEST (FIRFilterTest, reachesAConstantOnTheFourthSample)
{
    orvik::FIRFilter<4> filter;
    filter.setCoefficients ({ 0.25, 0.25, 0.25, 0.25 });
    EXPECT_EQ (filter.process (8.0), 2.0);
    EXPECT_EQ (filter.process (8.0), 4.0);
    EXPECT_EQ (filter.process (8.0), 6.0);
    EXPECT_EQ (filter.process (8.0), 8.0);
    EXPECT_EQ (filter.process (8.0), 8.0);
}

TEST (FIRFilterTest, answersAnImpulseWithItsFirstFourCoefficients)
{
    orvik::FIRFilter<4> filter;
    filter.setCoefficients ({ 1.0, -2.0, 3.0, -4.0, 5.0 });
    const std::array expected { 1.0, -2.0, 3.0, -4.0, 0.0, 0.0 };

    for (int round = 0; round < 3; ++round)
        for (std::size_t n = 0; n < expected.size(); ++n)
            EXPECT_EQ (filter.process (n == 0 ? 1.0 : 0.0), expected[n]) << n;
}

TEST (FIRFilterTest, startsSilentAndFillsMissingCoefficientsWithZero)
{
    orvik::FIRFilter<4> filter;
    EXPECT_EQ (filter.process (1.0), 0.0);
    filter.setCoefficients ({ 0.0, 1.0 });
    EXPECT_EQ (filter.process (5.0), 1.0);
    EXPECT_EQ (filter.process (0.0), 5.0);
    EXPECT_EQ (filter.process (0.0), 0.0);
}

TEST (FIRFilterTest, resetMakesAValueTheWholePast)
{
    orvik::FIRFilter<4> filter;
    filter.setCoefficients ({ 0.25, 0.25, 0.25, 0.25 });
    filter.process (100.0);
    filter.reset (3.0);
    EXPECT_EQ (filter.process (3.0), 3.0);
    EXPECT_EQ (filter.process (7.0), 4.0);
}

TEST (FIRFilterTest, processDoesNotAllocate)
{
    orvik::FIRFilter<4> filter;
    filter.setCoefficients ({ 0.25, 0.25, 0.25, 0.25 });
    const RealTimeGuard guard;
    filter.reset (1.0);
    filter.process (1.0);
    EXPECT_EQ (guard.allocations(), 0);
}
} // namespace
