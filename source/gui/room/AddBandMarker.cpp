#include "gui/room/AddBandMarker.h"

#include "gui/room/RoomGeometryOf.h"

AddBandMarker::AddBandMarker (const PluginModel& modelToUse) : model (modelToUse)
{
    setInterceptsMouseClicks (false, false);
    setVisible (false);
}

void AddBandMarker::show (float frequencyHz, juce::Colour newColour)
{
    if (isVisible() && frequency == frequencyHz && colour == newColour)
        return;

    repaintLines();
    frequency = frequencyHz;
    colour = newColour;
    setVisible (true);
    repaintLines();
}

AddBandMarker::Lines AddBandMarker::lines() const
{
    const auto room = roomGeometryOf (model);
    const auto hertz = std::max (frequency, 1.0f);
    const auto nearRow = room.wallRow (hertz, room.scaleDb);
    const auto row = room.wallRow (hertz, 0.0f);
    const auto depth = room.wallOffset (0.0f);
    return { { { 0.0f, nearRow, depth, row },
               { depth, row, room.width - depth, row },
               { room.width - depth, row, room.width, nearRow } } };
}

void AddBandMarker::repaintLines()
{
    for (const auto& line : lines())
        repaint (juce::Rectangle<float> (line.getStart(), line.getEnd()).getSmallestIntegerContainer().expanded (1));
}

void AddBandMarker::paint (juce::Graphics& graphics)
{
    constexpr juce::uint8 alpha = 0xb2;
    graphics.setColour (colour.withAlpha (alpha));

    for (const auto& line : lines())
        graphics.drawLine (line, 1.0f);
}
