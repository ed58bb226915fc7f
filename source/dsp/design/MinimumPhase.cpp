#include "dsp/design/MinimumPhase.h"

#include "dsp/design/FirLengths.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace
{
constexpr double smallestFirstValue = 0.5;
constexpr std::size_t maxSourceCount = maxMinimumSourceTapCount;

// All zeros of a source may lie outside the circle if it is not symmetric.
constexpr std::size_t maxTransformLength = 2 * maxSourceCount;

/** The taps without the exact zeros at both ends: an equal number from each, so that the centre stays the centre.
    Those are zeros at 0 and at infinity, and reflecting the latter removes the delay that they stand for. */
std::span<const double> withoutEmptyEnds (std::span<const double> taps) noexcept
{
    while (taps.size() > 1 && taps.front() == 0.0 && taps.back() == 0.0)
        taps = taps.subspan (1, taps.size() - 2);

    return taps;
}

/** A place in the circle of unit roots, moved on by less than one turn. */
std::size_t advanced (std::size_t turn, std::size_t step, std::size_t length) noexcept
{
    turn += step;
    return turn < length ? turn : turn - length;
}
} // namespace

MinimumPhase::MinimumPhase()
    : roots (maxMinimumSourceTapCount - 1),
      product (maxSourceCount),
      outerPolynomial (maxSourceCount),
      distances (maxSourceCount),
      unitRoots (maxTransformLength),
      dividendBins (maxTransformLength),
      divisorBins (maxTransformLength),
      accepted (maxSourceCount)
{
    outerZeros.reserve (maxSourceCount);
    reversedPolynomial.reserve (maxTransformLength);
    convolved.reserve (maxTransformLength);
    deconvolved.reserve (maxTransformLength);
}

bool MinimumPhase::reflect (std::span<const double> sourceTaps) noexcept
{
    if (sourceTaps.empty() || sourceTaps.size() > maxSourceCount)
        return false;

    const auto taps = withoutEmptyEnds (sourceTaps);

    if (! roots.find (taps))
        return false;

    keepOuterZeros();
    orderZeros();
    expandZeros();
    convolve (taps);
    deconvolve();

    // The deconvolution leaves the filter back to front, with nothing but rounding errors behind it.
    const auto backward = std::span<const double> (deconvolved).first (taps.size());

    if (! (backward.back() > smallestFirstValue)
        || ! std::all_of (backward.begin(), backward.end(), [] (double value) { return std::isfinite (value); }))
        return false;

    std::fill (accepted.begin(), accepted.end(), 0.0);
    std::reverse_copy (backward.begin(), backward.end(), accepted.begin());
    acceptedCount = sourceTaps.size();
    return true;
}

bool MinimumPhase::toMinimumPhase (std::span<const double> sourceTaps, std::span<double> minimumTaps) noexcept
{
    if (minimumTaps.size() > sourceTaps.size() || ! reflect (sourceTaps))
        return false;

    std::copy_n (accepted.begin(), minimumTaps.size(), minimumTaps.begin());
    return true;
}

/** Zeros on the circle itself stay, whichever side of it rounding has put them on: reflecting them changes nothing, and
    the division by their reflections would be one by next to nothing. */
void MinimumPhase::keepOuterZeros() noexcept
{
    constexpr auto outside = 1.0 + 1e-10;
    outerZeros.clear();

    for (const auto& zero : roots.zeros())
        if (std::norm (zero) > outside)
            outerZeros.push_back (zero);
}

/** Leja's order: first the largest zero, then always the one whose product of distances to those before is largest.
    The partial products of the expansion then stay of even size; in the order found, cancellation costs up to 3e-3. */
void MinimumPhase::orderZeros() noexcept
{
    const auto count = outerZeros.size();

    for (std::size_t index = 0; index < count; ++index)
        distances[index] = std::log (std::norm (outerZeros[index]));

    for (std::size_t next = 0; next < count; ++next)
    {
        const auto first = distances.begin() + std::ptrdiff_t (next);
        const auto last = distances.begin() + std::ptrdiff_t (count);
        const auto best = static_cast<std::size_t> (std::max_element (first, last) - distances.begin());
        std::swap (outerZeros[next], outerZeros[best]);
        std::swap (distances[next], distances[best]);

        // The first choice was by size; from here on only distances count.
        for (auto index = next + 1; index < count; ++index)
        {
            const auto distance = std::log (std::norm (outerZeros[index] - outerZeros[next]));
            distances[index] = next == 0 ? distance : distances[index] + distance;
        }
    }
}

void MinimumPhase::expandZeros() noexcept
{
    std::fill (product.begin(), product.end(), Complex {});
    product[0] = 1.0;

    for (std::size_t index = 0; index < outerZeros.size(); ++index)
        for (auto power = index + 1; power > 0; --power)
            product[power] -= outerZeros[index] * product[power - 1];

    for (std::size_t index = 0; index <= outerZeros.size(); ++index)
        outerPolynomial[index] = product[index].real();
}

void MinimumPhase::convolve (std::span<const double> taps) noexcept
{
    const auto outerCount = outerZeros.size() + 1;
    convolved.assign (taps.size() + outerCount - 1, 0.0);

    for (std::size_t tap = 0; tap < taps.size(); ++tap)
        for (std::size_t index = 0; index < outerCount; ++index)
            convolved[tap + index] += taps[tap] * outerPolynomial[index];

    reversedPolynomial.assign (convolved.size(), 0.0);
    std::reverse_copy (
        outerPolynomial.begin(), outerPolynomial.begin() + std::ptrdiff_t (outerCount), reversedPolynomial.begin());
}

/** Divides the convolved taps by the reversed polynomial, as a quotient of discrete Fourier transforms. A divisor of 0
    makes the result not a number, and it is refused. */
void MinimumPhase::deconvolve() noexcept
{
    const auto length = convolved.size();

    for (std::size_t index = 0; index < length; ++index)
        unitRoots[index] =
            std::polar (1.0, -2.0 * std::numbers::pi * static_cast<double> (index) / static_cast<double> (length));

    transform (convolved, dividendBins);
    transform (reversedPolynomial, divisorBins);

    // Real sequences have conjugate bins beyond the middle.
    const auto binCount = length / 2 + 1;

    for (std::size_t bin = 0; bin < binCount; ++bin)
        dividendBins[bin] /= divisorBins[bin];

    deconvolved.assign (length, 0.0);

    for (std::size_t index = 0; index < length; ++index)
    {
        auto sum = 0.0;

        for (std::size_t bin = 0, turn = 0; bin < binCount; ++bin, turn = advanced (turn, index, length))
        {
            const auto isAlone = bin == 0 || 2 * bin == length;
            const auto real =
                dividendBins[bin].real() * unitRoots[turn].real() + dividendBins[bin].imag() * unitRoots[turn].imag();
            sum += isAlone ? real : 2.0 * real;
        }

        deconvolved[index] = sum / static_cast<double> (length);
    }
}

void MinimumPhase::transform (std::span<const double> input, std::span<Complex> output) const noexcept
{
    const auto length = input.size();

    for (std::size_t bin = 0; bin < length / 2 + 1; ++bin)
    {
        auto real = 0.0;
        auto imaginary = 0.0;

        for (std::size_t index = 0, turn = 0; index < length; ++index, turn = advanced (turn, bin, length))
        {
            real += input[index] * unitRoots[turn].real();
            imaginary += input[index] * unitRoots[turn].imag();
        }

        output[bin] = { real, imaginary };
    }
}
