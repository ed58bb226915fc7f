#include "dsp/filters/MagnitudeCurve.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace
{
/** cos and sin of an angle and of its double, each from its own call. */
struct UnitRoots
{
    double cosine1, sine1, cosine2, sine2;
};

double angleStep (std::size_t pointCount) noexcept
{
    return std::numbers::pi / (static_cast<double> (pointCount) - 1.0);
}

UnitRoots unitRootsAt (std::size_t point, double step) noexcept
{
    const auto angle = static_cast<double> (point) * step;
    return { std::cos (angle), std::sin (angle), std::cos (2.0 * angle), std::sin (2.0 * angle) };
}

struct UnitRootTable
{
    UnitRootTable() noexcept
    {
        const auto step = angleStep (curvePointCount);

        for (std::size_t point = 0; point < cosine1.size(); ++point)
        {
            const auto roots = unitRootsAt (point, step);
            cosine1[point] = roots.cosine1;
            sine1[point] = roots.sine1;
            cosine2[point] = roots.cosine2;
            sine2[point] = roots.sine2;
        }
    }

    using Row = std::array<double, curvePointCount>;
    Row cosine1, sine1, cosine2, sine2;
};

// A namespace-scope constant rather than a function's static: no guard is taken on the worker's road.
const UnitRootTable unitRootTable;

struct Section
{
    double a0, a1, a2, b0, b1, b2;

    double magnitudeAt (const UnitRoots& roots) const noexcept
    {
        const auto numeratorReal = b0 + b1 * roots.cosine1 + b2 * roots.cosine2;
        const auto numeratorImaginary = -(b1 * roots.sine1 + b2 * roots.sine2);
        const auto denominatorReal = a0 + a1 * roots.cosine1 + a2 * roots.cosine2;
        const auto denominatorImaginary = -(a1 * roots.sine1 + a2 * roots.sine2);

        // The quotient is the numerator times the conjugate denominator over the denominator's squared modulus.
        const auto productReal = denominatorReal * numeratorReal + denominatorImaginary * numeratorImaginary;
        const auto productImaginary = denominatorReal * numeratorImaginary - denominatorImaginary * numeratorReal;
        const auto denominatorSquared = denominatorReal * denominatorReal + denominatorImaginary * denominatorImaginary;

        return std::sqrt ((productReal * productReal + productImaginary * productImaginary)
                          / (denominatorSquared * denominatorSquared));
    }
};
} // namespace

void curveOfCoefficients (double a0,
                          double a1,
                          double a2,
                          double b0,
                          double b1,
                          double b2,
                          std::span<double> curve) noexcept
{
    const Section section { a0, a1, a2, b0, b1, b2 };
    const auto pointCount = curve.size();

    if (pointCount == curvePointCount)
    {
        const auto& table = unitRootTable;

        for (std::size_t point = 0; point < curvePointCount; ++point)
            curve[point] = section.magnitudeAt (
                { table.cosine1[point], table.sine1[point], table.cosine2[point], table.sine2[point] });

        return;
    }

    const auto step = angleStep (pointCount);

    for (std::size_t point = 0; point < pointCount; ++point)
        curve[point] = section.magnitudeAt (unitRootsAt (point, step));
}

void curveOfCoefficients (const PeakCoefficients& peak, std::span<double> curve) noexcept
{
    curveOfCoefficients (peak.a0, peak.a1, peak.a2, peak.b0, peak.b1, peak.b2, curve);
}

void curveOfCoefficients (const orvik::Shelving<double>& shelf, std::span<double> curve) noexcept
{
    curveOfCoefficients (shelf.a0, shelf.a1, shelf.a2, shelf.b0, shelf.b1, shelf.b2, curve);
}
