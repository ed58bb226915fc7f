#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** Pictures of components, made without a display. */
namespace Pictures
{
/** A component as it would be drawn, at a scale of the display. With SOLVANE_PICTURES set to a folder, a picture with a
    name is also left there, to be looked at. */
[[nodiscard]] juce::Image of (juce::Component& component, const juce::String& name = {}, float scale = 1.0f);

/** Leaves a picture as above. */
void keep (const juce::Image& picture, const juce::String& name);

/** How many pixels of an area have this colour, each channel within the tolerance. */
[[nodiscard]] int count (const juce::Image& picture, juce::Rectangle<int> area, juce::Colour colour, int tolerance = 2);

/** How many pixels of an area are not fully transparent. */
[[nodiscard]] int countDrawn (const juce::Image& picture, juce::Rectangle<int> area);
} // namespace Pictures
