#include "dsp/design/PolynomialRoots.h"

#include "dsp/design/ZeroRefinement.h"

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

} // namespace

PolynomialRoots::PolynomialRoots (int maxDegreeToServe)
    : maxDegree (static_cast<std::size_t> (maxDegreeToServe)),
      given (maxDegree + 1),
      pair (maxDegree),
      keptK (maxDegree),
      startK (maxDegree),
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

    while (pair.degree() > 2)
        if (! findNext())
            return false;

    takeRest();
    return ZeroRefinement (givenPolynomial()).settle (foundZeros());
}

void PolynomialRoots::takeCoefficients (std::span<const double> coefficients) noexcept
{
    pair.take (coefficients);
    givenDegree = pair.degree();
    std::ranges::copy (pair.coefficients(), given.begin());
}

/** Finds one zero or a pair of the deflated polynomial and takes it out. */
bool PolynomialRoots::findNext() noexcept
{
    // Deflation may round the last coefficient away.
    if (pair.coefficients().back() == 0.0)
    {
        takeLinear (0.0);
        return true;
    }

    const auto radius = lowerBoundOfModuli();
    pair.shiftFromZero (zeroShiftCount);
    pair.keepK (startK);

    for (int attempt = 1; attempt <= maxFixedShifts; ++attempt)
    {
        angle += angleStep;
        const Quadratic sigma { -2.0 * radius * std::cos (angle), radius * radius };

        if (applyFixedShift (sigma, fixedShiftSteps * attempt))
            return true;

        pair.restoreK (startK);
    }

    return false;
}

/** Cauchy's bound: the positive x at which |p0| x^n + ... + |p(n-1)| x equals |pn|, to about half a percent.

    Newton's steps go over logarithms: the sum is convex in them, so a few steps serve from anywhere, where plain ones
    would creep down from a high power by one part in n at a time. */
double PolynomialRoots::lowerBoundOfModuli() const noexcept
{
    constexpr int maxSteps = 50;
    const auto p = pair.coefficients();
    const auto last = std::abs (p.back());
    auto x = std::pow (last, 1.0 / static_cast<double> (pair.degree()));

    for (int step = 0; step < maxSteps; ++step)
    {
        auto value = 1.0;
        auto slope = 0.0;

        for (std::size_t i = 1; i < pair.degree(); ++i)
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

    pair.divideP (sigma);
    pair.divideK (sigma);

    for (int step = 0; step < stepCount; ++step)
    {
        const auto scaled = pair.stepK (sigma);
        pair.divideK (sigma);

        const Estimates now { scaled ? pair.nextQuadratic (sigma) : Quadratic {}, pair.nextZero() };
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
            pair.keepK (keptK);

            if (applyVariableShift (now, quadratic, linear))
                return true;

            pair.restoreK (keptK);
            pair.divideP (sigma);
            pair.divideK (sigma);
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
                pair.restoreK (keptK);
        }

        if (iterateQuadratic (sigma))
            return true;

        quadraticTried = true;
        quadratic.tolerance *= 0.25;

        if (linearTried || ! linear.passed)
            return false;

        tryLinear = true;
        pair.restoreK (keptK);
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

        pair.divideP (sigma);
        auto residual = 0.0;

        if (pair.isZeroPair (sigma, small, residual))
        {
            takeQuadratic (sigma);
            return true;
        }

        // A stall beside a cluster: some steps with a shift a little off it bring out one of its zeros.
        if (step >= 2 && relativeStep <= 0.01 && residual >= lastResidual && ! clusterTried)
        {
            const auto offset = std::sqrt (std::max (relativeStep, epsilon));
            sigma = { sigma.u - sigma.u * offset, sigma.v + sigma.v * offset };
            pair.divideP (sigma);

            for (int shift = 0; shift < zeroShiftCount; ++shift)
            {
                pair.divideK (sigma);
                pair.stepK (sigma);
            }

            clusterTried = true;
            step = 0;
        }

        lastResidual = residual;
        pair.divideK (sigma);
        const auto scaled = pair.stepK (sigma);
        pair.divideK (sigma);
        const auto next = scaled ? pair.nextQuadratic (sigma) : Quadratic {};

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
        const auto [value, isZero] = pair.divideP (shift);
        const auto residual = std::abs (value);

        if (isZero)
        {
            takeLinear (shift);
            return LinearOutcome::found;
        }

        if (step >= 2 && std::abs (lastStep) <= 0.001 * std::abs (shift - lastStep) && residual > lastResidual)
            return LinearOutcome::cluster;

        lastResidual = residual;
        lastStep = pair.stepK (shift, value);
        shift += lastStep;
    }

    return LinearOutcome::failed;
}

void PolynomialRoots::takeLinear (double zero) noexcept
{
    const auto improved = refined (zero, false).real();
    append (improved);
    pair.takeOut (improved);
}

void PolynomialRoots::takeQuadratic (const Quadratic& sigma) noexcept
{
    const auto [first, second] = zerosOf (sigma.u, sigma.v);

    if (first.imag() != 0.0)
    {
        const auto improved = refined (first, true);
        append (improved);
        append (std::conj (improved));
        pair.takeOut (Quadratic { -2.0 * improved.real(), std::norm (improved) });
    }
    else
    {
        takeLinear (first.real());
        takeLinear (second.real());
    }
}

void PolynomialRoots::takeRest() noexcept
{
    const auto p = pair.coefficients();

    if (pair.degree() == 2)
        takeQuadratic ({ p[1], p[2] });
    else if (pair.degree() == 1)
        takeLinear (-p[1]);
}

PolynomialRoots::Zero PolynomialRoots::refined (Zero zero, bool repelConjugate) noexcept
{
    return ZeroRefinement (givenPolynomial()).improve (zero, foundZeros(), repelConjugate);
}
