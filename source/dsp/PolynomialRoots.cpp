#include "dsp/PolynomialRoots.h"

#include "dsp/PolynomialDeflation.h"
#include "dsp/ZeroRefinement.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

namespace
{
constexpr double epsilon = std::numeric_limits<double>::epsilon();

constexpr int zeroShiftCount = 5;
constexpr int maxFixedShifts = 20;
constexpr int fixedShiftSteps = 20;
constexpr int maxQuadraticSteps = 20;
constexpr int maxLinearSteps = 10;

// Successive starting points lie 94 degrees apart: no two of them fall together for a long time.
constexpr double startAngle = 49.0 * std::numbers::pi / 180.0;
constexpr double angleStep = 94.0 * std::numbers::pi / 180.0;

// A value of P within this multiple of its rounding error cannot be told from zero.
constexpr double acceptedErrors = 20.0;

using Zero = std::complex<double>;

/** The zeros of x^2 + u x + v: conjugates, or two real ones with the smaller first. */
std::pair<Zero, Zero> zerosOf (double u, double v) noexcept
{
    const auto half = -0.5 * u;
    const auto discriminant = half * half - v;

    if (discriminant < 0.0)
    {
        const auto imaginary = std::sqrt (-discriminant);
        return { { half, imaginary }, { half, -imaginary } };
    }

    const auto larger = half + std::copysign (std::sqrt (discriminant), half);
    return { { larger != 0.0 ? v / larger : 0.0, 0.0 }, { larger, 0.0 } };
}

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

PolynomialRoots::PolynomialRoots (int maxDegreeToServe)
    : maxDegree (static_cast<std::size_t> (maxDegreeToServe)),
      given (maxDegree + 1),
      p (maxDegree + 1),
      k (maxDegree + 1),
      quotientP (maxDegree + 1),
      quotientK (maxDegree + 1),
      keptK (maxDegree + 1),
      startK (maxDegree + 1),
      found (maxDegree)
{
}

bool PolynomialRoots::find (std::span<const double> coefficients) noexcept
{
    foundCount = 0;

    if (! std::all_of (coefficients.begin(), coefficients.end(), [] (double c) { return std::isfinite (c); }))
        return false;

    const auto notZero = [] (double c) { return c != 0.0; };
    const auto first = std::find_if (coefficients.begin(), coefficients.end(), notZero);
    const auto last = std::find_if (coefficients.rbegin(), coefficients.rend(), notZero).base();
    const auto stripped = coefficients.subspan (static_cast<std::size_t> (first - coefficients.begin()));

    if (stripped.empty() || stripped.size() - 1 > maxDegree)
        return false;

    for (auto remaining = coefficients.end() - last; remaining > 0; --remaining)
        append (0.0);

    strippedCount = foundCount;
    takeCoefficients (stripped.first (static_cast<std::size_t> (last - first)));
    angle = startAngle;

    while (degree > 2)
        if (! findNext())
            return false;

    takeRest();
    return ZeroRefinement (givenPolynomial()).settle (foundZeros());
}

void PolynomialRoots::takeCoefficients (std::span<const double> coefficients) noexcept
{
    givenDegree = degree = coefficients.size() - 1;

    for (std::size_t i = 0; i <= degree; ++i)
        given[i] = p[i] = coefficients[i] / coefficients[0];
}

/** Finds one zero or a pair of the deflated polynomial and takes it out. */
bool PolynomialRoots::findNext() noexcept
{
    // Deflation may round the last coefficient away.
    if (p[degree] == 0.0)
    {
        takeLinear (0.0);
        return true;
    }

    const auto radius = lowerBoundOfModuli();
    applyZeroShifts();
    std::copy_n (k.begin(), degree, startK.begin());

    for (int attempt = 1; attempt <= maxFixedShifts; ++attempt)
    {
        angle += angleStep;
        const Quadratic sigma { -2.0 * radius * std::cos (angle), radius * radius };

        if (applyFixedShift (sigma, fixedShiftSteps * attempt))
            return true;

        std::copy_n (startK.begin(), degree, k.begin());
    }

    return false;
}

/** Cauchy's bound: the positive x at which |p0| x^n + ... + |p(n-1)| x equals |pn|, to about half a percent.

    Newton's steps go over logarithms: the sum is convex in them, so a few steps serve from anywhere, where plain ones
    would creep down from a high power by one part in n at a time. */
double PolynomialRoots::lowerBoundOfModuli() const noexcept
{
    constexpr int maxSteps = 50;
    const auto last = std::abs (p[degree]);
    auto x = std::pow (last, 1.0 / static_cast<double> (degree));

    for (int step = 0; step < maxSteps; ++step)
    {
        auto value = 1.0;
        auto slope = 0.0;

        for (std::size_t i = 1; i < degree; ++i)
        {
            slope = slope * x + value;
            value = value * x + std::abs (p[i]);
        }

        // Of the sum x * value, the slope is value + x * slope.
        const auto logStep = std::log (x * value / last) * value / (value + x * slope);
        x *= std::exp (-logStep);

        if (! (std::abs (logStep) > 0.005))
            break;
    }

    return x;
}

/** Stage one: K starts as the derivative and is shifted from 0, which brings out the small zeros. */
void PolynomialRoots::applyZeroShifts() noexcept
{
    const auto n = degree;

    for (std::size_t i = 0; i < n; ++i)
        k[i] = p[i] * static_cast<double> (n - i) / static_cast<double> (n);

    for (int shift = 0; shift < zeroShiftCount; ++shift)
    {
        const auto vanishes = std::abs (k[n - 1]) <= std::abs (p[n - 1]) * epsilon * 10.0;
        const auto factor = vanishes ? 1.0 : -p[n] / k[n - 1];

        for (auto i = n - 1; i > 0; --i)
            k[i] = factor * k[i - 1] + (vanishes ? 0.0 : p[i]);

        k[0] = vanishes ? 0.0 : p[0];
    }
}

void PolynomialRoots::Convergence::update (double change) noexcept
{
    product = change < lastChange ? change * lastChange : 1.0;
    passed = product < tolerance;
    lastChange = change;
}

/** Stage two: the same quadratic shift again and again, until the estimates that come out of it begin to settle. */
bool PolynomialRoots::applyFixedShift (const Quadratic& sigma, int stepCount) noexcept
{
    Convergence quadratic;
    Convergence linear;
    Estimates last { sigma, 0.0 };

    divideP (sigma);
    divideK (sigma);

    for (int step = 0; step < stepCount; ++step)
    {
        const auto scaled = stepK (sigma);
        divideK (sigma);

        Estimates now { scaled ? nextQuadratic (sigma) : Quadratic {}, 0.0 };

        if (k[degree - 1] != 0.0)
            now.real = -p[degree] / k[degree - 1];

        auto quadraticChange = 1.0;
        auto linearChange = 1.0;

        if (step > 0 && scaled)
        {
            if (now.quadratic.v != 0.0)
                quadraticChange = std::abs ((now.quadratic.v - last.quadratic.v) / now.quadratic.v);

            if (now.real != 0.0)
                linearChange = std::abs ((now.real - last.real) / now.real);
        }

        quadratic.update (quadraticChange);
        linear.update (linearChange);

        if (step > 0 && scaled && (quadratic.passed || linear.passed))
        {
            std::copy_n (k.begin(), degree, keptK.begin());

            if (applyVariableShift (now, quadratic, linear))
                return true;

            std::copy_n (keptK.begin(), degree, k.begin());
            divideP (sigma);
            divideK (sigma);
        }

        last = now;
    }

    return false;
}

/** Stage three, from the estimate that has settled best; the other one, if it has settled too, gets a second chance. */
bool PolynomialRoots::applyVariableShift (const Estimates& start, Convergence& quadratic, Convergence& linear) noexcept
{
    auto sigma = start.quadratic;
    auto tryLinear = linear.passed && (! quadratic.passed || linear.product < quadratic.product);
    auto quadraticTried = false;
    auto linearTried = false;

    for (;;)
    {
        if (tryLinear)
        {
            auto shift = start.real;
            const auto outcome = iterateLinear (shift);

            if (outcome == LinearOutcome::found)
                return true;

            linearTried = true;
            linear.tolerance *= 0.25;

            // Two zeros so close together that the iteration stalls between them: a double zero is the better guess.
            if (outcome == LinearOutcome::cluster)
                sigma = { -2.0 * shift, shift * shift };
            else if (! quadratic.passed || quadraticTried)
                return false;
            else
                std::copy_n (keptK.begin(), degree, k.begin());
        }

        if (iterateQuadratic (sigma))
            return true;

        quadraticTried = true;
        quadratic.tolerance *= 0.25;

        if (linearTried || ! linear.passed)
            return false;

        tryLinear = true;
        std::copy_n (keptK.begin(), degree, k.begin());
    }
}

/** Lets the quadratic shift follow its own estimates; converges to a pair of conjugates or of real zeros of like size.
 */
bool PolynomialRoots::iterateQuadratic (Quadratic sigma) noexcept
{
    auto clusterTried = false;
    auto relativeStep = 0.0;
    auto lastResidual = 0.0;

    for (int step = 0; step <= maxQuadraticSteps; ++step)
    {
        const auto [small, large] = zerosOf (sigma.u, sigma.v);
        const auto unlike =
            std::abs (std::abs (small.real()) - std::abs (large.real())) > 0.01 * std::abs (large.real());

        if (small.imag() == 0.0 && unlike)
            return false;

        divideP (sigma);
        auto residual = 0.0;

        if (isZeroPair (sigma, small, residual))
        {
            takeQuadratic (sigma);
            return true;
        }

        // A stall beside a cluster: some steps with a shift a little off it bring out one of its zeros.
        if (step >= 2 && relativeStep <= 0.01 && residual >= lastResidual && ! clusterTried)
        {
            const auto offset = std::sqrt (std::max (relativeStep, epsilon));
            sigma = { sigma.u - sigma.u * offset, sigma.v + sigma.v * offset };
            divideP (sigma);

            for (int shift = 0; shift < zeroShiftCount; ++shift)
            {
                divideK (sigma);
                stepK (sigma);
            }

            clusterTried = true;
            step = 0;
        }

        lastResidual = residual;
        divideK (sigma);
        const auto scaled = stepK (sigma);
        divideK (sigma);
        const auto next = scaled ? nextQuadratic (sigma) : Quadratic {};

        if (next.v == 0.0)
            return false;

        relativeStep = std::abs ((next.v - sigma.v) / next.v);
        sigma = next;
    }

    return false;
}

/** Lets a real shift follow its own estimates; leaves the place of the stall in `shift` when it finds a cluster. */
PolynomialRoots::LinearOutcome PolynomialRoots::iterateLinear (double& shift) noexcept
{
    auto lastStep = 0.0;
    auto lastResidual = 0.0;

    for (int step = 0; step <= maxLinearSteps; ++step)
    {
        const auto value = divideLinear ({ p.data(), degree + 1 }, shift, quotientP);
        const auto residual = std::abs (value);
        auto bound = 0.5 * std::abs (quotientP[0]);

        for (std::size_t i = 1; i <= degree; ++i)
            bound = bound * std::abs (shift) + std::abs (quotientP[i]);

        if (residual <= acceptedErrors * epsilon * (2.0 * bound - residual))
        {
            takeLinear (shift);
            return LinearOutcome::found;
        }

        if (step >= 2 && std::abs (lastStep) <= 0.001 * std::abs (shift - lastStep) && residual > lastResidual)
            return LinearOutcome::cluster;

        lastResidual = residual;
        stepKLinear (shift, value);
        auto valueOfK = k[0];

        for (std::size_t i = 1; i < degree; ++i)
            valueOfK = valueOfK * shift + k[i];

        const auto vanishes = std::abs (valueOfK) <= std::abs (k[degree - 1]) * epsilon * 10.0;
        lastStep = vanishes ? 0.0 : -value / valueOfK;
        shift += lastStep;
    }

    return LinearOutcome::failed;
}

void PolynomialRoots::divideP (const Quadratic& sigma) noexcept
{
    divide ({ p.data(), degree + 1 }, sigma.u, sigma.v, quotientP);
    remainderP = { quotientP[degree - 1], quotientP[degree] };
}

void PolynomialRoots::divideK (const Quadratic& sigma) noexcept
{
    divide ({ k.data(), degree }, sigma.u, sigma.v, quotientK);
    remainderK = { quotientK[degree - 2], quotientK[degree - 1] };
}

/** K plus the multiple of P of degree one that makes the sum divisible by sigma, divided by sigma.

    With P = Qp sigma + b (x + u) + a and K = Qk sigma + d (x + u) + c it is
    (a^2 + u a b + v b^2) / (b c - a d) Qk + (x - (a c + u a d + v b d) / (b c - a d)) Qp + b, which keeps the leading
    coefficient of P. False, with an unscaled K, when b c - a d vanishes. Expects both divisions to be up to date. */
bool PolynomialRoots::stepK (const Quadratic& sigma) noexcept
{
    const auto n = degree;
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

/** The same step for a real shift; expects P to be divided by x - shift. */
bool PolynomialRoots::stepKLinear (double shift, double valueOfP) noexcept
{
    const auto n = degree;
    const auto valueOfK = divideLinear ({ k.data(), n }, shift, quotientK);
    const auto vanishes = std::abs (valueOfK) <= std::abs (k[n - 1]) * epsilon * 10.0;
    const auto factor = vanishes ? 1.0 : -valueOfP / valueOfK;

    k[0] = vanishes ? 0.0 : quotientP[0];

    for (std::size_t i = 1; i < n; ++i)
        k[i] = (vanishes ? 0.0 : quotientP[i]) + factor * quotientK[i - 1];

    return ! vanishes;
}

/** The quadratic that K points at. With K0 = K and K(j+1) = (Kj - Kj(0) / P(0) P) / x it is
    (D12 x^2 - D02 x + D01) / D12, where Dij is the determinant of Ki and Kj at the two zeros of sigma; the remainders
    modulo sigma are enough for those. {0, 0} when it does not exist. Expects both divisions to be up to date. */
PolynomialRoots::Quadratic PolynomialRoots::nextQuadratic (const Quadratic& sigma) const noexcept
{
    struct Line
    {
        double slope, offset;

        double determinant (const Line& other) const noexcept { return slope * other.offset - offset * other.slope; }
    };

    const auto n = degree;
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

/** Whether P at a zero of sigma is no more than rounding error; `residual` is its size. */
bool PolynomialRoots::isZeroPair (const Quadratic& sigma, const Zero& zero, double& residual) const noexcept
{
    const auto [b, a] = remainderP;
    const auto modulus = std::sqrt (std::abs (sigma.v));
    residual = std::abs (a - zero.real() * b) + std::abs (zero.imag() * b);

    auto bound = 2.0 * std::abs (quotientP[0]);

    for (std::size_t i = 1; i < degree; ++i)
        bound = bound * modulus + std::abs (quotientP[i]);

    const auto real = std::abs (a - zero.real() * b);
    bound = bound * modulus + real;
    const auto error =
        epsilon * (9.0 * bound - 7.0 * (real + std::abs (b) * modulus) + 2.0 * std::abs (zero.real() * b));
    return residual <= acceptedErrors * error;
}

void PolynomialRoots::takeLinear (double zero) noexcept
{
    const auto improved = refined (zero, false).real();
    append (improved);
    degree = divideOut (currentPolynomial(), improved).size() - 1;
}

void PolynomialRoots::takeQuadratic (const Quadratic& sigma) noexcept
{
    const auto [first, second] = zerosOf (sigma.u, sigma.v);

    if (first.imag() != 0.0)
    {
        const auto improved = refined (first, true);
        append (improved);
        append (std::conj (improved));
        degree = divideOut (currentPolynomial(), -2.0 * improved.real(), std::norm (improved)).size() - 1;
    }
    else
    {
        takeLinear (first.real());
        takeLinear (second.real());
    }
}

void PolynomialRoots::takeRest() noexcept
{
    if (degree == 2)
        takeQuadratic ({ p[1], p[2] });
    else if (degree == 1)
        takeLinear (-p[1]);
}

PolynomialRoots::Zero PolynomialRoots::refined (Zero zero, bool repelConjugate) noexcept
{
    return ZeroRefinement (givenPolynomial()).improve (zero, foundZeros(), repelConjugate);
}
