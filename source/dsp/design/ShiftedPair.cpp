#include "dsp/design/ShiftedPair.h"

#include "dsp/design/PolynomialDeflation.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{
constexpr double epsilon = std::numeric_limits<double>::epsilon();

// A value of P within this multiple of its rounding error cannot be told from zero.
constexpr double acceptedErrors = 20.0;

/** Divides by x^2 + u x + v. The last two entries of `quotient` are the remainder's slope and offset. */
void divide (std::span<const double> dividend, double u, double v, std::span<double> quotient) noexcept
{
    quotient[0] = dividend[0];

    if (dividend.size() < 2)
        return;

    quotient[1] = dividend[1] - u * quotient[0];

    for (std::size_t i = 2; i < dividend.size(); ++i)
        quotient[i] = dividend[i] - u * quotient[i - 1] - v * quotient[i - 2];
}

/** Horner's scheme: the quotient by x - at, whose last entry is the value. */
double divideLinear (std::span<const double> dividend, double at, std::span<double> quotient) noexcept
{
    auto value = dividend[0];
    quotient[0] = value;

    for (std::size_t i = 1; i < dividend.size(); ++i)
    {
        value = value * at + dividend[i];
        quotient[i] = value;
    }

    return value;
}
} // namespace

ShiftedPair::ShiftedPair (std::size_t maxDegree)
    : p (maxDegree + 1), k (maxDegree + 1), quotientP (maxDegree + 1), quotientK (maxDegree + 1)
{
}

void ShiftedPair::take (std::span<const double> coefficients) noexcept
{
    n = coefficients.size() - 1;

    for (std::size_t i = 0; i <= n; ++i)
        p[i] = coefficients[i] / coefficients[0];
}

void ShiftedPair::takeOut (double zero) noexcept
{
    n = divideOut ({ p.data(), n + 1 }, zero).size() - 1;
}

void ShiftedPair::takeOut (const Quadratic& factor) noexcept
{
    n = divideOut ({ p.data(), n + 1 }, factor.u, factor.v).size() - 1;
}

void ShiftedPair::keepK (std::span<double> store) const noexcept
{
    std::copy_n (k.begin(), n, store.begin());
}

void ShiftedPair::restoreK (std::span<const double> store) noexcept
{
    std::copy_n (store.begin(), n, k.begin());
}

void ShiftedPair::shiftFromZero (int times) noexcept
{
    for (std::size_t i = 0; i < n; ++i)
        k[i] = p[i] * static_cast<double> (n - i) / static_cast<double> (n);

    for (int shift = 0; shift < times; ++shift)
    {
        const auto vanishes = std::abs (k[n - 1]) <= std::abs (p[n - 1]) * epsilon * 10.0;
        const auto factor = vanishes ? 1.0 : -p[n] / k[n - 1];

        for (auto i = n - 1; i > 0; --i)
            k[i] = factor * k[i - 1] + (vanishes ? 0.0 : p[i]);

        k[0] = vanishes ? 0.0 : p[0];
    }
}

void ShiftedPair::divideP (const Quadratic& sigma) noexcept
{
    divide ({ p.data(), n + 1 }, sigma.u, sigma.v, quotientP);
    remainderP = { quotientP[n - 1], quotientP[n] };
}

void ShiftedPair::divideK (const Quadratic& sigma) noexcept
{
    divide ({ k.data(), n }, sigma.u, sigma.v, quotientK);
    remainderK = { quotientK[n - 2], quotientK[n - 1] };
}

bool ShiftedPair::stepK (const Quadratic& sigma) noexcept
{
    const auto [b, a] = remainderP;
    const auto [d, c] = remainderK;

    if (std::abs (c) <= 100.0 * epsilon * std::abs (k[n - 1]) && std::abs (d) <= 100.0 * epsilon * std::abs (k[n - 2]))
    {
        for (auto i = n - 1; i >= 2; --i)
            k[i] = quotientK[i - 2];

        k[0] = k[1] = 0.0;
        return false;
    }

    const auto determinant = b * c - a * d;
    const auto factorK = a * a + sigma.u * a * b + sigma.v * b * b;
    const auto factorP = a * c + sigma.u * a * d + sigma.v * b * d;
    const auto vanishes = std::abs (determinant) <= 10.0 * epsilon * (std::abs (b * c) + std::abs (a * d));
    const auto scaleP = vanishes ? 0.0 : 1.0;
    const auto f = vanishes ? factorK : factorK / determinant;
    const auto g = vanishes ? factorP : factorP / determinant;

    k[0] = scaleP * quotientP[0];
    k[1] = scaleP * quotientP[1] - g * quotientP[0];

    for (std::size_t i = 2; i < n; ++i)
        k[i] = scaleP * quotientP[i] - g * quotientP[i - 1] + f * quotientK[i - 2];

    return ! vanishes;
}

