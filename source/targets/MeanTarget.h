#pragma once

#include "targets/TrackAnalysis.h"

#include <array>
#include <optional>
#include <span>

/** What several tracks have in common: the numbers that a target consists of, in LUFS. */
struct MeanTarget
{
    float lufs = 0.0f;

    /** The last one is the mean of the tracks' own extrapolations, and not what a target in use has there. */
    std::array<float, analysisBandCount> values {};

    /** Plain means of the decibels over the tracks that have a reading; nothing where none has one. A band that a
        track is silent in is minus infinity in the mean as well. */
    [[nodiscard]] static std::optional<MeanTarget> of (std::span<const TrackReading> readings);
};
