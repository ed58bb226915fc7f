#include "gui/editor/HoverHold.h"

void HoverHold::open (juce::Rectangle<int> button, juce::Rectangle<int> panel)
{
    buttonArea = button;
    panelArea = panel;

    // As wide as the button, from its upper edge down into the panel.
    wayBetween = button.withBottom (juce::jmax (button.getBottom(), panel.getY()));
    isOpen = true;
    inside = true;
    ticksOutside = 0;
}

bool HoverHold::contains (juce::Point<int> position) const
{
    return buttonArea.contains (position) || panelArea.contains (position) || wayBetween.contains (position);
}

void HoverHold::mouseAt (juce::Point<int> position, bool buttonDown)
{
    inside = buttonDown || contains (position);

    if (inside)
        ticksOutside = 0;
}

bool HoverHold::advance() noexcept
{
    if (! isOpen || inside || ++ticksOutside < graceTicks)
        return false;

    isOpen = false;
    return true;
}
