#include "dsp/SpectrumAnalyser.h"

#include <algorithm>
#include <cmath>
#include <complex>

#include <kissfft/kissfft.hh>

namespace
{
constexpr float twoPi = 6.2831855f;
constexpr float forwardScale = 2.0f;
constexpr float smallestSample = 1.0e-10f;

/** What the two ends are multiplied with; the bins between are not. The heat map counts on the difference. */
constexpr float endScale = 2.0f * static_cast<float> (SpectrumAnalyser::frameLength);
} // namespace

/** Pairs of neighbouring samples go through a complex transform of half the length. */
struct SpectrumAnalyser::Transform
{
    kissfft<float> fft { frameLength / 2, false };
    std::array<std::complex<float>, frameLength / 2> bins {};
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
    if (right != nullptr)
        for (std::size_t i = 0; i < frameLength; ++i)
            mono[i] = (left[i] + right[i]) * 0.5f;
    else
        std::copy_n (left, frameLength, mono.begin());

    for (std::size_t i = 0; i < frameLength; ++i)
        windowed[i] = mono[i] * window[i];

    transform (windowed.data(), frequencyData.data());

    out[0] = std::abs (frequencyData[0]) * endScale;
    out[binCount - 1] = std::abs (frequencyData[1]) * endScale;

    for (std::size_t bin = 1; bin < binCount - 1; ++bin)
    {
        const auto re = frequencyData[2 * bin];
        const auto im = frequencyData[2 * bin + 1];
        out[bin] = std::sqrt (re * re + im * im);
    }
}

void SpectrumAnalyser::transform (const float* samples, float* packed) noexcept
{
    prepared->fft.transform_real (samples, prepared->bins.data());

    // The library's own order is the one that is wanted: the first pair holds the two real ends.
    for (std::size_t bin = 0; bin < prepared->bins.size(); ++bin)
    {
        packed[2 * bin] = prepared->bins[bin].real() * forwardScale;
        packed[2 * bin + 1] = prepared->bins[bin].imag() * forwardScale;
    }
}
