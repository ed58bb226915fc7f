#include "gui/editor/Overlays.h"

#include <utility>

using Place = MainWindow::Place;

Overlays::Overlays (MainWindow& main, TopRow& buttons, InterfaceState& interfaceState, EditorClock& editorClock)
    : mainWindow (main), topRow (buttons), state (interfaceState), clock (editorClock)
{
}

void Overlays::toggle (orvik::SVGButton& button, Place place)
{
    if (! mainWindow.has (place))
        return;

    const auto turnOn = ! button.isToggled();
    closeWindowsAndButtons();
    button.setToggleState (turnOn, juce::dontSendNotification);
    button.setToggled (turnOn);

    if (! turnOn)
        return;

    mainWindow.show (place, true);
    (place == Place::settingsWindow ? state.settingsOpen : state.helpOpen) = true;
    hideMenu();
}

void Overlays::closeWindows()
{
    mainWindow.show (Place::helpWindow, false);
    mainWindow.show (Place::settingsWindow, false);
    const auto settingsWereOpen = std::exchange (state.settingsOpen, false);
    state.helpOpen = false;

    if (settingsWereOpen && onSettingsClosed)
        onSettingsClosed();
}

void Overlays::closeWindowsAndButtons()
{
    closeWindows();
    topRow.clearToggles();
}

void Overlays::showMessage (const juce::String& text)
{
    closeWindows();
    hideMenu();
    mainWindow.burgerMenu().showMessage (BurgerMenu::State::message, text);
    openMenu();
}

void Overlays::showMenu()
{
    closeWindowsAndButtons();
    hideMenu();
    mainWindow.burgerMenu().showCommands (BurgerMenu::State::menu);
    openMenu();
}

void Overlays::offerSmartBands()
{
    mainWindow.burgerMenu().showCommands (BurgerMenu::State::smartBands);
    openMenu();
}

void Overlays::openMenu()
{
    auto& menu = mainWindow.burgerMenu();
    menu.toFront (false);
    menu.setVisible (true);
    state.bandsPanelOpen = true;
}

void Overlays::hideMenu()
{
    mainWindow.burgerMenu().setVisible (false);
    state.bandsPanelOpen = false;
    clock.restartMessage();
}

bool Overlays::shows (BurgerMenu::State wanted) const
{
    return state.bandsPanelOpen && mainWindow.burgerMenu().state() == wanted;
}

bool Overlays::messageShowing() const
{
    return shows (BurgerMenu::State::message);
}

bool Overlays::menuShowing() const
{
    return shows (BurgerMenu::State::menu);
}

void Overlays::advance()
{
    mainWindow.burgerMenu().serveChanges();

    if (messageShowing() && clock.advanceMessage())
        hideMenu();
}
