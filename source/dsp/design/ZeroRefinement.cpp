#include "dsp/design/ZeroRefinement.h"

#include <algorithm>
#include <cmath>

namespace
{
using Zero = std::complex<double>;

Zero reciprocal (Zero z) noexcept
{
    return std::conj (z) / std::norm (z);
}

/** A polynomial and its derivative at one point. */
struct ValueAndSlope
{
    Zero value;
    Zero slope;
};

ValueAndSlope evaluate (std::span<const double> coefficients, Zero at) noexcept
{
    ValueAndSlope result { coefficients[0], 0.0 };

    for (const auto coefficient : coefficients.subspan (1))
    {
        result.slope = result.slope * at + result.value;
        result.value = result.value * at + coefficient;
    }

    return result;
}

/** Sum of the reciprocal distances to all zeros but one. */
Zero repulsionAt (Zero point, std::span<const Zero> zeros, std::size_t leftOut) noexcept
{
    Zero sum {};

    for (std::size_t index = 0; index < zeros.size(); ++index)
        if (index != leftOut)
            sum += reciprocal (point - zeros[index]);

    return sum;
}
} // namespace

ZeroRefinement::Zero
ZeroRefinement::improve (Zero zero, std::span<const Zero> known, bool repelConjugate) const noexcept
{
    constexpr int maxSteps = 8;
    auto here = evaluate (polynomial, zero);

    for (int step = 0; step < maxSteps; ++step)
    {
        auto repulsion = repulsionAt (zero, known, known.size());

        if (repelConjugate)
            repulsion += reciprocal (Zero { 0.0, 2.0 * zero.imag() });

        const auto newton = here.value / here.slope;
        const auto moved = zero - newton / (1.0 - newton * repulsion);
        const auto there = evaluate (polynomial, moved);

        if (! (std::abs (there.value) < std::abs (here.value)))
            break;

        zero = moved;
        here = there;
    }

    return zero;
}

bool ZeroRefinement::settle (std::span<Zero> zeros) const noexcept
{
    constexpr int maxSweeps = 60;
    constexpr int firstFreeSweep = 4;

    for (int sweep = 0; sweep < maxSweeps; ++sweep)
    {
        auto settled = true;

        for (std::size_t index = 0; index < zeros.size(); ++index)
        {
            auto& zero = zeros[index];
            const auto repeated = repeatsSimpleZero (zeros, index);

            if (! repeated && isZero (zero))
                continue;

            settled = false;

            if (repeated)
                zero *= std::polar (1.05, 0.5);

            // Zeros on the real axis never leave it by themselves, nor do conjugates part.
            if (sweep == firstFreeSweep)
                zero *= std::polar (1.0, 0.01 * static_cast<double> (index + 1));

            const auto here = evaluate (polynomial, zero);
            const auto newton = here.value / here.slope;
            const auto moved = zero - newton / (1.0 - newton * repulsionAt (zero, zeros, index));

            // A step may lead so far away that the polynomial overflows: back to the circle, another way round.
            const auto usable = std::isfinite (std::abs (moved));
            zero = usable ? moved
                          : std::polar (1.0,
                                        static_cast<double> (index + zeros.size() * static_cast<std::size_t> (sweep)));
        }

        if (settled)
            return true;
    }

    return false;
}

/** Whether an earlier zero lies in the same place although the given polynomial crosses 0 there only once. */
bool ZeroRefinement::repeatsSimpleZero (std::span<const Zero> zeros, std::size_t index) const noexcept
{
    constexpr double samePlace = 1e-9;
    constexpr double nearby = 1e-7;

    const auto zero = zeros[index];
    const auto modulus = std::abs (zero);
    const auto isSame = [&] (const Zero& other) { return std::abs (zero - other) <= samePlace * modulus; };

    if (std::none_of (zeros.begin(), zeros.begin() + static_cast<std::ptrdiff_t> (index), isSame))
        return false;

    return std::abs (evaluate (polynomial, zero).slope) * nearby * modulus > roundingErrorAt (modulus);
}

/** Whether the given polynomial's value there is no more than rounding may leave. */
bool ZeroRefinement::isZero (Zero point) const noexcept
{
    const auto value = std::abs (evaluate (polynomial, point).value);
    return std::isfinite (value) && value <= roundingErrorAt (std::abs (point));
}

double ZeroRefinement::roundingErrorAt (double modulus) const noexcept
{
    constexpr double relativeError = 1e-13;
    auto size = 0.0;

    for (const auto coefficient : polynomial)
        size = size * modulus + std::abs (coefficient);

    return relativeError * size;
}
