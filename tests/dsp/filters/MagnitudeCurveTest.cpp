#include "dsp/filters/MagnitudeCurve.h"

#include "support/BiQuadResponse.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <numbers>
#include <random>
#include <vector>

namespace
{
std::vector<double> curveOf (const PeakCoefficients& peak, std::size_t pointCount = curvePointCount)
{
    std::vector<double> curve (pointCount);
    curveOfCoefficients (peak, curve);
    return curve;
}

PeakCoefficients peakOf (double gainDb, double frequencyHz, double q, double rate)
{
    PeakCoefficients peak;
    peak.design (gainDb, frequencyHz, q, rate);
    return peak;
}

orvik::Shelving<double> shelfOf (float gainDb, float frequencyHz, float rate)
{
    orvik::Shelving<double> shelf;
    shelf.gainDb = gainDb;
    shelf.frequency = frequencyHz;
    shelf.sampleRate = rate;
    shelf.updateCoefficients();
    return shelf;
}

/** The curve's formula written out for one point, with sines and cosines of its own. */
double directPoint (const PeakCoefficients& c, std::size_t k, std::size_t pointCount)
{
    const auto step = std::numbers::pi / (double (pointCount) - 1.0);
    const auto angle = double (k) * step;
    const auto cosine1 = std::cos (angle), sine1 = std::sin (angle);
    const auto cosine2 = std::cos (2.0 * angle), sine2 = std::sin (2.0 * angle);
    const auto realB = c.b0 + c.b1 * cosine1 + c.b2 * cosine2;
    const auto imaginaryB = -(c.b1 * sine1 + c.b2 * sine2);
    const auto realA = c.a0 + c.a1 * cosine1 + c.a2 * cosine2;
    const auto imaginaryA = -(c.a1 * sine1 + c.a2 * sine2);
    const auto real = realA * realB + imaginaryA * imaginaryB;
    const auto imaginary = realA * imaginaryB - imaginaryA * realB;
    const auto squared = realA * realA + imaginaryA * imaginaryA;
    return std::sqrt ((real * real + imaginary * imaginary) / (squared * squared));
}

TEST (MagnitudeCurveTest, tablesGiveTheSameBitsAsDirectEvaluation)
{
    constexpr unsigned seed = 20;
    std::mt19937 random (seed);
    std::uniform_real_distribution<double> gain (-12.0, 12.0), frequency (320.0, 20000.0), q (0.5, 10.0);

    for (int round = 0; round < 20; ++round)
    {
        const auto peak = peakOf (gain (random), frequency (random), q (random), 48000.0);
        const auto curve = curveOf (peak);

        for (std::size_t k = 0; k < curve.size(); ++k)
            ASSERT_EQ (curve[k], directPoint (peak, k, curve.size()))
                << "seed " << seed << " round " << round << " k " << k;
    }
}

TEST (MagnitudeCurveTest, otherLengthsAreEvaluatedOnTheirOwnGrid)
{
    const auto peak = peakOf (6.0, 3000.0, 2.0, 48000.0);

    for (const std::size_t pointCount : { std::size_t (2), std::size_t (3), std::size_t (100), std::size_t (1025) })
    {
        const auto curve = curveOf (peak, pointCount);

        for (std::size_t k = 0; k < pointCount; ++k)
            EXPECT_NEAR (
                curve[k], std::abs (responseOf (peak, 24000.0 * double (k) / double (pointCount - 1), 48000.0)), 1e-12);
    }
}

TEST (MagnitudeCurveTest, isTheModulusOfTheTransferFunction)
{
    const auto peak = peakOf (-9.0, 5000.0, 4.0, 44100.0);
    const auto shelf = shelfOf (7.0f, 8000.0f, 44100.0f);
    const auto peakCurve = curveOf (peak);
    std::vector<double> shelfCurve (curvePointCount);
    curveOfCoefficients (shelf, shelfCurve);

    for (std::size_t k = 0; k < curvePointCount; ++k)
    {
        const auto hz = 22050.0 * double (k) / 1023.0;
        EXPECT_NEAR (peakCurve[k], std::abs (responseOf (peak, hz, 44100.0)), 1e-10) << k;
        EXPECT_NEAR (shelfCurve[k], std::abs (responseOf (shelf, hz, 44100.0)), 1e-10) << k;
    }
}

TEST (MagnitudeCurveTest, aPeakOrShelfOfNoGainIsOneEverywhere)
{
    std::vector<double> shelfCurve (curvePointCount);
    curveOfCoefficients (shelfOf (0.0f, 4000.0f, 48000.0f), shelfCurve);
    const auto peakCurve = curveOf (peakOf (0.0, 4000.0, 3.0, 48000.0));

    for (std::size_t k = 0; k < curvePointCount; ++k)
    {
        EXPECT_NEAR (peakCurve[k], 1.0, 1e-12) << k;
        EXPECT_NEAR (shelfCurve[k], 1.0, 1e-12) << k;
    }
}

TEST (MagnitudeCurveTest, boostAndCutOfEqualSizeMultiplyToOne)
{
    for (const auto gainDb : { 0.5, 4.0, 12.0 })
    {
        const auto boost = curveOf (peakOf (gainDb, 2500.0, 1.3, 48000.0));
        const auto cut = curveOf (peakOf (-gainDb, 2500.0, 1.3, 48000.0));

        for (std::size_t k = 0; k < curvePointCount; ++k)
            EXPECT_NEAR (boost[k] * cut[k], 1.0, 1e-12) << gainDb << " dB, point " << k;
    }
}

TEST (MagnitudeCurveTest, aHighShelfRunsFromOneToItsGain)
{
    for (const auto gainDb : { -12.0f, 5.0f })
    {
        std::vector<double> curve (curvePointCount);
        curveOfCoefficients (shelfOf (gainDb, 6000.0f, 48000.0f), curve);
        EXPECT_NEAR (curve.front(), 1.0, 1e-12);
        EXPECT_NEAR (curve.back(), std::pow (10.0, double (gainDb) / 20.0), 1e-12);
    }
}

// A bell's gain is 1 at both ends of the design rate's band, wherever the host's half rate lies.
TEST (MagnitudeCurveTest, theEndsBelongToTheDesignRate)
{
    const auto curve = curveOf (peakOf (12.0, 1000.0, 0.5, 12000.0));
    EXPECT_NEAR (curve.front(), 1.0, 1e-12);
    EXPECT_NEAR (curve.back(), 1.0, 1e-12);
    const auto centre = std::size_t (std::lround (1000.0 / 6000.0 * 1023.0));
    EXPECT_NEAR (20.0 * std::log10 (curve[centre]), 12.0, 0.01);
}
} // namespace
