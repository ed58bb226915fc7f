#pragma once

#include "core/presets/Presets.h"
#include "dsp/meters/BandAnalyser.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

/** One recording's readings beside a target. Levels in LUFS; what has no reading is not finite. */
struct Measurement
{
    using Levels = std::array<float, analysisBandCount>;

    std::string file;
    double sampleRate = 0.0;
    int channels = 0;

    /** Length of the whole recording. */
    double seconds = 0.0;

    /** The part that was measured, in seconds. */
    double rangeStart = 0.0;
    double rangeEnd = 0.0;

    /** Samples of that part that were no finite numbers, and count as silence. */
    std::int64_t notFinite = 0;

    /** What the file itself gives to say, in sentences. */
    std::vector<std::string> inputNotes;

    float lufs = 0.0f;
    Levels bands {};
    Levels adjustments {};

    /** What a reader has to know about the figures, in sentences. */
    [[nodiscard]] std::vector<std::string> notes() const;

    /** Levels that all lie so many dB higher. */
    [[nodiscard]] static Levels raised (Levels levels, float decibels);
};

/** The target as the live analysis takes it: the last value extrapolated where that can be done. */
struct MeasurementTarget
{
    /** 0 for one that is no preset. */
    int id = 0;
    std::string name;

    /** With the group's name before it. */
    std::string title;

    /** False for NO TARGETS, and for USER SETTING, which is set within a session only: nothing to adjust to. */
    bool exists = true;

    float lufs = 0.0f;
    Measurement::Levels values {};

    /** What a reader has to know of how it came about, in sentences. */
    std::vector<std::string> notes;

    [[nodiscard]] static MeasurementTarget of (const Presets::Library& library, const Presets::Preset& preset);

    /** How far each band has to rise at equal overall loudness, in dB; not finite where there is no reading, or no
        target. */
    [[nodiscard]] Measurement::Levels adjustmentsFor (float measuredLufs, const Measurement::Levels& measured) const;
};
