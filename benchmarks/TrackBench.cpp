#include "MovingNoise.h"
#include "PlainMeters.h"
#include "PlainPath.h"

#include "app/AudioInput.h"
#include "app/ReferenceSamples.h"
#include "dsp/rate/ReducedRate.h"
#include "dsp/simd/SimdLevel.h"
#include "files/SoundWriter.h"
#include "targets/TrackAnalysis.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <thread>
#include <unistd.h>
#include <vector>

// Reference tracks: how fast they are loaded and measured, as multiples of real time.

namespace
{
constexpr double sessionRate = 48000.0;

double secondsOn (clockid_t clock)
{
    timespec time {};
    clock_gettime (clock, &time);
    return static_cast<double> (time.tv_sec) + 1.0e-9 * static_cast<double> (time.tv_nsec);
}

/** A stereo WAV of 16 bits and 44.1 kHz, removed with the object. */
class Recording
{
public:
    explicit Recording (double lengthSeconds)
        : seconds (lengthSeconds),
          path (std::filesystem::temp_directory_path() / ("solvane-bench-" + std::to_string (::getpid()) + ".wav"))
    {
        const auto count = static_cast<std::size_t> (seconds * rate);
        const auto left = movingNoise (1, count, rate);
        const auto right = movingNoise (2, count, rate);
        const float* const channels[] { left.data(), right.data() };
        std::unique_ptr<juce::OutputStream> stream = juce::File (path.string()).createOutputStream();
        const auto writer =
            SoundWriter::create (stream, { SoundEncoding::Container::wav, SoundEncoding::Width::bits16 }, rate, 2);
        writer->writeFromFloatArrays (channels, 2, static_cast<int> (left.size()));
    }

    ~Recording() { std::filesystem::remove (path); }

    Recording (const Recording&) = delete;
    Recording& operator= (const Recording&) = delete;

    static constexpr double rate = 44100.0;
    const double seconds;
    const std::filesystem::path path;
};

/** Reads a file into memory, converted to a session's rate. */
void loadTrack (benchmark::State& state)
{
    const Recording recording (60.0);
    const auto session = static_cast<double> (state.range (0));
    std::size_t bytes = 0;

    for (auto _ : state)
    {
        AudioInput input (recording.path.string());
        ReferenceSamples samples (input, "recording", session);
        std::vector<float> left (static_cast<std::size_t> (samples.count()));
        std::vector<float> right (left.size());

        for (int start = 0; start < samples.count(); start += ReferenceSamples::blockLength)
        {
            const auto count = std::min (ReferenceSamples::blockLength, samples.count() - start);
            const auto part = samples.at (start, count);
            std::copy_n (part.left, count, left.begin() + start);
            std::copy_n (part.right, count, right.begin() + start);
        }

        bytes = (left.size() + right.size()) * sizeof (float);
        benchmark::DoNotOptimize (right.data());
    }

    state.counters["x_real_time"] =
        benchmark::Counter (static_cast<double> (state.iterations()) * recording.seconds, benchmark::Counter::kIsRate);
    state.counters["MB_a_minute"] = static_cast<double> (bytes) / recording.seconds * 60.0 / 1.0e6;
}

/** Measures a track as the plain description has it: one section after the other, one sample after the other. */
class PlainTrack
{
public:
    PlainTrack()
        : overall (sessionRate, 0),
          low (analysisCentresHz.data(), lowBandCount, sessionRate / factor),
          high (analysisCentresHz.data() + lowBandCount, analysisBandCount - lowBandCount, sessionRate),
          decimators { Plain::RateFilter (factor), Plain::RateFilter (factor) }
    {
    }

    float measure (const std::vector<float>& left, const std::vector<float>& right)
    {
        auto lufs = 0.0f;

        for (std::size_t start = 0; start + chunkLength <= left.size(); start += chunkLength)
        {
            for (std::size_t index = start; index < start + chunkLength; ++index)
                lufs = overall.integrated (left[index] * left[index] + right[index] * right[index]);

            high.process (left.data() + start, right.data() + start, chunkLength);
            const auto lowLeft = decimated (0, left.data() + start);
            const auto lowRight = decimated (1, right.data() + start);
            low.process (lowLeft.data(), lowRight.data(), chunkLength / factor);
        }

        return lufs + low.levels[0] + high.levels[0];
    }

private:
    static constexpr int factor = 4;
    static constexpr int chunkLength = 1024;

