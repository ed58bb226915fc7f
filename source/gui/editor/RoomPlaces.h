#pragma once

#include "gui/editor/MainWindow.h"
#include "services/WebAddresses.h"

class HelpWindow;

/** What opens over the room, made and put into its places. Message thread. */
namespace RoomPlaces
{
/** Makes the pages of help and settings, the analysis window, and the panels below their buttons.

    @param words    hears what a page says when it is closed
    @param pointer  hears of the mouse over the panels and their sliders
    @returns the page of help, which `main` owns */
HelpWindow& fill (MainWindow& main,
                  VelmoraAudioProcessor& processor,
                  const WebHosts& hosts,
                  juce::ActionListener& words,
                  juce::MouseListener& pointer);
} // namespace RoomPlaces
