#pragma once

#include "dsp/meters/BandAnalyser.h"
#include "dsp/meters/LUFSProcessor.h"

#include <array>
#include <functional>
#include <span>
#include <vector>

/** A track as it lies in memory, at the session's rate; `right` is null for mono. */
struct TrackSamples
{
    const float* left = nullptr;
    const float* right = nullptr;
    int count = 0;
};

/** Gives at most 1024 samples of a track from one on, at the session's rate, which need to hold until the next call. */
using TrackReader = std::function<orvik::ChannelPointers (int start, int count)>;

/** A part of a track, from its first sample up to its end. */
struct TrackRange
{
    int first = 0;
    int end = 0;
};

/** Rates in Hz, and the factor between the session's and the reduced one. */
struct TrackRates
{
    double session = 0.0;
    double file = 0.0;
    int decimation = 1;
};

/** What a track measures, in LUFS. What never passed the meters' gate is minus infinity. */
struct TrackReading
{
    float lufs = 0.0f;

    /** The last value is extrapolated from the three below it where that can be done. */
    std::array<float, analysisBandCount> bands {};

    /** The overall reading at the end of each range. */
    std::vector<float> rangeLufs;

    /** False where nothing was measured, or nothing that passed the gate. */
    bool exists = false;
};

/** Measures a whole track, or some ranges of it, with the meters and filters of the live analysis.

    Meters and filters run on from range to range in the order of the list, and the overall figure is the mean of the
    readings at the ends of the ranges. A range that is empty once it is cut to the track measures nothing and repeats
    the reading before it, 0 at first. The low bands take chunks of 1024 samples: those of a range may reach beyond its
    end, behind the track's end come zeros, and from the place where no more than 1024 samples are left of as many as
    the track has, counted within the range, nothing more is taken.
    A reading takes more than a second of sound to come about.
    One thread for a track; allocates.

    @param read     gives samples of the track, in a range from front to back, and never beyond the track's end
    @param ranges   the whole track, if empty
    @param progress percent of the track, after every 40000 samples; what it throws ends the analysis */
[[nodiscard]] TrackReading analyseTrack (const TrackReader& read,
                                         int sampleCount,
                                         std::span<const TrackRange> ranges,
                                         const TrackRates& rates,
                                         const std::function<void (float percent)>& progress);

/** The same for a track in memory. */
[[nodiscard]] TrackReading analyseTrack (const TrackSamples& samples,
                                         std::span<const TrackRange> ranges,
                                         const TrackRates& rates,
                                         const std::function<void (float percent)>& progress);
