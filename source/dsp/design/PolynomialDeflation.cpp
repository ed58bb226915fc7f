#include "dsp/design/PolynomialDeflation.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace
{
/** Index of the largest term at a point of this modulus, at least 1 so that the leading coefficient stays. */
std::size_t largestTerm (std::span<const double> polynomial, double modulus) noexcept
{
    auto best = polynomial.size() - 1;
    auto largest = 0.0;
    auto power = 1.0;

    for (auto i = polynomial.size() - 1; i > 0; --i, power *= modulus)
    {
        const auto term = std::abs (polynomial[i]) * power;

        if (term > largest)
        {
            largest = term;
            best = i;
        }
    }

    return best;
}
} // namespace

std::span<double> divideOut (std::span<double> polynomial, double zero) noexcept
{
    const auto degree = polynomial.size() - 1;
    const auto quotient = polynomial.first (degree);

    if (zero == 0.0)
        return quotient;

    const auto join = largestTerm (polynomial, std::abs (zero));
    auto dividend = polynomial[degree];
    auto last = 0.0;

    for (std::size_t i = 1; i < join; ++i)
        quotient[i] += zero * quotient[i - 1];

    for (auto i = degree; i > join; --i)
    {
        last = (last - dividend) / zero;
        dividend = quotient[i - 1];
        quotient[i - 1] = last;
    }

    return quotient;
}

std::span<double> divideOut (std::span<double> polynomial, double u, double v) noexcept
{
    const auto degree = polynomial.size() - 1;
    const auto quotient = polynomial.first (degree - 1);
    const auto join = std::min (largestTerm (polynomial, std::sqrt (v)), degree - 1);

    for (std::size_t i = 1; i < join; ++i)
        quotient[i] -= u * quotient[i - 1] + (i > 1 ? v * quotient[i - 2] : 0.0);

    // The dividend's coefficients are two places ahead of the quotient's that overwrite them.
    auto dividend = polynomial[degree];
    auto nextDividend = polynomial[degree - 1];
    auto last = 0.0;
    auto lastButOne = 0.0;

    for (auto i = degree - 1; i > join; --i)
    {
        const auto value = (dividend - lastButOne - u * last) / v;
        dividend = nextDividend;
        nextDividend = quotient[i - 1];
        quotient[i - 1] = value;
        lastButOne = last;
        last = value;
    }

    return quotient;
}
