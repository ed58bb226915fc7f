#include "AnalysisCost.h"

#include "BenchSignal.h"
#include "Measurement.h"
#include "dsp/RateConverter.h"
#include "support/PluginRig.h"

#include <chrono>
#include <ctime>
#include <thread>

namespace
{
constexpr double sampleRate = 48000.0;
constexpr int blockSize = 512;

double processSeconds()
{
    return static_cast<double> (std::clock()) / static_cast<double> (CLOCKS_PER_SEC);
}
} // namespace

double AnalysisCost::percentOfCore (double seconds)
{
    using Clock = std::chrono::steady_clock;
    PluginRig rig;
    rig.prepare (sampleRate, blockSize);
    rig.processor.model.setShowHeatmap (true);

    RateConverter converter;
    converter.setSampleRate (sampleRate);
    converter.buildFilters();

    const BenchSignal signal;
    const auto blockCount = static_cast<int> (seconds * sampleRate / blockSize);
    const std::chrono::duration<double> blockTime (blockSize / sampleRate);

    const auto cpuBefore = processSeconds() - Measurement::threadSeconds();
    const auto start = Clock::now();

    for (int block = 0; block < blockCount; ++block)
    {
        const auto offset = block * blockSize % BenchSignal::frameCount;
        const auto* left = signal.channel (0) + offset;
        const auto* right = signal.channel (1) + offset;
        converter.decimateStereo (left, right, blockSize);
        rig.processor.liveAnalysis().feedAnalysis (converter.outputLeft(),
                                                   converter.outputRight(),
                                                   blockSize / converter.decimationFactor(),
                                                   left,
                                                   right,
                                                   blockSize);
        std::this_thread::sleep_until (start + (block + 1) * blockTime);
    }

    const auto cpu = processSeconds() - Measurement::threadSeconds() - cpuBefore;
    const std::chrono::duration<double> elapsed = Clock::now() - start;
    return 100.0 * cpu / elapsed.count();
}