double ShiftedPair::nextZero() const noexcept
{
    return k[n - 1] != 0.0 ? -p[n] / k[n - 1] : 0.0;
}

Quadratic ShiftedPair::nextQuadratic (const Quadratic& sigma) const noexcept
{
    struct Line
    {
        double slope, offset;

        double determinant (const Line& other) const noexcept { return slope * other.offset - offset * other.slope; }
    };

    const Line lineP { remainderP.slope, remainderP.offset + sigma.u * remainderP.slope };
    const Line line0 { remainderK.slope, remainderK.offset + sigma.u * remainderK.slope };

    const auto shifted = [&] (const Line& line, double ratio)
    {
        const auto slope = line.slope - ratio * lineP.slope;
        const auto perV = (line.offset - ratio * lineP.offset) / sigma.v;
        return Line { -perV, slope - perV * sigma.u };
    };

    const auto ratio0 = k[n - 1] / p[n];
    const auto line1 = shifted (line0, ratio0);
    const auto ratio1 = (k[n - 2] - ratio0 * p[n - 1]) / p[n];
    const auto line2 = shifted (line1, ratio1);

    const auto divisor = line1.determinant (line2);
    const Quadratic next { -line0.determinant (line2) / divisor, line0.determinant (line1) / divisor };
    return std::isfinite (next.u) && std::isfinite (next.v) ? next : Quadratic {};
}

bool ShiftedPair::isZeroPair (const Quadratic& sigma, const std::complex<double>& zero, double& residual) const noexcept
{
    const auto [b, a] = remainderP;
    const auto modulus = std::sqrt (std::abs (sigma.v));
    residual = std::abs (a - zero.real() * b) + std::abs (zero.imag() * b);

    auto bound = 2.0 * std::abs (quotientP[0]);

    for (std::size_t i = 1; i < n; ++i)
        bound = bound * modulus + std::abs (quotientP[i]);

    const auto real = std::abs (a - zero.real() * b);
    bound = bound * modulus + real;
    const auto error =
        epsilon * (9.0 * bound - 7.0 * (real + std::abs (b) * modulus) + 2.0 * std::abs (zero.real() * b));
    return residual <= acceptedErrors * error;
}

ShiftedPair::ValueOfP ShiftedPair::divideP (double shift) noexcept
{
    const auto value = divideLinear ({ p.data(), n + 1 }, shift, quotientP);
    auto bound = 0.5 * std::abs (quotientP[0]);

    for (std::size_t i = 1; i <= n; ++i)
        bound = bound * std::abs (shift) + std::abs (quotientP[i]);

    const auto size = std::abs (value);
    return { value, size <= acceptedErrors * epsilon * (2.0 * bound - size) };
}

double ShiftedPair::stepK (double shift, double valueOfP) noexcept
{
    const auto vanishesBeside = [this] (double valueOfK)
    { return std::abs (valueOfK) <= std::abs (k[n - 1]) * epsilon * 10.0; };

    const auto valueOfK = divideLinear ({ k.data(), n }, shift, quotientK);
    const auto vanishes = vanishesBeside (valueOfK);
    const auto factor = vanishes ? 1.0 : -valueOfP / valueOfK;

    k[0] = vanishes ? 0.0 : quotientP[0];

    for (std::size_t i = 1; i < n; ++i)
        k[i] = (vanishes ? 0.0 : quotientP[i]) + factor * quotientK[i - 1];

    auto valueOfNext = k[0];

    for (std::size_t i = 1; i < n; ++i)
        valueOfNext = valueOfNext * shift + k[i];

    return vanishesBeside (valueOfNext) ? 0.0 : -valueOfP / valueOfNext;
}
