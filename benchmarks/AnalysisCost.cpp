#include "AnalysisCost.h"

#include "BenchSignal.h"
#include "Measurement.h"
#include "dsp/meters/SpectrumAnalyser.h"
#include "dsp/rate/RateConverter.h"
#include "support/PluginRig.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <ctime>
#include <functional>
#include <thread>
#include <vector>

namespace
{
constexpr double sampleRate = 48000.0;
constexpr int blockSize = 512;
constexpr int chunkLength = LiveAnalysis::chunkLength;
constexpr int chunksInSignal = BenchSignal::frameCount / chunkLength;

double percentOf (double cpuSeconds, double seconds)
{
    return 100.0 * cpuSeconds / seconds;
}

double secondsOfOtherThreads()
{
    return static_cast<double> (std::clock()) / static_cast<double> (CLOCKS_PER_SEC) - Measurement::threadSeconds();
}

/** Calls a block's turn once for each block of the time, as a sound card would.
    @returns what the other threads of this process took meanwhile, in percent */
double percentAtPace (double seconds, const std::function<void (int block)>& turn)
{
    using Clock = std::chrono::steady_clock;
    const auto blockCount = static_cast<int> (seconds * sampleRate / blockSize);
    const std::chrono::duration<double> blockTime (blockSize / sampleRate);
    const auto cpuBefore = secondsOfOtherThreads();
    const auto start = Clock::now();

    for (int block = 0; block < blockCount; ++block)
    {
        turn (block);
        std::this_thread::sleep_until (start + (block + 1) * blockTime);
    }

    const std::chrono::duration<double> elapsed = Clock::now() - start;
    return percentOf (secondsOfOtherThreads() - cpuBefore, elapsed.count());
}

struct LowRateSignal
{
    LowRateSignal()
    {
        converter.setSampleRate (sampleRate);
        converter.buildFilters();
    }

    /** The block at the reduced rate. */
    void convert (const BenchSignal& signal, int start)
    {
        converter.decimateStereo (signal.channel (0) + start, signal.channel (1) + start, blockSize);
    }

    RateConverter converter;
};

double measureWork()
{
    const BenchSignal signal;
    LowRateSignal low;
    const auto factor = low.converter.decimationFactor();
    const auto lowBlock = static_cast<std::size_t> (blockSize / factor);
    std::array<std::vector<float>, 2> lowSignal;

    for (int start = 0; start + blockSize <= chunksInSignal * chunkLength; start += blockSize)
    {
        low.convert (signal, start);
        lowSignal[0].insert (lowSignal[0].end(), low.converter.outputLeft(), low.converter.outputLeft() + lowBlock);
        lowSignal[1].insert (lowSignal[1].end(), low.converter.outputRight(), low.converter.outputRight() + lowBlock);
    }

    BandAnalyser bands;
    bands.prepareBands (sampleRate / factor, sampleRate);
    SpectrumAnalyser analyser;
    std::array<float, SpectrumAnalyser::binCount> spectrum;

    const auto passOverSignal = [&]
    {
        for (int chunk = 0; chunk < chunksInSignal; ++chunk)
        {
            const auto* left = signal.channel (0) + chunk * chunkLength;
            const auto* right = signal.channel (1) + chunk * chunkLength;
            const auto lowStart = chunk * chunkLength / factor;
            bands.processLow (lowSignal[0].data() + lowStart, lowSignal[1].data() + lowStart, chunkLength / factor);
            bands.processHigh (left, right, chunkLength);

            if (SpectrumAnalyser::isWorthAnalysing (left, right))
                analyser.analyseSpectrum (left, right, spectrum.data());
        }
    };

    std::vector<double> rounds;
    constexpr int roundCount = 25;

    for (int round = 0; round <= roundCount; ++round)
    {
        const auto before = Measurement::threadSeconds();
        passOverSignal();

        if (round > 0)
            rounds.push_back (Measurement::threadSeconds() - before);
    }

    return percentOf (Measurement::median (rounds), chunksInSignal * chunkLength / sampleRate);
}

double measureAtPace (double seconds)
{
    PluginRig rig;
    rig.prepare (sampleRate, blockSize);
    rig.processor.model.setShowHeatmap (true);
    const BenchSignal signal;
    LowRateSignal low;

    return percentAtPace (seconds,
                          [&] (int block)
                          {
                              const auto start = block * blockSize % (chunksInSignal * chunkLength);
                              low.convert (signal, start);
                              rig.processor.liveAnalysis().feedAnalysis (low.converter.outputLeft(),
                                                                         low.converter.outputRight(),
                                                                         blockSize / low.converter.decimationFactor(),
                                                                         signal.channel (0) + start,
                                                                         signal.channel (1) + start,
                                                                         blockSize);
                          });
}

double measureWaking (double seconds)
{
    ThreadSignal spectrum ([] {});
    ThreadSignal analysis (
        [&spectrum]
        {
            spectrum.wake();
            spectrum.waitUntilIdle();
        });
    std::array threads { std::thread ([&] { analysis.run(); }), std::thread ([&] { spectrum.run(); }) };

    const auto percent = percentAtPace (
        seconds, [&] (int block) { analysis.wakeFromAudioThread ((block + 1) * blockSize % chunkLength == 0); });

    for (auto* signal : { &analysis, &spectrum })
        signal->requestExit();

    for (auto& thread : threads)
        thread.join();

    return percent;
}
} // namespace

AnalysisCost AnalysisCost::measure (double seconds)
{
    return { measureWork(), measureAtPace (seconds), measureWaking (seconds) };
}
