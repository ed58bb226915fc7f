#include "files/TpdfDither.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace
{
constexpr int drawCount = 1000000;

/** Standard errors of the figures below are 0.0004 and 0.0002 for that many draws; the bounds are five of them. */
TEST (TpdfDitherTest, hasNoMeanAndASixthOfVariance)
{
    TpdfDither dither;
    auto sum = 0.0;
    auto squares = 0.0;

    for (int draw = 0; draw < drawCount; ++draw)
    {
        const auto value = dither.next();
        sum += value;
        squares += value * value;
    }

    EXPECT_NEAR (sum / drawCount, 0.0, 0.002);
    EXPECT_NEAR (squares / drawCount, 1.0 / 6.0, 0.001);
}

TEST (TpdfDitherTest, isSpreadAsATriangleFromMinusOneToOne)
{
    constexpr int binCount = 20;
    std::array<int, binCount> bins {};
    TpdfDither dither;

    for (int draw = 0; draw < drawCount; ++draw)
    {
        const auto value = dither.next();
        ASSERT_GT (value, -1.0);
        ASSERT_LT (value, 1.0);
        ++bins[static_cast<std::size_t> ((value + 1.0) / 2.0 * binCount)];
    }

    for (int bin = 0; bin < binCount; ++bin)
    {
        // The triangle is straight within a bin, so the mean over the bin is the value at its centre.
        const auto centre = (bin + 0.5) / binCount * 2.0 - 1.0;
        const auto share = (1.0 - std::abs (centre)) * 2.0 / binCount;
        EXPECT_NEAR (bins[static_cast<std::size_t> (bin)] / double (drawCount), share, 0.0015) << bin;
    }
}

TEST (TpdfDitherTest, doesNotRepeatItselfFromOneValueToTheNext)
{
    TpdfDither dither;
    auto product = 0.0;
    auto before = dither.next();

    for (int draw = 0; draw < drawCount; ++draw)
    {
        const auto value = dither.next();
        product += value * before;
        before = value;
    }

    EXPECT_NEAR (product / drawCount, 0.0, 0.001);
}

TEST (TpdfDitherTest, isTheSameEveryTime)
{
    TpdfDither one;
    TpdfDither other;

    for (int draw = 0; draw < 100; ++draw)
        EXPECT_EQ (one.next(), other.next());
}
} // namespace
