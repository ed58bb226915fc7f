#include "dsp/meters/BandAnalyser.h"
#include "support/Fixture.h"
#include "targets/GainTargets.h"
#include "targets/TopBand.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <memory>
#include <numbers>
#include <vector>

namespace
{
struct Tone
{
    double frequencyHz;
    double amplitude;
};

constexpr std::array tones { Tone { 330.0, 0.1 },   Tone { 1000.0, 0.2 },   Tone { 3000.0, 0.05 },
                             Tone { 6000.0, 0.04 }, Tone { 10500.0, 0.02 }, Tone { 15000.0, 0.01 } };

/** The sum of the tones below a frequency. */
std::vector<float> mixture (double highestHz, double sampleRate, std::size_t count)
{
    std::vector<float> samples (count);

    for (std::size_t i = 0; i < count; ++i)
    {
        auto sum = 0.0;

        for (const auto& tone : tones)
            if (tone.frequencyHz < highestHz)
                sum += tone.amplitude
                       * std::sin (2.0 * std::numbers::pi * tone.frequencyHz * static_cast<double> (i) / sampleRate);

        samples[i] = static_cast<float> (sum);
    }

    return samples;
}

std::vector<float> halved (std::vector<float> samples)
{
    for (auto& sample : samples)
        sample *= 0.5f;

    return samples;
}

TEST (MeasuredBalanceTest, levelsLoudnessAndAdjustmentsEqualIndependentFigures)
{
    const auto fixture = readFixture ("band_levels.json");
    constexpr auto rate = 48000.0;
    constexpr auto factor = 4;
    const std::size_t frames = 562 * 512;

    // At the reduced rate only what lies below half of it is left; made anew, it needs no decimation.
    const auto left = mixture (20000.0, rate, frames);
    const auto lowLeft = mixture (5000.0, rate / factor, frames / factor);
    const auto right = halved (left);
    const auto lowRight = halved (lowLeft);

    auto analyser = std::make_unique<BandAnalyser>();
    analyser->prepareBands (rate / factor, rate);
    analyser->processLow (lowLeft.data(), lowRight.data(), static_cast<int> (frames / factor));
    analyser->processHigh (left.data(), right.data(), static_cast<int> (frames));

    auto meter = std::make_unique<orvik::LUFSProcessor<3000>>();
    meter->setSampleRate (rate);
    meter->prepare();
    meter->reset (-70.0f);
    const auto loudness = meter->integratedOfPlain ({ left.data(), right.data() }, static_cast<int> (frames));
    EXPECT_NEAR (loudness, fixture["inputLoudness"].get<double>(), 0.02);

    std::array<float, analysisBandCount> levels {};

    for (std::size_t band = 0; band < analysisBandCount; ++band)
        levels[band] = analyser->bandLevels[band].load();

    makeTopBandValue (
        { static_cast<double> (levels[6]), static_cast<double> (levels[7]), static_cast<double> (levels[8]) },
        &levels[9]);

    GainTargets targets;
    targets.updateGainTargets (levels,
                               fixture["targetValues"].get<std::array<float, analysisBandCount>>(),
                               fixture["targetLufs"].get<float>() - loudness,
                               false);

    for (std::size_t band = 0; band < analysisBandCount; ++band)
    {
        EXPECT_EQ (analysisCentresHz[band], fixture["centresHz"][band].get<float>());
        EXPECT_NEAR (levels[band], fixture["bandLevels"][band].get<double>(), 0.02) << band;
        EXPECT_NEAR (targets.gainTarget[band].load(), fixture["gainTarget"][band].get<double>(), 0.02) << band;
    }
}
} // namespace
