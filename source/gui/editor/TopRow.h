#pragma once

#include "gui/editor/EditorLayout.h"
#include "gui/look/SVGButton.h"
#include "gui/look/SVGCheckbox.h"

/** The window's icon buttons: those of the top row, and the one that opens the analysis at the bottom left. Names,
   tips, images and places; what a click does is the editor's. Message thread. */
class TopRow
{
public:
    TopRow();

    void addTo (juce::Component& parent);
    void place (const EditorLayout& layout);

    /** Every button, from left to right. */
    [[nodiscard]] std::array<juce::Button*, 10> all();

    /** Takes the state off the buttons that open a window. */
    void clearToggles();

    enum class OutputState
    {
        plain,
        warning,
        bypassed
    };

    void showOutput (OutputState state);

    /** Which side of the comparison the settings are on. */
    void showComparison (bool aSelected);

    /** Whether the gain scale changes anything. */
    void showGainScaleInUse (bool inUse);

    /** Whether the chosen target is one of the user's own. */
    void showUserTarget (bool chosen);

    /** What is known about updates: nothing yet, that there is none, or that there is one. */
    enum class UpdateState
    {
        unknown,
        none,
        available
    };

    void showUpdate (UpdateState state);

    /** Whether the name at the left hears of the pointer, because there is something to tell. */
    void listenAtTitle (bool listens);

    orvik::SVGButton titleButton { "Title" };
    orvik::SVGButton gainScaleButton { "Gain Scale" };
    orvik::SVGCheckbox compareButton { "Compare" };
    orvik::SVGButton linkButton { "Link" };
    orvik::SVGButton unlinkButton { "Link" };
    orvik::SVGButton burgerButton { "Burger" };
    orvik::SVGButton outputGainButton { "Output Gain" };
    orvik::SVGButton settingsButton { "Settings" };
    orvik::SVGButton helpButton { "Help" };
    orvik::SVGButton analyseButton { "Analyse" };
};
