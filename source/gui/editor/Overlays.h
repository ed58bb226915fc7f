#pragma once

#include "core/model/InterfaceState.h"
#include "gui/editor/EditorClock.h"
#include "gui/editor/MainWindow.h"
#include "gui/editor/TopRow.h"

/** What lies over the room one at a time: the settings, the help, and the burger menu's panel with its messages. Keeps
    the model's word on what is open in step with what is shown. Message thread. */
class Overlays
{
public:
    /** All outlive this object. */
    Overlays (MainWindow& main, TopRow& buttons, InterfaceState& state, EditorClock& clock);

    /** Called whenever the settings have been closed, in whatever way. */
    std::function<void()> onSettingsClosed;

    /** What a click on the button of settings or help does; nothing while there is no such window. */
    void toggle (orvik::SVGButton& button, MainWindow::Place place);

    /** Closes settings and help. */
    void closeWindows();

    /** Closes them, and takes the state off their buttons. */
    void closeWindowsAndButtons();

    /** Shows a text in the menu's panel for eight seconds. */
    void showMessage (const juce::String& text);
    void hideMenu();

    /** Opens the menu with its commands. */
    void showMenu();

    /** Opens the menu's panel with the offer of smart bands alone. */
    void offerSmartBands();

    /** The menu's panel is open with a message in it. */
    [[nodiscard]] bool messageShowing() const;

    /** The menu's panel is open with its commands. */
    [[nodiscard]] bool menuShowing() const;

    /** One tick of the editor's timer: a message goes when its time is over. */
    void advance();

private:
    void openMenu();
    [[nodiscard]] bool shows (BurgerMenu::State wanted) const;

    MainWindow& mainWindow;
    TopRow& topRow;
    InterfaceState& state;
    EditorClock& clock;
};
