#include "dsp/design/LeastSquaresFir.h"

#include "dsp/design/BandCurves.h"
#include "dsp/design/FirLengths.h"
#include "dsp/design/Lapack.h"
#include "support/RealTimeGuard.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <random>
#include <set>
#include <vector>

namespace
{
/** The whole system solved by DGELS, with nothing prepared or folded. */
std::vector<double> tapsByDgels (std::vector<double> curve, int tapCount)
{
    const auto half = (tapCount - 1) / 2;
    const int rows = curvePointCount, columns = half + 1, one = 1;
    std::vector<double> matrix (std::size_t (rows * columns));

    for (int c = 0; c < columns; ++c)
        for (int r = 0; r < rows; ++r)
            matrix[std::size_t (c * rows + r)] =
                std::cos (double (c) * double (r) / double (rows - 1) * std::numbers::pi);

    int info = 0, workSize = -1;
    auto wanted = 0.0;
    dgels_ ("N", &rows, &columns, &one, matrix.data(), &rows, curve.data(), &rows, &wanted, &workSize, &info, 1);
    workSize = int (wanted);
    std::vector<double> work (std::size_t (workSize), 0.0);
    dgels_ ("N", &rows, &columns, &one, matrix.data(), &rows, curve.data(), &rows, work.data(), &workSize, &info, 1);
    EXPECT_EQ (info, 0);

    std::vector<double> taps (std::size_t (2 * half + 1));
    taps[std::size_t (half)] = curve[0];

    for (int i = 1; i <= half; ++i)
        taps[std::size_t (half - i)] = taps[std::size_t (half + i)] = curve[std::size_t (i)] / 2.0;

    return taps;
}

std::vector<double> designed (const std::vector<double>& curve, int tapCount)
{
    std::vector<double> taps (std::size_t (LeastSquaresFir::symmetricTapCount (tapCount)));
    EXPECT_TRUE (LeastSquaresFir::forTapCount (tapCount)->designSymmetricFir (curve, taps));
    return taps;
}

std::set<int> lengthsOfTheTable()
{
    std::set<int> lengths { soloTapCount };

    for (const auto rate : { 48000.0, 96000.0, 192000.0 })
        for (const auto mode : { FilterMode::mix, FilterMode::master })
        {
            const auto row = firLengthsFor (rate, mode);
            lengths.insert ({ row.linearHighTapCount, row.lowTapCount });

            if (row.minimumSourceTapCount > 0)
                lengths.insert (row.minimumSourceTapCount);
        }

    return lengths;
}

class LeastSquaresFirTest : public testing::TestWithParam<int>
{
protected:
    static void expectTapsNear (const std::vector<double>& actual, const std::vector<double>& expected)
    {
        ASSERT_EQ (actual.size(), expected.size());

        for (std::size_t i = 0; i < actual.size(); ++i)
            ASSERT_NEAR (actual[i], expected[i], 1e-10) << i;
    }
};

TEST_P (LeastSquaresFirTest, agreesWithDgelsOnRandomCurves)
{
    constexpr unsigned seed = 7;
    std::mt19937 random (seed);
    std::uniform_real_distribution<double> value (0.2, 4.0);
    std::vector<double> curve (curvePointCount);

    for (auto& point : curve)
        point = value (random);

    expectTapsNear (designed (curve, GetParam()), tapsByDgels (curve, GetParam()));
}

TEST_P (LeastSquaresFirTest, agreesWithDgelsOnBandCurves)
{
    for (const auto& shape : { BandShape { 12.0f, 4000.0f, 5.0f, false, 48000.0 },
                               BandShape { -12.0f, 1800.0f, 0.5f, false, 48000.0 },
                               BandShape { 9.0f, 8000.0f, 1.0f, true, 44100.0 } })
    {
        std::vector<double> curve (curvePointCount);
        evaluateBandCurve (shape, curve);
        expectTapsNear (designed (curve, GetParam()), tapsByDgels (curve, GetParam()));
    }
}

TEST_P (LeastSquaresFirTest, aCosineSeriesComesBackExactly)
{
    const auto half = std::size_t ((GetParam() - 1) / 2);
    std::vector<double> series (half + 1);

    for (std::size_t c = 0; c <= half; ++c)
        series[c] = 1.0 / double (c + 1) * (c % 3 == 0 ? 1.0 : -0.5);

    std::vector<double> curve (curvePointCount);

    for (std::size_t r = 0; r < curve.size(); ++r)
        for (std::size_t c = 0; c <= half; ++c)
            curve[r] += series[c] * std::cos (std::numbers::pi * double (c * r) / 1023.0);

    const auto taps = designed (curve, GetParam());
    ASSERT_EQ (taps.size(), 2 * half + 1);
    EXPECT_NEAR (taps[half], series[0], 1e-11);

    for (std::size_t i = 1; i <= half; ++i)
    {
        EXPECT_NEAR (taps[half + i], series[i] / 2.0, 1e-11);
        EXPECT_EQ (taps[half + i], taps[half - i]);
    }
}

INSTANTIATE_TEST_SUITE_P (TapCounts,
                          LeastSquaresFirTest,
                          testing::ValuesIn (lengthsOfTheTable()),
                          testing::PrintToStringParamName());

TEST (LeastSquaresFirLengthTest, anEvenCountGivesOneTapFewer)
{
    EXPECT_EQ (LeastSquaresFir::symmetricTapCount (100), 99);
    EXPECT_EQ (LeastSquaresFir::symmetricTapCount (60), 59);
    EXPECT_EQ (LeastSquaresFir::symmetricTapCount (120), 119);
    EXPECT_EQ (LeastSquaresFir::symmetricTapCount (40), 39);
    EXPECT_EQ (LeastSquaresFir::symmetricTapCount (101), 101);
    EXPECT_EQ (LeastSquaresFir::forTapCount (100)->tapCount(), 99);
}

TEST (LeastSquaresFirLengthTest, lengthsOutsideTheTablesRangeHaveNoDesign)
{
    EXPECT_EQ (LeastSquaresFir::forTapCount (0), nullptr);
    EXPECT_EQ (LeastSquaresFir::forTapCount (-3), nullptr);
    EXPECT_EQ (LeastSquaresFir::forTapCount (maxFirTapCount + 1), nullptr);
}

TEST (LeastSquaresFirLengthTest, theSameLengthIsSharedWhileItIsHeld)
{
    const auto first = LeastSquaresFir::forTapCount (61);
    EXPECT_EQ (first, LeastSquaresFir::forTapCount (61));
    EXPECT_NE (first, LeastSquaresFir::forTapCount (63));
}

TEST (LeastSquaresFirFailureTest, leavesTheTapsWhenItCannotDesign)
{
    const auto design = LeastSquaresFir::forTapCount (61);
    const std::vector<double> before (61, 0.25);
    auto taps = before;

    EXPECT_FALSE (design->designSymmetricFir (std::vector<double> (1023, 1.0), taps));
    EXPECT_EQ (taps, before);

    for (const auto bad : { std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity() })
    {
        std::vector<double> curve (curvePointCount, 1.0);
        curve[100] = bad;
        EXPECT_FALSE (design->designSymmetricFir (curve, taps));
        EXPECT_EQ (taps, before);
    }

    std::vector<double> wrongLength (60, 0.25);
    EXPECT_FALSE (design->designSymmetricFir (std::vector<double> (curvePointCount, 1.0), wrongLength));
    EXPECT_EQ (wrongLength, std::vector<double> (60, 0.25));
}

TEST (LeastSquaresFirRealTimeTest, aDesignNeitherAllocatesNorLocks)
{
    const auto design = LeastSquaresFir::forTapCount (301);
    const std::vector<double> curve (curvePointCount, 1.5);
    std::vector<double> taps (301);
    const RealTimeGuard guard;
    const auto done = design->designSymmetricFir (curve, taps);
    EXPECT_EQ (guard.allocations(), 0);
    EXPECT_EQ (guard.locks(), 0);
    EXPECT_TRUE (done);
    EXPECT_NEAR (taps[150], 1.5, 1e-12);
}
} // namespace
