#pragma once

#include <juce_graphics/juce_graphics.h>

/** The ground of what drops down from the top bar: a rounded box with a tip at its upper edge that points to the button
    it belongs to. */
namespace PanelShape
{
/** How far the box stands below the tip's point, in pixels. */
inline constexpr float tipHeight = 6.0f;

/** @param tipX where the tip points, in pixels from the left edge of the panel */
void draw (juce::Graphics& g, juce::Rectangle<int> bounds, float tipX);

/** The ground of a whole page over the room: the same box without a tip. */
void drawPage (juce::Graphics& g, juce::Rectangle<int> bounds);
} // namespace PanelShape
