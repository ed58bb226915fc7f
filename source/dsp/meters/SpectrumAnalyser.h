#pragma once

#include <array>
#include <cstddef>
#include <memory>

/** Takes one spectrum of 1024 samples at a time, for the heat map.

    Not real-time safe at construction, which prepares the transform; the calls allocate nothing. One thread at a time;
    any number of instances may live side by side. */
class SpectrumAnalyser
{
public:
    static constexpr std::size_t frameLength = 1024;
    static constexpr std::size_t binCount = frameLength / 2 + 1;

    SpectrumAnalyser();
    ~SpectrumAnalyser();
    SpectrumAnalyser (const SpectrumAnalyser&) = delete;
    SpectrumAnalyser& operator= (const SpectrumAnalyser&) = delete;

    /** The window's values: a Hann window that is zero at both ends. */
    [[nodiscard]] const std::array<float, frameLength>& windowValues() const noexcept { return window; }

    /** True when a sample of a frame, as a signed value, reaches 1e-10 on either channel. A frame that is silent or
        negative throughout is not worth a spectrum. `right` is null for mono. */
    [[nodiscard]] static bool isWorthAnalysing (const float* left, const float* right) noexcept;

    /** Writes the magnitudes of the mean of both channels, windowed: linear, and twice what a plain sum over the frame
        gives. The first and the last bin stand on a scale of their own, 2048 times the others'.

        @param left, right `frameLength` samples each; `right` is null for mono
        @param out         `binCount` values, from 0 Hz to half the rate */
    void analyseSpectrum (const float* left, const float* right, float* out) noexcept;

    /** The transform alone: `frameLength` real samples to as many numbers, namely the real parts at 0 Hz and at half
        the rate and then real and imaginary part of each bin between, all times 2. */
    void transform (const float* samples, float* packed) noexcept;

private:
    class Transform;

    std::array<float, frameLength> window {};
    std::unique_ptr<Transform> prepared;
};
