#pragma once

#include "gui/band/BandLayout.h"

/** What part of a band a point lies in. */
enum class BandZone
{
    none,
    body,
    line,
    topEdge,
    bottomEdge,
    dot
};

/** The part that a press takes: the line before an edge, as a flat band has both at one place.
    @param point in the band's own coordinates */
[[nodiscard]] BandZone pressedZone (const BandLayout& layout, juce::Point<int> point) noexcept;

/** The part that the resting mouse speaks of: an edge before the line. */
[[nodiscard]] BandZone hoveredZone (const BandLayout& layout, juce::Point<int> point) noexcept;
