#pragma once

#include "gui/band/BandEdges.h"
#include "gui/band/OverlapPanel.h"

/** What decides where a band stands. */
struct BandPlace
{
    int frequencyHz = 0;
    float gainDb = 0.0f;
    BandEdges edges;
};

/** Where a band stands in the room, and its parts within it. Lengths are pixels; the bounds are in the room's
    coordinates, the parts in the band's own. */
struct BandLayout
{
    /** The gain lies beyond the scale: only two dots on the walls remain, at the depth of the scale's end. */
    bool outOfScale = false;

    juce::Rectangle<int> bounds;

    /** How much of the bounds lies above and below the band itself, so that its panel fits across the line. */
    int topExtension = 0;
    int bottomExtension = 0;

    /** Rows in the room of the upper edge, the line and the lower edge, at the depth of the (limited) gain. */
    float topRow = 0.0f;
    float centreRow = 0.0f;
    float bottomRow = 0.0f;

    /** From the band's upper edge down to its line. */
    int centreOffset = 0;

    /** The band's line left and right of its panel, and the handles of its edges. A handle is empty where the band
        reaches the end of the room. */
    juce::Rectangle<int> leftLine, rightLine, topEdge, bottomEdge;

    /** What remains of a band that is out of scale. */
    juce::Rectangle<int> leftDot, rightDot;

    /** The band's own panel, and which spare one it needs in its place. */
    juce::Rectangle<int> panel;
    OverlapPanel overlap = OverlapPanel::none;

    /** The line's row within the bounds, and in the room. */
    [[nodiscard]] int lineY() const noexcept { return topExtension + centreOffset; }
    [[nodiscard]] int lineRow() const noexcept { return bounds.getY() + lineY(); }

    /** The band itself within the bounds. */
    [[nodiscard]] juce::Rectangle<int> body() const noexcept
    {
        return bounds.withZeroOrigin().withTrimmedTop (topExtension).withTrimmedBottom (bottomExtension);
    }
};

/** Lays out a band. A frequency of 0 gives an empty layout. */
[[nodiscard]] BandLayout layOutBand (const RoomGeometry& room, const BandPlace& place) noexcept;

/** A gain as depth: 0 at +scaleDb, 1 at -scaleDb. Not limited. */
[[nodiscard]] float depthOfGain (float gainDb, float scaleDb) noexcept;

/** The gain at a depth. */
[[nodiscard]] float gainAtDepth (float depth, float scaleDb) noexcept;