    std::array<float, chunkLength / factor> decimated (std::size_t channel, const float* samples)
    {
        decimators[channel].decimate (samples, reduced.data(), chunkLength);
        std::array<float, chunkLength / factor> result {};
        std::copy_n (reduced.begin(), result.size(), result.begin());
        return result;
    }

    PlainMeter overall;
    PlainBands low;
    PlainBands high;
    std::array<Plain::RateFilter, 2> decimators;
    std::array<double, chunkLength> reduced {};
};

TrackReading analysed (const std::vector<float>& left, const std::vector<float>& right)
{
    return analyseTrack ({ left.data(), right.data(), static_cast<int> (left.size()) },
                         {},
                         { sessionRate, sessionRate, decimationFactorFor (sessionRate).value() },
                         {});
}

/** One stereo track on one core, in turns with the plain version. */
void analyseOneTrack (benchmark::State& state)
{
    constexpr auto seconds = 20.0;

    if (! setSimdLevel (static_cast<SimdLevel> (state.range (0))))
        return state.SkipWithError ("this machine does not offer the level");

    const auto count = static_cast<std::size_t> (seconds * sessionRate);
    const auto left = movingNoise (1, count, sessionRate);
    const auto right = movingNoise (2, count, sessionRate);
    auto quickest = 1.0e9;
    auto quickestPlain = 1.0e9;

    const auto timed = [] (const auto& work)
    {
        const auto start = secondsOn (CLOCK_THREAD_CPUTIME_ID);
        work();
        return secondsOn (CLOCK_THREAD_CPUTIME_ID) - start;
    };

    for (auto _ : state)
    {
        quickest = std::min (quickest, timed ([&] { benchmark::DoNotOptimize (analysed (left, right)); }));
        quickestPlain =
            std::min (quickestPlain, timed ([&] { benchmark::DoNotOptimize (PlainTrack().measure (left, right)); }));
    }

    setSimdLevel (bestSimdLevel());
    state.counters["x_real_time"] = seconds / quickest;
    state.counters["plain_x_real_time"] = seconds / quickestPlain;
    state.counters["times_plain"] = quickestPlain / quickest;
}

/** A thread for each track, as the plug-in makes targets, against the same work on one thread, shared out evenly. */
void analyseTwentyTracks (benchmark::State& state)
{
    constexpr auto seconds = 240.0;
    constexpr auto trackCount = 20;
    const auto cores = static_cast<double> (std::max (1u, std::thread::hardware_concurrency()));
    std::vector<std::vector<float>> tracks;

    // Each of its own, or they would share what the processor keeps near; the right channel is the left one.
    for (unsigned track = 0; track < trackCount; ++track)
        tracks.push_back (movingNoise (track, static_cast<std::size_t> (seconds * sessionRate), sessionRate));

    auto alone = 1.0e9;
    auto together = 1.0e9;

    for (auto _ : state)
    {
        auto start = secondsOn (CLOCK_MONOTONIC);

        for (const auto& track : tracks)
            benchmark::DoNotOptimize (analysed (track, track));

        alone = std::min (alone, secondsOn (CLOCK_MONOTONIC) - start);
        start = secondsOn (CLOCK_MONOTONIC);

        {
            std::vector<std::jthread> threads;

            for (const auto& track : tracks)
                threads.emplace_back ([&track] { benchmark::DoNotOptimize (analysed (track, track)); });
        }

        together = std::min (together, secondsOn (CLOCK_MONOTONIC) - start);
    }

    state.counters["alone_s"] = alone;
    state.counters["together_s"] = together;
    state.counters["times_even_share"] = together / (alone / cores);
    state.counters["x_real_time"] = trackCount * seconds / together;
}

constexpr int runs = 5;

BENCHMARK (loadTrack)->Arg (44100)->Arg (48000)->Arg (96000)->ArgName ("session")->Unit (benchmark::kMillisecond);
BENCHMARK (analyseOneTrack)->DenseRange (0, 2)->ArgName ("level")->Iterations (runs)->Unit (benchmark::kMillisecond);
BENCHMARK (analyseTwentyTracks)->Iterations (3)->UseRealTime()->Unit (benchmark::kMillisecond);
} // namespace
