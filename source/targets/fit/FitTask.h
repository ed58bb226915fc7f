#pragma once

#include "dsp/design/FirLengths.h"
#include "dsp/meters/BandAnalyser.h"

#include <array>

/** A recording below that is so quiet that its softer bands and passages often lie below the meters' gate. */
inline constexpr float quietLufs = -28.0f;

/** What a fit of bands starts from: eleven numbers that were read of a recording, what is wanted of it, and through
    which equaliser. */
struct FitTask
{
    using Levels = std::array<float, analysisBandCount>;

    /** In LUFS; what has no reading is not finite. */
    float lufs = 0.0f;
    Levels bands {};

    /** How far each band should rise beside the whole, in dB; not finite where nothing is asked. */
    Levels adjustments {};

    /** How much of that is to be gone, 0 to 100. */
    float amountPercent = 100.0f;

    /** One of the six rates in Hz. */
    double sampleRate = 48000.0;
    FilterMode mode = FilterMode::mix;
    FilterPhase phase = FilterPhase::linear;
};
