#include "app/Diagram.h"

#include <algorithm>
#include <array>
#include <cmath>

juce::Colour DiagramColours::ofIndex (std::size_t index)
{
    constexpr std::array<juce::uint32, 10> colours { 0xff1f7a4d, 0xff2f5fa8, 0xffb5532a, 0xff7a4fa3, 0xff9a7b00,
                                                     0xff9c2f4f, 0xff1d8a99, 0xff6b4a2b, 0xff5c7a1f, 0xffb0488f };
    return juce::Colour (colours[index % colours.size()]);
}

namespace
{
juce::String hertzText (float hertz)
{
    return hertz < 1000.0f ? juce::String (static_cast<int> (hertz))
                           : juce::String (static_cast<int> (hertz) / 1000) + "k";
}
} // namespace

Diagram Diagram::around0 (juce::Rectangle<float> area, std::span<const float> values)
{
    auto largest = 12.0f;

    for (const auto value : values)
        if (std::isfinite (value))
            largest = std::max (largest, std::abs (value));

    const auto step = largest > 24.0f ? 12.0f : 6.0f;
    const auto range = step * std::ceil (std::min (largest, 48.0f) / step);
    return { area, -range, range, step };
}

Diagram Diagram::ofLevels (juce::Rectangle<float> area, std::span<const float> values)
{
    constexpr auto step = 10.0f;
    auto lowest = -30.0f;
    auto highest = 0.0f;

    for (const auto value : values)
        if (std::isfinite (value))
        {
            lowest = std::min (lowest, value);
            highest = std::max (highest, value);
        }

    return { area,
             step * std::floor (std::max (lowest, -90.0f) / step),
             step * std::ceil (std::min (highest, 30.0f) / step),
             step };
}

float Diagram::x (float hertz) const
{
    return area.getX() + area.getWidth() * std::log (hertz / lowestHz) / std::log (highestHz / lowestHz);
}

float Diagram::y (float decibels) const
{
    return area.getBottom()
           - area.getHeight() * (std::clamp (decibels, lowestDb, highestDb) - lowestDb) / (highestDb - lowestDb);
}

void Diagram::drawGrid (juce::Graphics& graphics, const juce::String& title) const
{
    graphics.setColour (DiagramColours::text);
    graphics.setFont (juce::Font (20.0f, juce::Font::bold));
    graphics.drawText (title,
                       juce::Rectangle<float> (area.getX(), area.getY() - 34.0f, 900.0f, 26.0f),
                       juce::Justification::centredLeft);
    graphics.setFont (juce::Font (15.0f));

    for (auto level = lowestDb; level <= highestDb + 0.5f; level += stepDb)
    {
        const auto height = y (level);
        const auto isZero = std::abs (level) < 0.5f && highestDb > 0.0f;
        graphics.setColour (isZero ? DiagramColours::target : DiagramColours::grid);
        graphics.drawHorizontalLine (juce::roundToInt (height), area.getX(), area.getRight());
        graphics.setColour (DiagramColours::text);
        graphics.drawText (juce::String (juce::roundToInt (level)),
                           juce::Rectangle<float> (area.getX() - 56.0f, height - 10.0f, 48.0f, 20.0f),
                           juce::Justification::centredRight);
    }

    for (const auto centre : analysisCentresHz)
    {
        const auto place = x (centre);
        graphics.setColour (DiagramColours::grid);
        graphics.drawVerticalLine (juce::roundToInt (place), area.getY(), area.getBottom());
        graphics.setColour (DiagramColours::text);
        graphics.drawText (hertzText (centre),
                           juce::Rectangle<float> (place - 30.0f, area.getBottom() + 4.0f, 60.0f, 20.0f),
                           juce::Justification::centred);
    }
}

void Diagram::drawLevels (juce::Graphics& graphics,
                          const Measurement::Levels& levels,
                          juce::Colour colour,
                          float width) const
{
    graphics.setColour (colour);

    for (std::size_t band = 0; band < levels.size(); ++band)
        if (std::isfinite (levels[band]))
            graphics.fillEllipse (
                juce::Rectangle<float> (8.0f, 8.0f).withCentre ({ x (analysisCentresHz[band]), y (levels[band]) }));

    graphics.strokePath (curve (analysisCentresHz, levels), juce::PathStrokeType (width));
}

juce::Path Diagram::curve (std::span<const float> frequencies, std::span<const float> values) const
{
    juce::Path path;
    auto started = false; // the framework's path with one point calls itself empty

    for (std::size_t index = 0; index < values.size(); ++index)
    {
        if (! std::isfinite (values[index]))
            continue;

        const juce::Point<float> point (x (frequencies[index]), y (values[index]));

        if (started)
            path.lineTo (point);
        else
            path.startNewSubPath (point);

        started = true;
    }

    return path;
}

void Diagram::drawLegend (juce::Graphics& graphics,
                          int row,
                          int rows,
                          const juce::String& text,
                          juce::Colour colour) const
{
    const auto height = area.getBottom() - 24.0f * static_cast<float> (rows - row) + 8.0f;
    graphics.setColour (colour);
    graphics.fillRect (juce::Rectangle<float> (area.getX() + 24.0f, height, 26.0f, 4.0f));
    graphics.setColour (DiagramColours::text);
    graphics.drawText (text,
                       juce::Rectangle<float> (area.getX() + 60.0f, height - 9.0f, 340.0f, 22.0f),
                       juce::Justification::centredLeft);
}
