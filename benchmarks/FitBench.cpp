#include "targets/fit/BandFit.h"

#include <benchmark/benchmark.h>

namespace
{
/** An orchestra that is to sound as a drum loop: many bands, far apart. */
FitTask task (double sampleRate, FilterMode mode, FilterPhase phase)
{
    FitTask result;
    result.lufs = -13.3f;
    result.bands = { -21.3f, -24.8f, -28.5f, -32.1f, -33.9f, -36.3f, -40.0f, -43.8f, -37.6f, -32.7f };
    result.adjustments = { -1.0f, -5.5f, -5.8f, 2.4f, 7.8f, 12.0f, 17.1f, 15.2f, 1.2f, -8.5f };
    result.sampleRate = sampleRate;
    result.mode = mode;
    result.phase = phase;
    return result;
}

void fitOfBands (benchmark::State& state)
{
    const auto asked = task (static_cast<double> (state.range (0)),
                             state.range (1) == 1 ? FilterMode::mix : FilterMode::master,
                             state.range (2) == 1 ? FilterPhase::linear : FilterPhase::minimum);
    std::size_t bandCount = 0;

    for (auto _ : state)
    {
        const auto fitted = fitBands (asked);
        bandCount = fitted.bands.size();
        benchmark::DoNotOptimize (bandCount);
    }

    state.counters["bands"] = static_cast<double> (bandCount);
}

BENCHMARK (fitOfBands)
    ->ArgNames ({ "rate", "mix", "linear" })
    ->Args ({ 44100, 1, 1 })
    ->Args ({ 44100, 0, 1 })
    ->Args ({ 44100, 1, 0 })
    ->Args ({ 96000, 1, 1 })
    ->Args ({ 192000, 1, 1 })
    ->Unit (benchmark::kMillisecond);
} // namespace
