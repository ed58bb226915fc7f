#include "dsp/design/LeastSquaresFir.h"

#include "dsp/design/FirLengths.h"
#include "dsp/design/Lapack.h"
#include "dsp/filters/MagnitudeCurve.h"
#include "dsp/simd/FunctionVersions.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <mutex>
#include <numbers>

namespace
{
constexpr std::size_t pointCount = curvePointCount;

// cos (c (M - 1 - r) pi / (M - 1)) is cos (c r pi / (M - 1)) with the sign of (-1)^c. So the operator's even rows are
// symmetric over the grid and its odd rows antisymmetric, and half of each row serves on the curve folded in the
// middle.
constexpr std::size_t foldedCount = pointCount / 2;
constexpr std::size_t maxUnknownCount = maxFirTapCount / 2 + 1;
constexpr std::size_t laneCount = 32;
static_assert (pointCount % 2 == 0 && foldedCount % laneCount == 0);

using FoldedCurve = std::array<double, foldedCount>;

SOLVANE_FUNCTION_VERSIONS
void foldCurve (const double* curve, double* sums, double* differences) noexcept
{
    for (std::size_t point = 0; point < foldedCount; ++point)
    {
        const auto mirrored = curve[pointCount - 1 - point];
        sums[point] = curve[point] + mirrored;
        differences[point] = curve[point] - mirrored;
    }
}

/** Many independent sums keep the adders busy and let the compiler use whole vector registers. */
SOLVANE_FUNCTION_VERSIONS
double dotProduct (const double* row, const double* values) noexcept
{
    std::array<double, laneCount> lanes {};

    for (std::size_t start = 0; start < foldedCount; start += laneCount)
        for (std::size_t lane = 0; lane < laneCount; ++lane)
            lanes[lane] += row[start + lane] * values[start + lane];

    for (auto width = laneCount / 2; width > 0; width /= 2)
        for (std::size_t lane = 0; lane < width; ++lane)
            lanes[lane] += lanes[lane + width];

    return lanes[0];
}

/** The cosine matrix, column by column. */
std::vector<double> cosineMatrix (std::size_t unknownCount)
{
    std::vector<double> matrix (pointCount * unknownCount);

    for (std::size_t column = 0; column < unknownCount; ++column)
        for (std::size_t row = 0; row < pointCount; ++row)
            matrix[column * pointCount + row] =
                std::cos (static_cast<double> (column * row) / static_cast<double> (pointCount - 1) * std::numbers::pi);

    return matrix;
}

/** Replaces the matrix by its orthonormal factor and gives the triangular one; empty when LAPACK reports a failure. */
std::vector<double> factorise (std::vector<double>& matrix, std::size_t unknownCount)
{
    const auto rowCount = static_cast<int> (pointCount);
    const auto columnCount = static_cast<int> (unknownCount);
    std::vector<double> tau (unknownCount);
    std::vector<double> work (unknownCount * 64);
    const auto workSize = static_cast<int> (work.size());
    int info = 0;

    dgeqrf_ (&rowCount, &columnCount, matrix.data(), &rowCount, tau.data(), work.data(), &workSize, &info);

    if (info != 0)
        return {};

    std::vector<double> triangle (unknownCount * unknownCount);

    for (std::size_t column = 0; column < unknownCount; ++column)
        for (std::size_t row = 0; row <= column; ++row)
            triangle[column * unknownCount + row] = matrix[column * pointCount + row];

    dorgqr_ (
        &rowCount, &columnCount, &columnCount, matrix.data(), &rowCount, tau.data(), work.data(), &workSize, &info);
    return info == 0 ? triangle : std::vector<double> {};
}

/** Solves R X = Q^T for the operator, an unknown per row and a column per grid point; empty after a failure. */
std::vector<double> solutionOperator (std::size_t unknownCount)
{
    auto orthonormal = cosineMatrix (unknownCount);
    const auto triangle = factorise (orthonormal, unknownCount);

    if (triangle.empty())
        return {};

    std::vector<double> solution (unknownCount * pointCount);

    for (std::size_t point = 0; point < pointCount; ++point)
        for (std::size_t unknown = 0; unknown < unknownCount; ++unknown)
            solution[point * unknownCount + unknown] = orthonormal[unknown * pointCount + point];

    const auto order = static_cast<int> (unknownCount);
    const auto rightSideCount = static_cast<int> (pointCount);
    int info = 0;
    dtrtrs_ ("U", "N", "N", &order, &rightSideCount, triangle.data(), &order, solution.data(), &order, &info, 1, 1, 1);
    return info == 0 ? solution : std::vector<double> {};
}
} // namespace

LeastSquaresFir::LeastSquaresFir (int halfLength) : half (halfLength)
{
    const auto unknownCount = static_cast<std::size_t> (half) + 1;
    const auto solution = solutionOperator (unknownCount);

    if (solution.empty())
        return;

    rows.resize (unknownCount * foldedCount);

    for (std::size_t unknown = 0; unknown < unknownCount; ++unknown)
    {
        const auto sign = unknown % 2 == 0 ? 1.0 : -1.0;

        for (std::size_t point = 0; point < foldedCount; ++point)
        {
            const auto left = solution[point * unknownCount + unknown];
            const auto right = solution[(pointCount - 1 - point) * unknownCount + unknown];
            rows[unknown * foldedCount + point] = 0.5 * (left + sign * right);
        }
    }
}

std::shared_ptr<const LeastSquaresFir> LeastSquaresFir::make (int halfLength)
{
    std::shared_ptr<const LeastSquaresFir> made (new LeastSquaresFir (halfLength));
    return made->rows.empty() ? nullptr : made;
}

std::shared_ptr<const LeastSquaresFir> LeastSquaresFir::forTapCount (int tapCount)
{
    if (tapCount < 1 || tapCount > maxFirTapCount)
        return nullptr;

    static std::mutex mutex;
    static std::array<std::weak_ptr<const LeastSquaresFir>, maxUnknownCount> known;

    const auto halfLength = (tapCount - 1) / 2;
    const std::lock_guard lock (mutex);
    auto& entry = known[static_cast<std::size_t> (halfLength)];

    if (auto shared = entry.lock())
        return shared;

    auto shared = make (halfLength);
    entry = shared;
    return shared;
}

bool LeastSquaresFir::designSymmetricFir (std::span<const double> curve, std::span<double> taps) const noexcept
{
    const auto centre = static_cast<std::size_t> (half);

    if (curve.size() != pointCount || taps.size() != 2 * centre + 1)
        return false;

    FoldedCurve sums;
    FoldedCurve differences;
    foldCurve (curve.data(), sums.data(), differences.data());

    std::array<double, maxUnknownCount> series;
    auto finite = true;

    for (std::size_t unknown = 0; unknown <= centre; ++unknown)
    {
        series[unknown] =
            dotProduct (rows.data() + unknown * foldedCount, unknown % 2 == 0 ? sums.data() : differences.data());
        finite = finite && std::isfinite (series[unknown]);
    }

    if (! finite)
        return false;

    taps[centre] = series[0];

    for (std::size_t distance = 1; distance <= centre; ++distance)
        taps[centre - distance] = taps[centre + distance] = 0.5 * series[distance];

    return true;
}
