#include "benchmarks/MovingNoise.h"
#include "benchmarks/PlainMeters.h"
#include "dsp/meters/BandAnalyser.h"
#include "dsp/meters/LUFSProcessor.h"
#include "dsp/meters/SpectrumAnalyser.h"
#include "dsp/simd/FlushDenormals.h"
#include "dsp/simd/SimdLevel.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <memory>
#include <numeric>
#include <random>
#include <vector>

namespace
{
using Meter = orvik::LUFSProcessor<3000>;

constexpr int blockLength = 64;
constexpr int chunkLength = 1024;

/** Input loudness and level match, as the audio thread runs them over one block. */
struct QuickMeters
{
    explicit QuickMeters (double sampleRate)
    {
        for (auto* meter : { &plain, &matchInput, &matchOutput })
        {
            meter->setSampleRate (sampleRate);
            meter->prepare();
            meter->reset (-70.0f);
            meter->resetShortTerm (-70.0f);
        }
    }

    void process (const float* left, const float* right, const float* outLeft, const float* outRight, int count)
    {
        plain.integratedOfPlain ({ left, right }, count);
        Meter::shortTermOfWeightedPair (matchInput, { left, right }, matchOutput, { outLeft, outRight }, count);
    }

    Meter plain;
    Meter matchInput;
    Meter matchOutput;
};

/** Five minutes of powers, so that the gate has its 3000 blocks. */
template <typename Meters>
void fillStore (Meters& meters, double sampleRate)
{
    std::mt19937 random (3);
    std::lognormal_distribution<float> powers (-5.0f, 3.0f);
    const auto hop = static_cast<int> (sampleRate) / 10;

    for (int i = 0; i < 3010; ++i)
    {
        const auto power = powers (random);

        for (int k = 0; k < hop; ++k)
            meters.plain.integrated (power);
    }
}

/** Runs three seconds of blocks several times from one state and reports mean, median and worst block in microseconds,
    each block by its quickest run: what is left is the code's own, without interruptions by others. */
template <typename Meters>
void runMeters (benchmark::State& state)
{
    using Clock = std::chrono::steady_clock;
    const orvik::FlushDenormals flush;
    const auto sampleRate = static_cast<double> (state.range (0));
    const auto blockCount = static_cast<std::size_t> (3.0 * sampleRate / blockLength);
    const auto left = movingNoise (1, blockCount * blockLength, sampleRate);
    const auto right = movingNoise (2, blockCount * blockLength, sampleRate);

    auto filled = std::make_unique<Meters> (sampleRate);
    fillStore (*filled, sampleRate);
    auto meters = std::make_unique<Meters> (*filled);
    std::vector<double> quickest (blockCount, 1.0e9);

    for (auto _ : state)
    {
        *meters = *filled;

        for (std::size_t block = 0; block < blockCount; ++block)
        {
            const auto* l = left.data() + block * blockLength;
            const auto* r = right.data() + block * blockLength;
            const auto start = Clock::now();
            meters->process (l, r, r, l, blockLength);
            const auto elapsed = std::chrono::duration<double, std::micro> (Clock::now() - start).count();
            quickest[block] = std::min (quickest[block], elapsed);
        }
    }

    const auto mean = std::accumulate (quickest.begin(), quickest.end(), 0.0) / static_cast<double> (blockCount);
    std::sort (quickest.begin(), quickest.end());
    state.counters["mean_us"] = mean;
    state.counters["median_us"] = quickest[blockCount / 2];
    state.counters["worst_us"] = quickest.back();
    state.counters["ns_per_frame"] = 1000.0 * mean / blockLength;
    state.counters["worst_of_real_time_pct"] = 100.0 * quickest.back() / (1.0e6 * blockLength / sampleRate);
}

void quickMeters (benchmark::State& state)
{
    runMeters<QuickMeters> (state);
}

void plainMeters (benchmark::State& state)
{
    runMeters<PlainMeters> (state);
}

void reportFrames (benchmark::State& state, int framesPerIteration, double sampleRate)
{
    const auto frames = static_cast<double> (state.iterations()) * framesPerIteration;
    state.counters["ns_per_frame"] =
        benchmark::Counter (frames * 1.0e-9, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
    state.counters["x_real_time"] = benchmark::Counter (frames / sampleRate, benchmark::Counter::kIsRate);
}

/** All ten bands: each chunk at the full rate with its share at the reduced rate. */
void quickBands (benchmark::State& state)
{
    const auto sampleRate = static_cast<double> (state.range (0));
    const auto factor = sampleRate > 96000.0 ? 8 : 4;
    const auto stereo = state.range (1) == 2;
    const auto level = static_cast<SimdLevel> (state.range (2));

    if (! setSimdLevel (level))
        return state.SkipWithError ("this machine does not offer the level");

    const auto left = movingNoise (1, 64 * chunkLength, sampleRate);
    const auto right = movingNoise (2, 64 * chunkLength, sampleRate);
    auto analyser = std::make_unique<BandAnalyser>();
    analyser->prepareBands (sampleRate / factor, sampleRate);

    for (auto _ : state)
        for (int chunk = 0; chunk < 64; ++chunk)
        {
            const auto* l = left.data() + chunk * chunkLength;
            const auto* r = stereo ? right.data() + chunk * chunkLength : nullptr;
            analyser->processHigh (l, r, chunkLength);
            analyser->processLow (l, r, chunkLength / factor);
        }

    setSimdLevel (bestSimdLevel());
    benchmark::DoNotOptimize (analyser->bandLevels[3].load());
    reportFrames (state, 64 * chunkLength, sampleRate);
}

void plainBands (benchmark::State& state)
{
    const auto sampleRate = static_cast<double> (state.range (0));
    const auto factor = sampleRate > 96000.0 ? 8 : 4;
    const auto left = movingNoise (1, 64 * chunkLength, sampleRate);
    const auto right = movingNoise (2, 64 * chunkLength, sampleRate);
    PlainBands low (analysisCentresHz.data(), lowBandCount, sampleRate / factor);
    PlainBands high (analysisCentresHz.data() + lowBandCount, analysisBandCount - lowBandCount, sampleRate);

    for (auto _ : state)
        for (int chunk = 0; chunk < 64; ++chunk)
        {
            const auto* l = left.data() + chunk * chunkLength;
            const auto* r = right.data() + chunk * chunkLength;
            high.process (l, r, chunkLength);
            low.process (l, r, chunkLength / factor);
        }

    benchmark::DoNotOptimize (high.levels[0]);
    reportFrames (state, 64 * chunkLength, sampleRate);
}

void spectrum (benchmark::State& state)
{
    const auto samples = movingNoise (1, chunkLength, 48000.0);
    SpectrumAnalyser analyser;
    std::vector<float> out (SpectrumAnalyser::binCount);

    for (auto _ : state)
    {
        analyser.analyseSpectrum (samples.data(), samples.data(), out.data());
        benchmark::DoNotOptimize (out.data());
    }

    reportFrames (state, chunkLength, 48000.0);
}

constexpr int runs = 7;

BENCHMARK (quickMeters)
    ->Arg (44100)
    ->Arg (48000)
    ->Arg (88200)
    ->Arg (96000)
    ->Arg (176400)
    ->Arg (192000)
    ->Iterations (runs)
    ->Unit (benchmark::kMillisecond);
BENCHMARK (plainMeters)->Arg (48000)->Arg (192000)->Iterations (runs)->Unit (benchmark::kMillisecond);
BENCHMARK (quickBands)
    ->ArgsProduct ({ { 48000, 192000 }, { 2, 1 }, { 0, 1, 2 } })
    ->ArgNames ({ "rate", "channels", "level" });
BENCHMARK (plainBands)->Arg (48000)->Arg (192000)->Unit (benchmark::kMillisecond);
BENCHMARK (spectrum);
} // namespace
