#include "dsp/meters/SpectrumAnalyser.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

#include <kissfft/kissfft.hh>

namespace
{
constexpr float twoPi = 6.2831855f;
constexpr float forwardScale = 2.0f;
constexpr float smallestSample = 1.0e-10f;

/** What the two ends are multiplied with; the bins between are not. The heat map counts on the difference. */
constexpr float endScale = 2.0f * static_cast<float> (SpectrumAnalyser::frameLength);
} // namespace

/** Pairs of neighbouring samples go through a complex transform of half the length, as real and imaginary part. Its
    bins k and n - k then hold the transforms of the even and of the odd samples, from which bin k of the whole is put
    together (Press et al., Numerical Recipes, "FFT of Single Real Function"). */
class SpectrumAnalyser::Transform
{
public:
    Transform()
    {
        for (std::size_t bin = 0; bin < pairCount; ++bin)
            turns[bin] = std::polar (1.0, -2.0 * std::numbers::pi * static_cast<double> (bin) / frameLength);
    }

    /** Where a frame goes in. */
    [[nodiscard]] float* samples() noexcept { return reinterpret_cast<float*> (pairs.data()); }

    void run() noexcept { fft.transform (pairs.data(), bins.data()); }

    /** The real values at 0 Hz and at half the rate. */
    [[nodiscard]] float firstBin() const noexcept { return forwardScale * (bins[0].real() + bins[0].imag()); }
    [[nodiscard]] float lastBin() const noexcept { return forwardScale * (bins[0].real() - bins[0].imag()); }

    /** A bin between them. Even and odd part are each the half of a sum, which stands for the scale. */
    [[nodiscard]] std::complex<float> bin (std::size_t index) const noexcept
    {
        const auto here = bins[index];
        const auto mirrored = bins[pairCount - index];
        const auto oddRe = here.imag() + mirrored.imag();
        const auto oddIm = mirrored.real() - here.real();
        const auto turn = turns[index];
        return { here.real() + mirrored.real() + oddRe * turn.real() - oddIm * turn.imag(),
                 here.imag() - mirrored.imag() + oddRe * turn.imag() + oddIm * turn.real() };
    }

private:
    static constexpr std::size_t pairCount = frameLength / 2;
    static_assert (forwardScale == 2.0f);

    kissfft<float> fft { pairCount, false };
    std::array<std::complex<float>, pairCount> turns {}; ///< by how much the odd samples lie behind
    std::array<std::complex<float>, pairCount> pairs {};
    std::array<std::complex<float>, pairCount> bins {};
};

SpectrumAnalyser::SpectrumAnalyser() : prepared (std::make_unique<Transform>())
{
    for (std::size_t i = 0; i < frameLength; ++i)
        window[i] = (1.0f - std::cos (static_cast<float> (i) * twoPi / static_cast<float> (frameLength - 1))) * 0.5f;
}

SpectrumAnalyser::~SpectrumAnalyser() = default;

bool SpectrumAnalyser::isWorthAnalysing (const float* left, const float* right) noexcept
{
    const auto reaches = [] (float sample) { return sample >= smallestSample; };
    return std::any_of (left, left + frameLength, reaches)
           || (right != nullptr && std::any_of (right, right + frameLength, reaches));
}

void SpectrumAnalyser::analyseSpectrum (const float* left, const float* right, float* out) noexcept
{
    auto* windowed = prepared->samples();

    for (std::size_t i = 0; i < frameLength; ++i)
        windowed[i] = (right != nullptr ? (left[i] + right[i]) * 0.5f : left[i]) * window[i];

    prepared->run();
    out[0] = std::abs (prepared->firstBin()) * endScale;
    out[binCount - 1] = std::abs (prepared->lastBin()) * endScale;

    for (std::size_t bin = 1; bin < binCount - 1; ++bin)
    {
        const auto value = prepared->bin (bin);
        out[bin] = std::sqrt (value.real() * value.real() + value.imag() * value.imag());
    }
}

void SpectrumAnalyser::transform (const float* samples, float* packed) noexcept
{
    std::copy_n (samples, frameLength, prepared->samples());
    prepared->run();
    packed[0] = prepared->firstBin();
    packed[1] = prepared->lastBin();

    for (std::size_t bin = 1; bin < binCount - 1; ++bin)
    {
        const auto value = prepared->bin (bin);
        packed[2 * bin] = value.real();
        packed[2 * bin + 1] = value.imag();
    }
}
