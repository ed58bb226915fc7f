#pragma once

#include "dsp/design/PolynomialRoots.h"

#include <complex>
#include <cstddef>
#include <span>
#include <vector>

/** Turns a symmetric FIR filter into the minimum-phase filter of the same magnitude, by reflecting its zeros.

    Everything is allocated by the constructor. One thread at a time. */
class MinimumPhase
{
public:
    MinimumPhase();

    /** Reflects the zeros of at most `maxMinimumSourceTapCount` taps into the unit circle.

        False when not all zeros are found or when the first value of the result is not above 0.5. That value is the
        geometric mean of the magnitude, so broad and deep cuts are refused. Allocates nothing. */
    [[nodiscard]] bool reflect (std::span<const double> sourceTaps) noexcept;

    /** The last accepted result: as many values as the source had taps. Empty until there is one. */
    [[nodiscard]] std::span<const double> reflected() const noexcept { return { accepted.data(), acceptedCount }; }

    /** Reflects and cuts the result to the length of `minimumTaps`, which must not exceed the source's. False, and the
        taps stay as they were, when the result is refused. Allocates nothing. */
    [[nodiscard]] bool toMinimumPhase (std::span<const double> sourceTaps, std::span<double> minimumTaps) noexcept;

private:
    using Complex = std::complex<double>;

    void keepOuterZeros() noexcept;
    void orderZeros() noexcept;
    void expandZeros() noexcept;
    void convolve (std::span<const double> taps) noexcept;
    void deconvolve() noexcept;
    void transform (std::span<const double> input, std::span<Complex> output) const noexcept;

    PolynomialRoots roots;
    std::vector<Complex> outerZeros;
    std::vector<Complex> product;
    std::vector<double> outerPolynomial;
    std::vector<double> reversedPolynomial;
    std::vector<double> convolved;
    std::vector<double> deconvolved;
    std::vector<double> distances;
    std::vector<Complex> unitRoots;
    std::vector<Complex> dividendBins;
    std::vector<Complex> divisorBins;
    std::vector<double> accepted;
    std::size_t acceptedCount = 0;
};
