#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** Mouse events as a component gets them, without a display. */
namespace roomMouse
{
/** An event at a position in the component, of a press that began at another. */
[[nodiscard]] inline juce::MouseEvent eventAt (juce::Component& component,
                                               juce::Point<float> position,
                                               juce::Point<float> pressedAt,
                                               juce::ModifierKeys modifiers = {},
                                               int clickCount = 1)
{
    const auto now = juce::Time();
    return { juce::Desktop::getInstance().getMainMouseSource(),
             position,
             modifiers,
             juce::MouseInputSource::defaultPressure,
             juce::MouseInputSource::defaultOrientation,
             juce::MouseInputSource::defaultRotation,
             juce::MouseInputSource::defaultTiltX,
             juce::MouseInputSource::defaultTiltY,
             &component,
             &component,
             now,
             pressedAt,
             now,
             clickCount,
             position != pressedAt };
}

[[nodiscard]] inline juce::MouseEvent
eventAt (juce::Component& component, juce::Point<float> position, juce::ModifierKeys modifiers = {})
{
    return eventAt (component, position, position, modifiers);
}
} // namespace roomMouse
