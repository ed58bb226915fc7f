#include "core/audio/LoudnessMeters.h"

#include "dsp/meters/BandAnalyser.h"

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

    inputReading.store (meterLufs.integratedValue());
    matchInputReading = matchInputLufs.shortTermValue();
    matchOutputReading = matchOutputLufs.shortTermValue();
}

void LoudnessMeters::requestReset() noexcept
{
    // In one order with the two steps of a block: it stores its reading, then looks whether a reset has come.
    resetRequested.store (true);
    inputReading.store (noReading);
}

void LoudnessMeters::process (orvik::ChannelPointers input,
                              orvik::ChannelPointers output,
                              int count,
                              bool measureOutput) noexcept
{
    if (resetRequested.exchange (false))
        reset();

    inputReading.store (meterLufs.integratedOfPlain (input, count));

    if (resetRequested)
        inputReading.store (noReading);

    if (measureOutput)
        Meter::shortTermOfWeightedPair (matchInputLufs, input, matchOutputLufs, output, count);
    else
        std::ignore = matchInputLufs.shortTermOfWeighted (input, count, nullptr);

    matchInputReading = matchInputLufs.shortTermValue();
    matchOutputReading = matchOutputLufs.shortTermValue();
}
