#include "targets/MakimaCurve.h"

#include <algorithm>
#include <cmath>
#include <limits>

/** Solves a general linear system by LU factorisation with partial pivoting. */
extern "C" void
dgesv_ (const int* n, const int* nrhs, double* a, const int* lda, int* ipiv, double* b, const int* ldb, int* info);

namespace
{
constexpr std::size_t fewestKnots = 3;

/** Secant slopes with two more at either end, so that index i + 2 holds the slope from knot i to the next. */
std::vector<double> extendedSecants (std::span<const double> x, std::span<const double> y)
{
    const auto secantCount = x.size() - 1;
    std::vector<double> m (secantCount + 4);

    for (std::size_t i = 0; i < secantCount; ++i)
        m[i + 2] = (y[i + 1] - y[i]) / (x[i + 1] - x[i]);

    m[1] = 2.0 * m[2] - m[3];
    m[0] = 2.0 * m[1] - m[2];

    const auto end = secantCount + 2;
    m[end] = 2.0 * m[end - 1] - m[end - 2];
    m[end + 1] = 2.0 * m[end] - m[end - 1];
    return m;
}

std::vector<double> slopesAtKnots (const std::vector<double>& m, std::size_t knotCount)
{
    std::vector<double> slopes (knotCount);

    for (std::size_t i = 0; i < knotCount; ++i)
    {
        const auto before = m[i + 1];
        const auto after = m[i + 2];
        const auto w1 = std::abs (m[i + 3] - after) + std::abs (m[i + 3] + after) / 2.0;
        const auto w2 = std::abs (before - m[i]) + std::abs (before + m[i]) / 2.0;
        slopes[i] = w1 / (w1 + w2) * before + w2 / (w1 + w2) * after;
    }

    return slopes;
}

MakimaCurve::Cubic solveCubic (double x0, double x1, double y0, double y1, double d0, double d1)
{
    constexpr int order = 4;
    constexpr int one = 1;

    // Column by column: the powers of both knots for the values, then their derivatives for the slopes.
    std::array<double, 16> matrix { x0 * x0 * x0, x1 * x1 * x1, 3.0 * x0 * x0, 3.0 * x1 * x1,
                                    x0 * x0,      x1 * x1,      2.0 * x0,      2.0 * x1,
                                    x0,           x1,           1.0,           1.0,
                                    1.0,          1.0,          0.0,           0.0 };
    std::array<double, 4> solution { y0, y1, d0, d1 };
    std::array<int, 4> pivots {};
    int info = 0;
    dgesv_ (&order, &one, matrix.data(), &order, pivots.data(), solution.data(), &order, &info);

    if (info != 0)
        solution.fill (std::numeric_limits<double>::quiet_NaN());

    return { solution[0], solution[1], solution[2], solution[3] };
}
} // namespace

bool MakimaCurve::Cubic::isDefined() const noexcept
{
    return ! (std::isnan (a) || std::isnan (b) || std::isnan (c) || std::isnan (e));
}

MakimaCurve::MakimaCurve (std::span<const double> x, std::span<const double> y)
{
    if (x.size() < fewestKnots || y.size() < x.size())
        return;

    slopes = slopesAtKnots (extendedSecants (x, y), x.size());

    for (std::size_t i = 0; i + 1 < x.size(); ++i)
        segments.push_back (solveCubic (x[i], x[i + 1], y[i], y[i + 1], slopes[i], slopes[i + 1]));
}

bool MakimaCurve::isDefined() const noexcept
{
    return std::all_of (segments.begin(), segments.end(), [] (const Cubic& cubic) { return cubic.isDefined(); });
}
