#include "gui/band/BandLayout.h"

#include "gui/band/BandRoom.h"

#include <algorithm>
#include <cmath>

namespace
{
/** The widest scale that can be chosen: no gain is beyond it. */
constexpr float widestScaleDb = 12.0f;

/** A band is never narrower than the back wall. */
constexpr int wallDepth = static_cast<int> (RoomGeometry::depth);

constexpr int tallBand = 60;
constexpr int tallZone = 16;
constexpr int flatZone = 6;
constexpr int dotWidth = 8;
constexpr int dotHeight = 20;

int floored (float value) noexcept
{
    return static_cast<int> (std::floor (value));
}

int ceiled (float value) noexcept
{
    return static_cast<int> (std::ceil (value));
}

/** Without what a stored gain is off by from its tenth of a decibel: rounded up or down to whole pixels, that would be
   one pixel on one side of the room. */
float withoutNoise (float offset) noexcept
{
    constexpr float stepsPerPixel = 256.0f;
    return std::round (offset * stepsPerPixel) / stepsPerPixel;
}

void layOutBounds (BandLayout& layout, const RoomGeometry& room, float offset) noexcept
{
    constexpr auto needed = BandRoom::halfPanelHeight;
    const auto left = ceiled (offset);
    const auto width = ceiled (room.width - offset) - floored (offset);
    const auto top = floored (layout.topRow);
    const auto bottom = ceiled (layout.bottomRow);
    const auto above = layout.centreRow - static_cast<float> (top);
    const auto below = static_cast<float> (bottom) - layout.centreRow;

    if (above < static_cast<float> (needed))
        layout.topExtension = static_cast<int> (std::max (needed - above, static_cast<float> (needed)));
    else if (below < static_cast<float> (needed))
        layout.bottomExtension = static_cast<int> (std::min (needed + 1 - below, static_cast<float> (needed)));

    layout.bounds = { std::min (left, wallDepth),
                      top - layout.topExtension,
                      std::max (width, static_cast<int> (room.width) - 2 * wallDepth),
                      bottom - top + layout.topExtension + layout.bottomExtension };
}

void layOutZones (BandLayout& layout, const BandPlace& place) noexcept
{
    // The line begins at the walls and ends at the panel with its buttons; the shelf's button needs a little more.
    const auto panelLeft = place.frequencyHz >= BandRoom::shelfFromHz ? 65 : 60;
    constexpr auto panelRight = 76;
    constexpr auto lineBelowTop = 4;

    const auto width = layout.bounds.getWidth();
    const auto height = layout.bounds.getHeight();
    const auto half = width / 2;
    const auto zone = height > tallBand ? tallZone : flatZone;
    const auto lineTop = layout.lineY() - lineBelowTop;

    layout.leftLine = { 0, lineTop, half - panelLeft, zone };
    layout.rightLine = { half + panelRight, lineTop, half - panelRight, zone };

    if (place.edges.upperHz < static_cast<int> (RoomGeometry::highHz))
        layout.topEdge = { 0, 0, width, zone };

    if (place.edges.lowerHz > static_cast<int> (RoomGeometry::lowHz))
        layout.bottomEdge = { 0, height - zone, width, zone };

    layout.leftDot = { 0, height / 2 - dotHeight / 2, dotWidth, dotHeight };
    layout.rightDot = layout.leftDot.withX (width - dotWidth);
    layout.panel = { half - BandRoom::panelLeftOfMiddle,
                     layout.lineY() - BandRoom::halfPanelHeight,
                     BandRoom::panelWidth,
                     BandRoom::panelHeight };
}
} // namespace

BandLayout layOutBand (const RoomGeometry& room, const BandPlace& place) noexcept
{
    BandLayout layout;

    if (place.frequencyHz <= 0)
        return layout;

    const auto scale = room.scaleDb;
    const auto gain = std::clamp (place.gainDb, -scale, scale);
    layout.outOfScale = gain != place.gainDb && scale != widestScaleDb;

    layout.topRow = room.wallRow (static_cast<float> (std::max (place.edges.upperHz, 1)), gain);
    layout.centreRow = room.wallRow (static_cast<float> (place.frequencyHz), gain);
    layout.bottomRow = room.wallRow (static_cast<float> (std::max (place.edges.lowerHz, 1)), gain);
    layOutBounds (layout, room, withoutNoise (room.wallOffset (gain)));

    layout.centreOffset = std::min (static_cast<int> (layout.centreRow - layout.topRow), layout.bounds.getHeight());
    layOutZones (layout, place);

    if (! layout.outOfScale)
        layout.overlap = overlapPanelFor (room, layout.centreRow);

    return layout;
}

float depthOfGain (float gainDb, float scaleDb) noexcept
{
    return 1.0f - (gainDb + scaleDb) / (2.0f * scaleDb);
}

float gainAtDepth (float depth, float scaleDb) noexcept
{
    return 2.0f * scaleDb * (1.0f - depth) - scaleDb;
}
