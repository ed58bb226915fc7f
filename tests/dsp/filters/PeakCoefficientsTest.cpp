#include "dsp/filters/PeakCoefficients.h"

#include "support/BiQuadResponse.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>

namespace
{
class PeakCoefficientsTest : public testing::TestWithParam<double>
{
};

// s is the analogue frequency variable in units of the centre: (s^2 + V s / q + 1) / (s^2 + s / q + 1).
TEST_P (PeakCoefficientsTest, isTheAnaloguePrototypeWarped)
{
    const auto gainDb = GetParam();
    const auto q = 1.7;
    PeakCoefficients peak;
    peak.design (gainDb, 3000.0, q, 48000.0);
    EXPECT_EQ (peak.a0, 1.0);

    for (auto hz = 50.0; hz < 23900.0; hz *= 1.13)
    {
        const std::complex<double> s { 0.0, prototypeFrequency (hz, 3000.0, 48000.0) };
        const auto v = std::pow (10.0, std::abs (gainDb) / 20.0);
        const auto boost = (s * s + v * s / q + 1.0) / (s * s + s / q + 1.0);
        const auto expected = gainDb >= 0.0 ? boost : 1.0 / boost;
        EXPECT_NEAR (std::abs (responseOf (peak, hz, 48000.0) - expected), 0.0, 1e-10) << hz;
    }
}

TEST_P (PeakCoefficientsTest, hasItsGainAtTheCentre)
{
    PeakCoefficients peak;
    peak.design (GetParam(), 3000.0, 0.7, 44100.0);
    EXPECT_NEAR (20.0 * std::log10 (std::abs (responseOf (peak, 3000.0, 44100.0))), GetParam(), 1e-9);
}

INSTANTIATE_TEST_SUITE_P (Gains, PeakCoefficientsTest, testing::Values (-12.0, -3.0, 0.0, 4.5, 12.0));

TEST (PeakCoefficientsDefaultTest, startsAsAPassThrough)
{
    const PeakCoefficients peak;
    EXPECT_EQ (std::abs (responseOf (peak, 1234.0, 48000.0)), 1.0);
}
} // namespace
