#include "gui/room/RoomPainter.h"

#include "gui/look/Palette.h"
#include "gui/room/BandMarker.h"
#include "gui/room/WallGrid.h"

#include <algorithm>
#include <array>

namespace
{
juce::Rectangle<float> rectangleOf (const BandMarker::Box& box)
{
    return { box.x, box.y, box.width, box.height };
}

/** The same line on both walls. */
void drawDashed (juce::Graphics& graphics, float width, juce::Line<float> onLeftWall)
{
    constexpr std::array<float, 2> dashes { 2.0f, 2.0f };
    const juce::Line<float> onRightWall (
        width - onLeftWall.getStartX(), onLeftWall.getStartY(), width - onLeftWall.getEndX(), onLeftWall.getEndY());

    for (const auto& line : { onLeftWall, onRightWall })
        graphics.drawDashedLine (line, dashes.data(), static_cast<int> (dashes.size()));
}
} // namespace

void RoomPainter::drawGrid (juce::Graphics& graphics, const RoomGeometry& room)
{
    constexpr float thickness = 1.0f;

    for (const auto& line : wallGrid (room))
    {
        graphics.setColour (juce::Colour (line.grey, line.grey, line.grey));
        graphics.fillRect (line.leftX, line.top, thickness, line.bottom - line.top);

        // The foremost line would stand beside the room.
        graphics.fillRect (std::min (line.rightX, room.width - thickness), line.top, thickness, line.bottom - line.top);
    }
}

void RoomPainter::drawMarker (juce::Graphics& graphics, const RoomGeometry& room, const BandView& band, bool master)
{
    if (band.solo || band.outOfScale)
        return;

    constexpr float cornerSize = 2.0f;
    const auto marker = bandMarker (room, band.frequencyHz, band.gainDb, master);
    graphics.setColour (juce::Colour (Palette::markerFrame));
    graphics.fillRoundedRectangle (rectangleOf (marker.leftFrame), cornerSize);
    graphics.fillRoundedRectangle (rectangleOf (marker.rightFrame), cornerSize);
    graphics.setColour (band.silent ? juce::Colour (Palette::inactiveBand) : band.colour);
    graphics.fillRect (rectangleOf (marker.leftFill));
    graphics.fillRect (rectangleOf (marker.rightFill));
}

void RoomPainter::drawFocus (juce::Graphics& graphics, const RoomGeometry& room, const BandView& band, bool master)
{
    if (band.solo)
    {
        graphics.setColour (juce::Colours::red);

        for (const auto edge : { band.upperHz, band.lowerHz })
            drawDashed (
                graphics,
                room.width,
                { 0.0f, room.wallRow (edge, room.scaleDb), RoomGeometry::depth, room.wallRow (edge, -room.scaleDb) });

        return;
    }

    const auto marker = bandMarker (room, band.frequencyHz, band.gainDb, master);
    graphics.setColour (band.silent ? juce::Colour (Palette::markerFrame) : band.colour);
    drawDashed (graphics, room.width, { 0.0f, room.wallRow (band.frequencyHz, room.scaleDb), marker.x, marker.y });
}
