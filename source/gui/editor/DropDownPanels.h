#pragma once

#include "gui/editor/HoverHold.h"
#include "gui/editor/MainWindow.h"

/** The output gain and gain scale panels, which open below their buttons while the mouse is there. A panel that does
    not exist stays closed. Positions are pixels of the window. Message thread. */
class DropDownPanels
{
public:
    using Place = MainWindow::Place;

    /** @param main holds the panels; both outlive this object */
    DropDownPanels (juce::Component& window, MainWindow& main);

    /** Opens a panel below its button. */
    void show (Place place, const juce::Component& button);
    void hide (Place place);

    void followMouse (const juce::MouseEvent& event);

    /** One tick of the editor's timer: closes what the mouse has left for long enough. */
    void advance();

private:
    static constexpr std::array places { Place::outputGainPanel, Place::gainScalePanel };

    [[nodiscard]] HoverHold& holdOf (Place place) noexcept;

    juce::Component& window;
    MainWindow& mainWindow;
    std::array<HoverHold, places.size()> holds;
};
