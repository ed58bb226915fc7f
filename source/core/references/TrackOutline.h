#pragma once

#include "core/session/ReferenceTrackRequest.h"

#include <cstdint>
#include <span>
#include <vector>

/** A point of a track's outline, in pixels from the waveform's top left corner. */
struct OutlinePoint
{
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::uint32_t colour = 0; ///< ARGB
};

/** A track's outline as columns of points, one for every third pixel, around a middle line. */
namespace TrackOutline
{
/** Pixels from one column to the next. */
inline constexpr int columnStep = 3;

/** Where the middle line runs, and how many rows there are above and below it, as far apart as columns. */
inline constexpr int middleY = 60;
inline constexpr int rowCount = 19;

/** @param levels          0 to 0.8 over the whole track
    @param columns         how many columns there are
    @param pixelsPerSample for the edges of the ranges; of several over one column the last counts
    @return a middle point for each column, then pairs of points above and below it; a silent column outside every
            range has none */
[[nodiscard]] std::vector<OutlinePoint>
build (std::span<const float> levels, int columns, float pixelsPerSample, std::span<const TrackLoop> loops);
} // namespace TrackOutline
