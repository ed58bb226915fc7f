#include "dsp/meters/BandAnalyser.h"
#include "dsp/filters/VariableQ2ndOrder.h"
#include "support/RealTimeGuard.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <numbers>
#include <random>
#include <thread>
#include <vector>

namespace
{
constexpr double fullRate = 48000.0;
constexpr double lowRate = 12000.0;

std::unique_ptr<BandAnalyser> analyserFor (BandAnalyser::Storing rule = BandAnalyser::Storing::readingsOnly)
{
    auto analyser = std::make_unique<BandAnalyser> (rule);
    analyser->prepareBands (lowRate, fullRate);
    return analyser;
}

std::vector<float> sine (double frequencyHz, double amplitude, double sampleRate, double seconds)
{
    std::vector<float> samples (static_cast<std::size_t> (sampleRate * seconds));

    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = static_cast<float> (
            amplitude * std::sin (2.0 * std::numbers::pi * frequencyHz * static_cast<double> (i) / sampleRate));

    return samples;
}

int countOf (const std::vector<float>& samples)
{
    return static_cast<int> (samples.size());
}

std::vector<float> levelsOf (const BandAnalyser& analyser)
{
    std::vector<float> levels;

    for (const auto& level : analyser.bandLevels)
        levels.push_back (level.load());

    return levels;
}

/** What the band's filter does to a sine at a frequency, in dB, from its closed form. */
double bandGainDb (std::size_t band, double frequencyHz)
{
    const auto rate = band < lowBandCount ? lowRate : fullRate;
    const auto w = std::tan (std::numbers::pi * frequencyHz / rate)
                   / std::tan (std::numbers::pi * static_cast<double> (analysisCentresHz[band]) / rate);
    return 10.0 * std::log10 (4.0 * std::pow (w, 8.0) / std::pow (1.0 + std::pow (w, 8.0), 2.0));
}

/** Level of a sine of amplitude 0.5 on both channels after five seconds, at the centre of a band. The fourth gate is
   the last one, and of its 40 blocks the first three hold three, two and one quarter of the reset level. */
const auto halfScaleSineDb = 10.0 * std::log10 (2.0 * 0.125 * (40.0 - 1.5) / 40.0) - 0.691;

TEST (BandAnalyserTest, lowBandsEndBelowTheFirstCentreAbove1500)
{
    EXPECT_EQ (lowBandCount, 3u);
    EXPECT_EQ (firstBandAbove (999.0), 2u);
    EXPECT_EQ (firstBandAbove (1000.0), 3u) << "strictly above";
    EXPECT_EQ (firstBandAbove (20000.0), analysisBandCount);
}

TEST (BandAnalyserTest, levelsAreMinusSeventyUntilTheFirstGateOfEachBand)
{
    const auto analyser = analyserFor();
    const std::vector<float> atStart (analysisBandCount, -70.0f);
    EXPECT_EQ (levelsOf (*analyser), atStart);

    const auto low = sine (700.0, 0.5, lowRate, 1.1);
    const auto high = sine (5000.0, 0.5, fullRate, 1.1);
    const auto stagger = [] (std::size_t band) { return 2 * 20 * static_cast<int> (band); };

    // The first gate comes on the sample after a second and twice the band's stagger.
    for (std::size_t band = 0; band < analysisBandCount; ++band)
    {
        const auto fresh = analyserFor();
        const auto isLow = band < lowBandCount;
        const auto due = (isLow ? 12000 : 48000) + stagger (band);
        const auto feed = [&] (int from, int to)
        {
            if (isLow)
                fresh->processLow (low.data() + from, low.data() + from, to - from);
            else
                fresh->processHigh (high.data() + from, high.data() + from, to - from);
        };

        feed (0, due);
        EXPECT_EQ (fresh->bandLevels[band].load(), -70.0f) << band;
        feed (due, due + 1);
        EXPECT_NE (fresh->bandLevels[band].load(), -70.0f) << band;
    }
}

TEST (BandAnalyserTest, sineAt1000RaisesItsBandAndOnlySlightlyTheNeighbours)
{
    const auto analyser = analyserFor();
    const auto low = sine (1000.0, 0.5, lowRate, 5.0);
    const auto high = sine (1000.0, 0.5, fullRate, 5.0);
    analyser->processLow (low.data(), low.data(), countOf (low));
    analyser->processHigh (high.data(), high.data(), countOf (high));

    EXPECT_NEAR (analyser->bandLevels[2].load(), halfScaleSineDb, 0.01);
    EXPECT_NEAR (analyser->bandLevels[1].load(), halfScaleSineDb + bandGainDb (1, 1000.0), 0.01);
    EXPECT_NEAR (analyser->bandLevels[3].load(), halfScaleSineDb + bandGainDb (3, 1000.0), 0.01);
    EXPECT_LT (analyser->bandLevels[1].load(), analyser->bandLevels[2].load() - 9.0f);
    EXPECT_LT (analyser->bandLevels[3].load(), analyser->bandLevels[2].load() - 18.0f);
}

TEST (BandAnalyserTest, at44100TheBandOf1000IsDesignedFor11025)
{
    BandAnalyser analyser;
    analyser.prepareBands (44100.0 / 4.0, 44100.0);
    const auto low = sine (1000.0, 0.5, 11025.0, 5.0);
    analyser.processLow (low.data(), low.data(), countOf (low));
    EXPECT_NEAR (analyser.bandLevels[2].load(), halfScaleSineDb, 0.01);
}

TEST (BandAnalyserTest, monoRunsTheLeftChannelAlone)
{
    const auto mono = analyserFor();
    const auto silentRight = analyserFor();
    const auto high = sine (4000.0, 0.5, fullRate, 3.0);
    const auto low = sine (640.0, 0.5, lowRate, 3.0);
    const std::vector<float> silence (high.size());

    mono->processHigh (high.data(), nullptr, countOf (high));
    mono->processLow (low.data(), nullptr, countOf (low));
    silentRight->processHigh (high.data(), silence.data(), countOf (high));
    silentRight->processLow (low.data(), silence.data(), countOf (low));
    EXPECT_EQ (levelsOf (*mono), levelsOf (*silentRight));
    EXPECT_GT (mono->bandLevels[5].load(), -20.0f);
}

TEST (BandAnalyserTest, equalsFiltersAndMetersRunSampleBySample)
{
    const auto analyser = analyserFor();
    std::mt19937 random (11);
    std::normal_distribution<float> samples (0.0f, 0.1f);
    std::vector<float> left (130000), right (left.size());

    for (std::size_t i = 0; i < left.size(); ++i)
    {
        left[i] = samples (random);
        right[i] = 0.5f * left[i] + samples (random);
    }

    for (std::size_t start = 0; start < left.size(); start += 1000)
    {
        analyser->processLow (left.data() + start, right.data() + start, 1000);
        analyser->processHigh (left.data() + start, right.data() + start, 1000);
    }

    for (std::size_t band = 0; band < analysisBandCount; ++band)
    {
        const auto rate = band < lowBandCount ? lowRate : fullRate;
        std::array<std::array<orvik::VariableQ2ndOrder<double>, 4>, 2> chains;

        for (auto& chain : chains)
            for (std::size_t s = 0; s < chain.size(); ++s)
                chain[s].setResponse (s % 2 == 0 ? 0.5411961 : 1.306563,
                                      analysisCentresHz[band],
                                      static_cast<float> (rate),
                                      s < 2 ? 1 : 0);

        orvik::LUFSProcessor<3000> meter;
        meter.setSampleRate (rate);
        meter.setBaseCount (20 * static_cast<int> (band));
        meter.prepare();
        meter.reset (-70.0f);

        for (std::size_t i = 0; i < left.size(); ++i)
        {
            std::array<double, 2> values { static_cast<double> (left[i]), static_cast<double> (right[i]) };

            for (std::size_t c = 0; c < 2; ++c)
                for (auto& section : chains[c])
                    values[c] = section.process (values[c]);

            meter.integrated (
                meter.sumOfSquares (static_cast<float> (values[0] * 2.0), static_cast<float> (values[1] * 2.0)));
        }

        EXPECT_NEAR (analyser->bandLevels[band].load(), meter.integratedValue(), 1e-5) << band;
    }
}

TEST (BandAnalyserTest, everyReturnStoresTheMinusInfinityOfASilentRecording)
{
    const auto offline = analyserFor (BandAnalyser::Storing::everyReturn);
    const auto live = analyserFor();
    const std::vector<float> silence (96000);

    for (const auto* analyser : { offline.get(), live.get() })
    {
        auto* measuring = const_cast<BandAnalyser*> (analyser);
        measuring->processLow (silence.data(), silence.data(), 24000);
        measuring->processHigh (silence.data(), silence.data(), 96000);
    }

    EXPECT_EQ (levelsOf (*offline), std::vector<float> (analysisBandCount, -std::numeric_limits<float>::infinity()));
    EXPECT_EQ (levelsOf (*live), std::vector<float> (analysisBandCount, -70.0f));
}

TEST (BandAnalyserTest, resettingOneHalfLeavesTheOtherMeasuring)
{
    const auto analyser = analyserFor();
    const auto low = sine (640.0, 0.5, lowRate, 1.2);
    const auto high = sine (6000.0, 0.5, fullRate, 1.2);
    analyser->processLow (low.data(), low.data(), countOf (low));
    analyser->processHigh (high.data(), high.data(), countOf (high));
    const auto measured = levelsOf (*analyser);

    analyser->resetLowBands();
    analyser->fillLevels (-70.0f);
    analyser->processLow (low.data(), low.data(), 100);
    analyser->processHigh (high.data(), high.data(), 100);

    for (std::size_t band = 0; band < analysisBandCount; ++band)
        EXPECT_EQ (analyser->bandLevels[band].load(), band < lowBandCount ? -70.0f : measured[band]) << band;

    analyser->resetBands();
    analyser->fillLevels (-70.0f);
    analyser->processHigh (high.data(), high.data(), 100);
    EXPECT_EQ (levelsOf (*analyser), std::vector<float> (analysisBandCount, -70.0f));
}

TEST (BandAnalyserTest, twoThreadsMayRunOneHalfEachWhileAnotherReads)
{
    const auto together = analyserFor();
    const auto alone = analyserFor();
    const auto low = sine (640.0, 0.5, lowRate, 2.0);
    const auto high = sine (6000.0, 0.5, fullRate, 2.0);
    alone->processLow (low.data(), low.data(), countOf (low));
    alone->processHigh (high.data(), high.data(), countOf (high));

    std::thread lowThread (
        [&]
        {
            for (int start = 0; start + 256 <= countOf (low); start += 256)
                together->processLow (low.data() + start, low.data() + start, 256);
        });
    std::thread highThread (
        [&]
        {
            for (int start = 0; start + 1024 <= countOf (high); start += 1024)
                together->processHigh (high.data() + start, high.data() + start, 1024);
        });

    for (int i = 0; i < 1000; ++i)
        for (const auto& level : together->bandLevels)
            ASSERT_TRUE (std::isfinite (level.load (std::memory_order_relaxed)));

    lowThread.join();
    highThread.join();

    // No gate falls into the incomplete chunks at the end.
    EXPECT_EQ (levelsOf (*together), levelsOf (*alone));
}

TEST (BandAnalyserTest, preparingAgainForgetsTheFiltersPast)
{
    const auto analyser = analyserFor();
    const auto high = sine (6000.0, 0.9, fullRate, 1.1);
    analyser->processHigh (high.data(), high.data(), countOf (high));
    analyser->prepareBands (lowRate, fullRate);
    analyser->fillLevels (-70.0f);
    const std::vector<float> silence (96000);
    analyser->processHigh (silence.data(), silence.data(), countOf (silence));
    EXPECT_EQ (levelsOf (*analyser), std::vector<float> (analysisBandCount, -70.0f));
}

TEST (BandAnalyserTest, measuringAgainAfterInputThatIsNotFinite)
{
    const auto analyser = analyserFor();
    auto high = sine (4000.0, 0.5, fullRate, 4.0);
    const auto clean = high;
    high[5000] = std::numeric_limits<float>::quiet_NaN();
    high[9000] = std::numeric_limits<float>::infinity();

    for (std::size_t start = 0; start + 1024 <= high.size(); start += 1024)
        analyser->processHigh (high.data() + start, clean.data() + start, 1024);

    EXPECT_NEAR (analyser->bandLevels[5].load(), 10.0 * std::log10 (0.25) - 0.691, 0.5);
}

TEST (BandAnalyserTest, analysingAndResettingDoNotAllocate)
{
    const auto analyser = analyserFor();
    const auto high = sine (4000.0, 0.5, fullRate, 1.5);
    const RealTimeGuard guard;
    analyser->processLow (high.data(), high.data(), countOf (high));
    analyser->processHigh (high.data(), nullptr, countOf (high));
    analyser->resetBands();
    analyser->fillLevels (-70.0f);
    EXPECT_EQ (guard.allocations(), 0);
}
} // namespace
