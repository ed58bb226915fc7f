#include "core/LoudnessMeters.h"

#include "dsp/BandAnalyser.h"

#include <tuple>

void LoudnessMeters::prepare (double sampleRate)
{
    for (auto* meter : { &meterLufs, &matchInputLufs, &matchOutputLufs })
    {
        meter->setSampleRate (sampleRate);
        meter->prepare();
        meter->weighting.clear();
    }

    resetRequested = false;
    reset();
}

void LoudnessMeters::reset() noexcept
{
    meterLufs.reset (resetLevelDb);

    for (auto* meter : { &meterLufs, &matchInputLufs, &matchOutputLufs })
        meter->resetShortTerm (resetLevelDb);

    inputReading.store (meterLufs.integratedValue(), std::memory_order_relaxed);
    matchInputReading = matchInputLufs.shortTermValue();
    matchOutputReading = matchOutputLufs.shortTermValue();
}

void LoudnessMeters::requestReset() noexcept
{
    resetRequested.store (true, std::memory_order_release);
    inputReading.store (-std::numeric_limits<float>::infinity(), std::memory_order_relaxed);
}

void LoudnessMeters::process (orvik::ChannelPointers input,
                              orvik::ChannelPointers output,
                              int count,
                              bool measureOutput) noexcept
{
    if (resetRequested.exchange (false, std::memory_order_acquire))
        reset();

    inputReading.store (meterLufs.integratedOfPlain (input, count), std::memory_order_relaxed);

    if (measureOutput)
        Meter::shortTermOfWeightedPair (matchInputLufs, input, matchOutputLufs, output, count);
    else
        std::ignore = matchInputLufs.shortTermOfWeighted (input, count, nullptr);

    matchInputReading = matchInputLufs.shortTermValue();
    matchOutputReading = matchOutputLufs.shortTermValue();
}
