#include "dsp/rate/ReducedRate.h"

std::optional<int> decimationFactorFor (double sampleRate) noexcept
{
    if (sampleRate == 44100.0 || sampleRate == 48000.0 || sampleRate == 88200.0 || sampleRate == 96000.0)
        return 4;

    if (sampleRate == 176400.0 || sampleRate == 192000.0)
        return 8;

    return std::nullopt;
}
