#include "dsp/design/PolynomialRoots.h"

#include "dsp/design/BandCurves.h"
#include "dsp/design/LeastSquaresFir.h"
#include "support/RealTimeGuard.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>
#include <vector>

namespace
{
using Complex = std::complex<double>;

constexpr int testedDegree = 150;

/** The monic polynomial with these zeros, expanded in extended precision. */
std::vector<double> expand (const std::vector<Complex>& zeros)
{
    std::vector<std::complex<long double>> product { 1.0L };

    for (const auto& zero : zeros)
    {
        product.push_back (0.0L);

        for (auto i = product.size() - 1; i > 0; --i)
            product[i] -= std::complex<long double> (zero) * product[i - 1];
    }

    std::vector<double> coefficients;

    for (const auto& coefficient : product)
        coefficients.push_back (double (coefficient.real()));

    return coefficients;
}

/** Every expected zero must be met by a found one of its own. */
void expectZeros (std::vector<Complex> found, const std::vector<Complex>& expected, double tolerance)
{
    ASSERT_EQ (found.size(), expected.size());

    for (const auto& zero : expected)
    {
        const auto nearest = std::min_element (
            found.begin(), found.end(), [&] (auto a, auto b) { return std::abs (a - zero) < std::abs (b - zero); });
        EXPECT_LE (std::abs (*nearest - zero), tolerance) << zero;
        found.erase (nearest);
    }
}

std::vector<Complex> found (const std::vector<double>& coefficients)
{
    PolynomialRoots roots (testedDegree);
    EXPECT_TRUE (roots.find (coefficients));
    return { roots.zeros().begin(), roots.zeros().end() };
}

/** Largest value of the polynomial at its zeros, relative to the sum of its terms' moduli there. */
double worstResidual (const std::vector<double>& coefficients, const std::vector<Complex>& zeros)
{
    auto worst = 0.0;

    for (const auto& zero : zeros)
    {
        std::complex<long double> value = 0.0L;
        auto size = 0.0L;

        for (const auto coefficient : coefficients)
        {
            value = value * std::complex<long double> (zero) + static_cast<long double> (coefficient);
            size =
                size * static_cast<long double> (std::abs (zero)) + static_cast<long double> (std::abs (coefficient));
        }

        worst = std::max (worst, double (std::abs (value) / size));
    }

    return worst;
}

TEST (PolynomialRootsTest, findsTheZerosOfSmallPolynomials)
{
    expectZeros (found ({ 2.0, -6.0 }), { 3.0 }, 1e-15);
    expectZeros (found ({ 1.0, -3.0, 2.0 }), { 1.0, 2.0 }, 1e-15);
    expectZeros (found ({ 1.0, 2.0, 5.0 }), { { -1.0, 2.0 }, { -1.0, -2.0 } }, 1e-15);
    expectZeros (found ({ 1.0, -6.0, 11.0, -6.0 }), { 1.0, 2.0, 3.0 }, 1e-13);
    expectZeros (found ({ -4.0, 0.0, 0.0, 0.0, 4.0 }), { 1.0, -1.0, { 0.0, 1.0 }, { 0.0, -1.0 } }, 1e-14);
}

TEST (PolynomialRootsTest, findsEquallySpacedRealZeros)
{
    std::vector<Complex> zeros;

    for (int i = 1; i <= 12; ++i)
        zeros.emplace_back (double (i));

    // The zeros of this polynomial move by up to 1e-6 when a coefficient changes in its last place.
    expectZeros (found (expand (zeros)), zeros, 1e-6);
}

TEST (PolynomialRootsTest, findsMultipleZeros)
{
    const std::vector<Complex> zeros { 1.0, 1.0, -2.0, { 0.5, 0.5 }, { 0.5, -0.5 }, { 0.5, 0.5 }, { 0.5, -0.5 } };
    expectZeros (found (expand (zeros)), zeros, 1e-6);
}

TEST (PolynomialRootsTest, findsZerosOfWidelyDifferentSize)
{
    const std::vector<Complex> zeros { 1e-6, -1e-3, 1.0, { 30.0, 40.0 }, { 30.0, -40.0 }, 1e5 };
    const auto actual = found (expand (zeros));
    ASSERT_EQ (actual.size(), zeros.size());

    for (const auto& zero : zeros)
        EXPECT_TRUE (std::any_of (actual.begin(),
                                  actual.end(),
                                  [&] (const Complex& a) { return std::abs (a - zero) < 1e-9 * std::abs (zero); }))
            << zero;
}

TEST (PolynomialRootsTest, findsAllRootsOfUnity)
{
    for (const auto degree : { 3, 50, 118 })
    {
        std::vector<double> coefficients (std::size_t (degree) + 1, 0.0);
        coefficients.front() = 1.0;
        coefficients.back() = -1.0;
        std::vector<Complex> expected;

        for (int i = 0; i < degree; ++i)
            expected.push_back (std::polar (1.0, 2.0 * std::numbers::pi * i / degree));

        expectZeros (found (coefficients), expected, 1e-12);
    }
}

TEST (PolynomialRootsTest, stripsZerosAtBothEnds)
{
    expectZeros (found ({ 0.0, 0.0, 1.0, -3.0, 2.0, 0.0, 0.0 }), { 0.0, 0.0, 1.0, 2.0 }, 1e-14);
    EXPECT_TRUE (found ({ 0.0, 5.0 }).empty());
    expectZeros (found ({ 0.0, 5.0, 0.0 }), { 0.0 }, 0.0);
}

TEST (PolynomialRootsTest, conjugatesStandSideBySide)
{
    const auto zeros = found ({ 1.0, 0.3, -0.2, 0.7, 1.1, -0.4, 0.9 });

    for (std::size_t i = 0; i < zeros.size(); ++i)
    {
        if (zeros[i].imag() > 0.0)
        {
            EXPECT_EQ (zeros[i + 1], std::conj (zeros[i]));
        }
    }
}

TEST (PolynomialRootsTest, refusesWhatHasNoZerosToFind)
{
    PolynomialRoots roots (3);
    EXPECT_FALSE (roots.find ({}));
    EXPECT_FALSE (roots.find (std::vector<double> { 0.0, 0.0 }));
    EXPECT_FALSE (roots.find (std::vector<double> { 1.0, std::numeric_limits<double>::quiet_NaN(), 1.0 }));
    EXPECT_FALSE (roots.find (std::vector<double> { std::numeric_limits<double>::infinity(), 1.0 }));
    EXPECT_FALSE (roots.find (std::vector<double> { 1.0, 1.0, 1.0, 1.0, 1.0 })) << "degree 4 where 3 is the greatest";
    EXPECT_TRUE (roots.find (std::vector<double> { 1.0, 1.0, 1.0, 1.0 }));
}

TEST (PolynomialRootsTest, findsTheZerosOfRandomPolynomials)
{
    constexpr unsigned seed = 99;
    std::mt19937 random (seed);
    std::normal_distribution<double> value;

    for (const auto degree : { 5, 17, 40, 98, 118 })
        for (int round = 0; round < 10; ++round)
        {
            std::vector<double> coefficients (std::size_t (degree) + 1);

            for (auto& coefficient : coefficients)
                coefficient = value (random);

            const auto zeros = found (coefficients);
            ASSERT_EQ (zeros.size(), std::size_t (degree));
            EXPECT_LT (worstResidual (coefficients, zeros), 1e-12) << "seed " << seed << " degree " << degree;
        }
}

struct FilterCase
{
    double sampleRate;
    int tapCount;
};

class FilterRootsTest : public testing::TestWithParam<FilterCase>
{
};

// A symmetric filter's zeros come in reciprocal pairs, and their sum is the negative of its second coefficient.
TEST_P (FilterRootsTest, findsTheZerosOfRealFilters)
{
    const auto [sampleRate, tapCount] = GetParam();
    const auto design = LeastSquaresFir::forTapCount (tapCount);
    constexpr unsigned seed = 5;
    std::mt19937 random (seed);
    std::uniform_real_distribution<float> gain (-12.0f, 12.0f), q (0.5f, 10.0f), octave (0.0f, 3.6f);

    for (int round = 0; round < 25; ++round)
    {
        const BandShape shape {
            gain (random), 1600.0f * std::exp2 (octave (random)), q (random), round % 5 == 0, sampleRate
        };
        std::vector<double> curve (curvePointCount);
        evaluateBandCurve (shape, curve);
        std::vector<double> taps (std::size_t (design->tapCount()));
        ASSERT_TRUE (design->designSymmetricFir (curve, taps));

        const auto zeros = found (taps);
        ASSERT_EQ (zeros.size(), taps.size() - 1);
        EXPECT_LT (worstResidual (taps, zeros), 1e-12) << "seed " << seed << " round " << round;

        Complex sum;
        auto size = 0.0;

        for (const auto& zero : zeros)
        {
            sum += zero;
            size += std::abs (zero);
            EXPECT_TRUE (std::any_of (zeros.begin(),
                                      zeros.end(),
                                      [&] (const Complex& other) { return std::abs (zero * other - 1.0) < 1e-6; }))
                << zero;
        }

        EXPECT_LT (std::abs (sum + taps[1] / taps[0]), 1e-8 * size) << "seed " << seed << " round " << round;
    }
}

INSTANTIATE_TEST_SUITE_P (Sources,
                          FilterRootsTest,
                          testing::Values (FilterCase { 48000.0, 99 },
                                           FilterCase { 44100.0, 59 },
                                           FilterCase { 96000.0, 119 },
                                           FilterCase { 88200.0, 39 }),
                          [] (const auto& tested) { return std::to_string (tested.param.tapCount) + "Taps"; });

TEST (PolynomialRootsTest, findAllocatesNothing)
{
    PolynomialRoots roots (118);
    std::vector<double> coefficients (119, 0.01);
    coefficients[59] = 1.0;
    const RealTimeGuard guard;
    const auto allFound = roots.find (coefficients);
    EXPECT_EQ (guard.allocations(), 0);
    EXPECT_EQ (guard.locks(), 0);
    EXPECT_TRUE (allFound);
}
} // namespace
