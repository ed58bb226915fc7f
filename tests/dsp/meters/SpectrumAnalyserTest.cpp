#include "dsp/meters/SpectrumAnalyser.h"
#include "support/RealTimeGuard.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <numbers>
#include <random>
#include <vector>

namespace
{
constexpr auto frameLength = SpectrumAnalyser::frameLength;
constexpr auto binCount = SpectrumAnalyser::binCount;

std::vector<float> noise (unsigned int seed)
{
    std::mt19937 random (seed);
    std::uniform_real_distribution<float> distribution (-1.0f, 1.0f);
    std::vector<float> samples (frameLength);

    for (auto& sample : samples)
        sample = distribution (random);

    return samples;
}

std::complex<double> plainTransform (const std::vector<float>& samples, std::size_t bin)
{
    std::complex<double> sum;

    for (std::size_t i = 0; i < samples.size(); ++i)
        sum += static_cast<double> (samples[i])
               * std::polar (1.0,
                             -2.0 * std::numbers::pi * static_cast<double> (bin * i % frameLength)
                                 / static_cast<double> (frameLength));

    return sum;
}

TEST (SpectrumAnalyserTest, transformIsInPackedOrderAndTimesTwo)
{
    SpectrumAnalyser analyser;
    const auto samples = noise (1);
    std::vector<float> packed (frameLength);
    analyser.transform (samples.data(), packed.data());

    // Single precision: sums of a thousand terms below 1.
    constexpr auto tolerance = 2e-4;
    EXPECT_NEAR (packed[0], 2.0 * plainTransform (samples, 0).real(), tolerance);
    EXPECT_NEAR (packed[1], 2.0 * plainTransform (samples, 512).real(), tolerance);

    for (std::size_t bin = 1; bin < binCount - 1; ++bin)
    {
        const auto expected = 2.0 * plainTransform (samples, bin);
        ASSERT_NEAR (packed[2 * bin], expected.real(), tolerance) << bin;
        ASSERT_NEAR (packed[2 * bin + 1], expected.imag(), tolerance) << bin;
    }
}

TEST (SpectrumAnalyserTest, windowIsAHannThatEndsOnZero)
{
    const SpectrumAnalyser analyser;
    const auto& window = analyser.windowValues();
    EXPECT_EQ (window.front(), 0.0f);
    EXPECT_NEAR (window.back(), 0.0f, 1e-7f);

    for (std::size_t i = 0; i < frameLength; ++i)
    {
        EXPECT_NEAR (window[i], std::pow (std::sin (std::numbers::pi * static_cast<double> (i) / 1023.0), 2.0), 2e-6);
        EXPECT_NEAR (window[i], window[frameLength - 1 - i], 2e-6);
    }
}

TEST (SpectrumAnalyserTest, magnitudesAreThoseOfTheWindowedMeanWithTheEndsOnTheirOwnScale)
{
    SpectrumAnalyser analyser;
    const auto left = noise (2);
    const auto right = noise (3);
    std::vector<float> magnitudes (binCount);
    analyser.analyseSpectrum (left.data(), right.data(), magnitudes.data());

    std::vector<float> windowed (frameLength);

    for (std::size_t i = 0; i < frameLength; ++i)
        windowed[i] = (left[i] + right[i]) * 0.5f * analyser.windowValues()[i];

    EXPECT_NEAR (magnitudes.front(), 2048.0 * 2.0 * std::abs (plainTransform (windowed, 0)), 0.2);
    EXPECT_NEAR (magnitudes.back(), 2048.0 * 2.0 * std::abs (plainTransform (windowed, 512)), 0.2);

    for (std::size_t bin = 1; bin < binCount - 1; ++bin)
        ASSERT_NEAR (magnitudes[bin], 2.0 * std::abs (plainTransform (windowed, bin)), 1e-4) << bin;
}

TEST (SpectrumAnalyserTest, sineOfAWholeNumberOfTurnsPeaksInItsBinAlone)
{
    SpectrumAnalyser analyser;
    std::vector<float> samples (frameLength);

    for (std::size_t i = 0; i < frameLength; ++i)
        samples[i] = static_cast<float> (std::sin (2.0 * std::numbers::pi * 100.0 * static_cast<double> (i) / 1024.0));

    std::vector<float> magnitudes (binCount);
    analyser.analyseSpectrum (samples.data(), nullptr, magnitudes.data());

    // Half the window's sum, times 2.
    EXPECT_NEAR (magnitudes[100], 511.5, 0.1);
    EXPECT_NEAR (magnitudes[99], 511.5 / 2.0, 1.0);
    EXPECT_NEAR (magnitudes[101], 511.5 / 2.0, 1.0);
    EXPECT_LT (magnitudes[110], 0.1f);
}

TEST (SpectrumAnalyserTest, monoIsTakenAsItIs)
{
    SpectrumAnalyser analyser;
    const auto samples = noise (4);
    std::vector<float> mono (binCount), stereo (binCount);
    analyser.analyseSpectrum (samples.data(), nullptr, mono.data());
    analyser.analyseSpectrum (samples.data(), samples.data(), stereo.data());
    EXPECT_EQ (mono, stereo);

    const std::vector<float> silence (frameLength);
    analyser.analyseSpectrum (samples.data(), silence.data(), stereo.data());

    for (std::size_t bin = 0; bin < binCount; ++bin)
        ASSERT_NEAR (stereo[bin], mono[bin] / 2.0f, 1e-3f * mono[bin]) << bin;
}

TEST (SpectrumAnalyserTest, aChunkCountsOnlyIfASampleReachesTheThresholdAsASignedValue)
{
    std::vector<float> left (frameLength), right (frameLength);
    EXPECT_FALSE (SpectrumAnalyser::isWorthAnalysing (left.data(), right.data()));

    left.assign (frameLength, -0.5f);
    EXPECT_FALSE (SpectrumAnalyser::isWorthAnalysing (left.data(), right.data()));
    EXPECT_FALSE (SpectrumAnalyser::isWorthAnalysing (left.data(), nullptr));

    right[1023] = 1.0e-10f;
    EXPECT_TRUE (SpectrumAnalyser::isWorthAnalysing (left.data(), right.data()));
    EXPECT_FALSE (SpectrumAnalyser::isWorthAnalysing (left.data(), nullptr));

    right[1023] = 0.99e-10f;
    EXPECT_FALSE (SpectrumAnalyser::isWorthAnalysing (left.data(), right.data()));

    left[0] = 0.1f;
    EXPECT_TRUE (SpectrumAnalyser::isWorthAnalysing (left.data(), nullptr));
}

TEST (SpectrumAnalyserTest, analysingDoesNotAllocate)
{
    SpectrumAnalyser analyser;
    const auto samples = noise (5);
    std::vector<float> magnitudes (binCount);
    const RealTimeGuard guard;
    analyser.analyseSpectrum (samples.data(), samples.data(), magnitudes.data());
    EXPECT_EQ (guard.allocations(), 0);
}
} // namespace
