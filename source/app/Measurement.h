#pragma once

#include "core/presets/Presets.h"
#include "dsp/meters/BandAnalyser.h"

#include <array>
#include <string>

/** One recording's readings beside a target. Levels in LUFS; what has no reading is not finite. */
struct Measurement
{
    using Levels = std::array<float, analysisBandCount>;

    std::string file;
    double sampleRate = 0.0;
    int channels = 0;
    double seconds = 0.0;
    float lufs = 0.0f;
    Levels bands {};
    Levels adjustments {};
};

/** The target as the live analysis takes it: the last value extrapolated where that can be done. */
struct MeasurementTarget
{
    int id = 0;
    std::string name;

    /** With the group's name before it. */
    std::string title;
    float lufs = 0.0f;
    Measurement::Levels values {};

    [[nodiscard]] static MeasurementTarget of (const Presets::Library& library, const Presets::Preset& preset);

    /** How far each band has to rise at equal overall loudness, in dB; not finite where there is no reading. */
    [[nodiscard]] Measurement::Levels adjustmentsFor (float measuredLufs, const Measurement::Levels& measured) const;
};
