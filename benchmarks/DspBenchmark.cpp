#include "PlainPath.h"

#include "dsp/path/BlockPath.h"
#include "dsp/path/FirConvolver.h"
#include "dsp/path/PathMixer.h"
#include "dsp/rate/RateConverter.h"
#include "dsp/simd/SimdLevel.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <vector>

// Costs of the audio path on one core, for each level of vector code that this machine has and for plain loops.
// The counter `ns_per_frame` is the time for one sample of all channels.

namespace
{
constexpr std::pair<SimdLevel, const char*> levels[] { { SimdLevel::baseline, "sse2" },
                                                       { SimdLevel::v3, "avx2" },
                                                       { SimdLevel::v4, "avx512" } };
constexpr int blockSizes[] { 64, 512 };

std::vector<double> noise (int count, unsigned seed)
{
    std::mt19937 random (seed);
    std::uniform_real_distribution<double> anyValue (-0.5, 0.5);
    std::vector<double> values (static_cast<std::size_t> (count));
    std::generate (values.begin(), values.end(), [&] { return anyValue (random); });
    return values;
}

std::vector<float> floatNoise (int count, unsigned seed)
{
    const auto values = noise (count, seed);
    std::vector<float> result (values.size());
    std::transform (values.begin(), values.end(), result.begin(), [] (double v) { return static_cast<float> (v); });
    return result;
}

std::vector<double> symmetricTaps (int count, unsigned seed)
{
    auto taps = noise (count, seed);
    std::copy_n (taps.begin(), count / 2, taps.rbegin());

    for (auto& tap : taps)
        tap *= 0.1;

    return taps;
}

void countFrames (benchmark::State& state, int framesPerIteration)
{
    state.counters["ns_per_frame"] =
        benchmark::Counter (static_cast<double> (state.iterations()) * framesPerIteration * 1e-9,
                            benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void runFir (benchmark::State& state, int tapCount, bool symmetric, int channels, int block)
{
    FirConvolver fir (2, maxFirTapCount, 8192);
    fir.setTapCount (tapCount);
    fir.setTaps (symmetric ? symmetricTaps (tapCount, 1) : noise (tapCount, 1));
    const auto left = noise (block, 2);
    const auto right = noise (block, 3);
    std::vector<double> outLeft (left.size());
    std::vector<double> outRight (left.size());
    const double* const input[] { left.data(), right.data() };
    double* const output[] { outLeft.data(), outRight.data() };

    for (auto unused : state)
    {
        fir.run (input, output, channels, block);
        benchmark::ClobberMemory();
    }

    countFrames (state, block);
}

void runPlainFir (benchmark::State& state, int tapCount, int channels, int block)
{
    Plain::Fir left (symmetricTaps (tapCount, 1));
    Plain::Fir right (symmetricTaps (tapCount, 1));
    const auto input = noise (block, 2);
    std::vector<double> output (input.size());

    for (auto unused : state)
    {
        left.run (input.data(), output.data(), block);

        if (channels == 2)
            right.run (input.data(), output.data(), block);

        benchmark::ClobberMemory();
    }

    countFrames (state, block);
}

void runNewTaps (benchmark::State& state, int tapCount)
{
    FirConvolver fir (2, maxFirTapCount, 8192);
    fir.setTapCount (tapCount);
    const std::vector<double> taps[] { symmetricTaps (tapCount, 1), symmetricTaps (tapCount, 2) };
    std::size_t turn = 0;

    for (auto unused : state)
    {
        fir.setTaps (taps[turn]);
        turn = 1 - turn;
    }
}

void runDecimation (benchmark::State& state, double rate, int block)
{
    const auto converter = std::make_unique<RateConverter>();
    converter->setSampleRate (rate);
    converter->buildFilters();
    const auto left = floatNoise (block, 1);
    const auto right = floatNoise (block, 2);

    for (auto unused : state)
    {
        converter->decimateStereo (left.data(), right.data(), block);
        benchmark::ClobberMemory();
    }

    countFrames (state, block);
}

void runInterpolation (benchmark::State& state, double rate, int block)
{
    const auto converter = std::make_unique<RateConverter>();
    converter->setSampleRate (rate);
    converter->buildFilters();
    const auto reduced = block / converter->decimationFactor();
    const auto left = noise (reduced, 1);
    const auto right = noise (reduced, 2);

    for (auto unused : state)
    {
        converter->interpolateStereo (left.data(), right.data(), reduced);
        benchmark::ClobberMemory();
    }

    countFrames (state, block);
}

void runPlainDecimation (benchmark::State& state, int factor, int block)
{
    Plain::RateFilter left (factor);
    Plain::RateFilter right (factor);
    const auto input = floatNoise (block, 1);
    std::vector<double> output (input.size());

    for (auto unused : state)
    {
        left.decimate (input.data(), output.data(), block);
        right.decimate (input.data(), output.data(), block);
        benchmark::ClobberMemory();
    }

    countFrames (state, block);
}

void runPlainInterpolation (benchmark::State& state, int factor, int block)
{
    Plain::RateFilter left (factor);
    Plain::RateFilter right (factor);
    const auto input = noise (block, 1);
    std::vector<double> output (input.size());

    for (auto unused : state)
    {
        left.interpolate (input.data(), output.data(), block / factor);
        right.interpolate (input.data(), output.data(), block / factor);
        benchmark::ClobberMemory();
    }

    countFrames (state, block);
}

struct PathCase
{
    const char* name;
    double sampleRate;
    FilterMode mode;
    FilterPhase phase;
    bool stereo;
    bool midSide;
};

constexpr PathCase pathCases[] {
    { "48k_mix_linear_stereo", 48000.0, FilterMode::mix, FilterPhase::linear, true, false },
    { "48k_mix_minimum_stereo", 48000.0, FilterMode::mix, FilterPhase::minimum, true, false },
    { "48k_master_linear_stereo", 48000.0, FilterMode::master, FilterPhase::linear, true, false },
    { "48k_mix_linear_midside", 48000.0, FilterMode::mix, FilterPhase::linear, false, true },
    { "48k_mix_linear_both", 48000.0, FilterMode::mix, FilterPhase::linear, true, true },
    { "96k_mix_linear_stereo", 96000.0, FilterMode::mix, FilterPhase::linear, true, false },
    { "192k_mix_linear_stereo", 192000.0, FilterMode::mix, FilterPhase::linear, true, false },
};

std::unique_ptr<BlockPath> makePath (const PathCase& path)
{
    auto made = std::make_unique<BlockPath>();
    const auto lengths = firLengthsFor (path.sampleRate, path.mode);
    made->prepare (path.sampleRate);
    made->configureLengths (lengths);
    const auto low = symmetricTaps (lengths.lowTapCount, 1);
    const auto high = symmetricTaps (lengths.linearHighTapCount, 2);
    const auto minimum = noise (lengths.minimumTapCount, 3);
    made->setTaps ({ low, high, minimum, {} });
    return made;
}

/** Decimation, filters, and the mix to single precision. */
void runPath (benchmark::State& state, const PathCase& path, int block)
{
    const auto decimator = std::make_unique<RateConverter>();
    decimator->setSampleRate (path.sampleRate);
    decimator->buildFilters();
    const auto stereo = makePath (path);
    const auto mid = makePath (path);
    const auto side = makePath (path);
    const auto mixer = std::make_unique<PathMixer>();
    mixer->setLatency (baseLatencyFor (path.sampleRate, path.mode, path.phase).value_or (0));
    const auto left = floatNoise (block, 4);
    const auto right = floatNoise (block, 5);
    std::vector<float> outLeft (left.size());
    std::vector<float> outRight (left.size());
    const PathResults results { stereo->outputLeft(), stereo->outputRight(), mid->outputLeft(), side->outputLeft() };

    for (auto unused : state)
    {
        decimator->decimateStereo (left.data(), right.data(), block);

        if (path.stereo)
            stereo->processStereo (
                left.data(), right.data(), decimator->outputLeft(), decimator->outputRight(), block, false, path.phase);

        if (path.midSide)
        {
            mixer->split (left.data(),
                          right.data(),
                          block,
                          decimator->outputLeft(),
                          decimator->outputRight(),
                          block / decimator->decimationFactor());
            mid->processSingle (mixer->mid(), mixer->midLow(), block, false, path.phase);
            side->processSingle (mixer->side(), mixer->sideLow(), block, false, path.phase);
        }

        mixer->mix (
            left.data(), right.data(), results, block, path.stereo, path.midSide, outLeft.data(), outRight.data());
        benchmark::ClobberMemory();
    }

    countFrames (state, block);
}

void runPlainPath (benchmark::State& state, double sampleRate, int block)
{
    const auto lengths = firLengthsFor (sampleRate, FilterMode::mix);
    const auto low = symmetricTaps (lengths.lowTapCount, 1);
    const auto high = symmetricTaps (lengths.linearHighTapCount, 2);
    Plain::Path left (sampleRate, FilterMode::mix, low, high);
    Plain::Path right (sampleRate, FilterMode::mix, low, high);
    const auto input = floatNoise (block, 4);
    std::vector<float> output (input.size());

    for (auto unused : state)
    {
        left.process (input.data(), output.data(), block);
        right.process (input.data(), output.data(), block);
        benchmark::ClobberMemory();
    }

    countFrames (state, block);
}

/** The parts with a slash between each two. */
template <typename... Parts>
std::string joined (const Parts&... parts)
{
    std::ostringstream name;
    const char* separator = "";
    ((name << separator << parts, separator = "/"), ...);
    return name.str();
}

template <typename Body>
void add (const std::string& name, SimdLevel level, Body body)
{
    benchmark::RegisterBenchmark (name.c_str(),
                                  [level, body] (benchmark::State& state)
                                  {
                                      const auto before = simdLevel();
                                      setSimdLevel (level);
                                      body (state);
                                      setSimdLevel (before);
                                  });
}

void addFirs (SimdLevel level, const char* levelName, int block)
{
    for (const auto tapCount : { 101, 301 })
        for (const auto channels : { 1, 2 })
            add (joined ("fir", tapCount, channels == 2 ? "stereo" : "single", block, levelName),
                 level,
                 [=] (benchmark::State& state) { runFir (state, tapCount, true, channels, block); });

    add (joined ("fir", "50_minimum", "stereo", block, levelName),
         level,
         [=] (benchmark::State& state) { runFir (state, 50, false, 2, block); });
}

void addRates (SimdLevel level, const char* levelName, int block)
{
    for (const auto& [rate, name] : { std::pair { 48000.0, "by4" }, std::pair { 192000.0, "by8" } })
    {
        add (joined ("decimate", name, block, levelName),
             level,
             [rate = rate, block] (benchmark::State& state) { runDecimation (state, rate, block); });
        add (joined ("interpolate", name, block, levelName),
             level,
             [rate = rate, block] (benchmark::State& state) { runInterpolation (state, rate, block); });
    }
}

void addPlain (int block)
{
    const auto level = SimdLevel::baseline;

    for (const auto tapCount : { 101, 301 })
        add (joined ("fir", tapCount, "stereo", block, "plain"),
             level,
             [=] (benchmark::State& state) { runPlainFir (state, tapCount, 2, block); });

    for (const auto& [factor, name] : { std::pair { 4, "by4" }, std::pair { 8, "by8" } })
    {
        add (joined ("decimate", name, block, "plain"),
             level,
             [factor = factor, block] (benchmark::State& state) { runPlainDecimation (state, factor, block); });
        add (joined ("interpolate", name, block, "plain"),
             level,
             [factor = factor, block] (benchmark::State& state) { runPlainInterpolation (state, factor, block); });
    }

    for (const auto& [rate, name] :
         { std::pair { 48000.0, "48k_mix_linear_stereo" }, std::pair { 192000.0, "192k_mix_linear_stereo" } })
        add (joined ("path", name, block, "plain"),
             level,
             [rate = rate, block] (benchmark::State& state) { runPlainPath (state, rate, block); });
}

void addAll()
{
    for (const auto block : blockSizes)
    {
        for (const auto& [level, levelName] : levels)
        {
            if (level > bestSimdLevel())
                continue;

            addFirs (level, levelName, block);
            addRates (level, levelName, block);

            for (const auto& path : pathCases)
                add (joined ("path", path.name, block, levelName),
                     level,
                     [path, block] (benchmark::State& state) { runPath (state, path, block); });
        }

        addPlain (block);
    }

    for (const auto& [level, levelName] : levels)
        if (level <= bestSimdLevel())
            add (joined ("new_taps", 301, "stereo", levelName),
                 level,
                 [] (benchmark::State& state) { runNewTaps (state, 301); });
}
} // namespace

int main (int argumentCount, char** arguments)
{
    benchmark::Initialize (&argumentCount, arguments);
    addAll();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
