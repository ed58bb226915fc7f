#include "dsp/filters/Butterworth2ndOrder.h"

#include "support/BiQuadResponse.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace
{
using Filter = orvik::Butterworth2ndOrder<float>;

TEST (Butterworth2ndOrderTest, hasTheMagnitudeOfAMaximallyFlatLowPass)
{
    Filter filter;
    filter.setCutoff (5.0f, 50.0f);

    for (auto hz = 0.1; hz < 24.0; hz *= 1.3)
    {
        const auto warped = prototypeFrequency (hz, 5.0, 50.0);
        EXPECT_NEAR (std::abs (responseOf (filter, hz, 50.0)), 1.0 / std::sqrt (1.0 + std::pow (warped, 4.0)), 1e-5)
            << hz;
    }
}

// The order of roundings: the root is a float, and b0 is rounded before the denominator is made from it.
TEST (Butterworth2ndOrderTest, roundsBeforeTheDenominatorIsFormed)
{
    Filter filter;
    filter.setCutoff (0.25f, 50.0f);

    const auto k = std::tan (std::numbers::pi * 0.25 / 50.0);
    const auto damping = double (1.41421356f) * k;
    const auto divisor = damping + k * k + 1.0;
    const auto b0 = float (k * k / divisor);

    EXPECT_EQ (filter.a0, 1.0f);
    EXPECT_EQ (filter.b0, b0);
    EXPECT_EQ (filter.b1, 2.0f * b0);
    EXPECT_EQ (filter.b2, b0);
    EXPECT_EQ (filter.a1, float (2.0 * (double (b0) - 1.0 / divisor)));
    EXPECT_EQ (filter.a2, float (double (b0) - (damping - 1.0) / divisor));
}

TEST (Butterworth2ndOrderTest, settlesOnAConstantInput)
{
    Filter filter;
    filter.setCutoff (0.25f, 50.0f);
    auto last = 0.0f;

    for (int i = 0; i < 2000; ++i)
        last = filter.process (0.75f);

    // Coefficients of single precision leave the gain at 0 Hz within about a thousandth at this low a corner.
    EXPECT_NEAR (last, 0.75f, 2e-3f);
}
} // namespace
