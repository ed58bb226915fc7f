#include "gui/editor/DropDownPanels.h"

DropDownPanels::DropDownPanels (juce::Component& windowToUse, MainWindow& main)
    : window (windowToUse), mainWindow (main)
{
}

HoverHold& DropDownPanels::holdOf (Place place) noexcept
{
    return place == Place::outputGainPanel ? holds[0] : holds[1];
}

void DropDownPanels::show (Place place, const juce::Component& button)
{
    auto* panel = mainWindow.component (place);

    if (panel == nullptr)
        return;

    mainWindow.show (place, true);
    holdOf (place).open (button.getBounds(), window.getLocalArea (panel, panel->getLocalBounds()));
}

void DropDownPanels::hide (Place place)
{
    mainWindow.show (place, false);
    holdOf (place).close();
}

void DropDownPanels::followMouse (const juce::MouseEvent& event)
{
    for (auto& hold : holds)
        hold.mouseAt (event.getEventRelativeTo (&window).getPosition(), event.mods.isAnyMouseButtonDown());
}

void DropDownPanels::advance()
{
    for (const auto place : places)
        if (holdOf (place).advance())
            hide (place);
}
