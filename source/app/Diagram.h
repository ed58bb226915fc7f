#pragma once

#include "app/Measurement.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <span>

/** What the program's pictures are painted in. */
namespace DiagramColours
{
inline const juce::Colour background { 0xfff7f7f5 };
inline const juce::Colour grid { 0xffd8d8d4 };
inline const juce::Colour text { 0xff2b2b2b };
inline const juce::Colour target { 0xff8a8a86 };

/** One of several things of a kind, such as files; they come round again after ten. */
[[nodiscard]] juce::Colour ofIndex (std::size_t index);
} // namespace DiagramColours

/** One diagram of a picture: levels in dB over frequency, on a logarithmic axis with the ten bands' centres. */
struct Diagram
{
    juce::Rectangle<float> area;
    float lowestDb = 0.0f;
    float highestDb = 0.0f;
    float stepDb = 0.0f;

    /** Around 0, as far as every finite value needs, at least 12 and at most 48 dB to either side. */
    [[nodiscard]] static Diagram around0 (juce::Rectangle<float> area, std::span<const float> values);

    /** In steps of 10 dB, as far down and up as every finite value needs, at least from -30 to 0 and at most from -90
       to 30. */
    [[nodiscard]] static Diagram ofLevels (juce::Rectangle<float> area, std::span<const float> values);

    static constexpr float lowestHz = 280.0f;
    static constexpr float highestHz = 20500.0f;

    [[nodiscard]] float x (float hertz) const;

    /** Values beyond the diagram's lie on its edge. */
    [[nodiscard]] float y (float decibels) const;

    void drawGrid (juce::Graphics& graphics, const juce::String& title) const;

    /** Points at the bands' centres, joined; bands without a reading are left out. */
    void
    drawLevels (juce::Graphics& graphics, const Measurement::Levels& levels, juce::Colour colour, float width) const;

    /** The line through values at rising frequencies in hertz; those that are not finite are left out. */
    [[nodiscard]] juce::Path curve (std::span<const float> frequencies, std::span<const float> values) const;

    /** A row of the list in the lower left corner. */
    void drawLegend (juce::Graphics& graphics, int row, int rows, const juce::String& text, juce::Colour colour) const;
};
