#pragma once

#include "dsp/meters/LUFSProcessor.h"

#include <memory>

using Meter = orvik::LUFSProcessor<3000>;

/** A meter as the processor has it before the first sample: prepared, and reset to -70 dB. */
inline std::unique_ptr<Meter> meterAt (double sampleRate, int baseCount = 0)
{
    auto meter = std::make_unique<Meter>();
    meter->setSampleRate (sampleRate);
    meter->setBaseCount (baseCount);
    meter->prepare();
    meter->reset (-70.0f);
    meter->resetShortTerm (-70.0f);
    return meter;
}
