#pragma once

#include <juce_graphics/juce_graphics.h>

#include <array>

/** Where the menu's panel and everything in it stands, in pixels, and what of it can be used. What is not shown has an
    empty rectangle. Plain arithmetic: it knows no component. */
struct BurgerMenuLayout
{
    enum class State
    {
        smartBands = 0, ///< the offer of smart bands alone
        menu = 1,
        message = 2
    };

    /** What is known when the panel is laid out. */
    struct Situation
    {
        State state = State::menu;

        /** Of the state message. */
        int messageHeight = 0;

        bool transportRuns = false;

        /** The chosen preset is one, and what was measured may be compared with it. */
        bool targetShown = false;
        bool smartBandsReady = false;
        bool anyBandActive = false;
        bool masterMode = false;
        bool canUseMasterMode = true;
        double sampleRate = 0.0;
    };

    using Area = juce::Rectangle<int>;

    static constexpr int panelWidth = 230;
    static constexpr int widePanelWidth = 311; ///< with the row of numbers
    static constexpr int left = 17;
    static constexpr int buttonWidth = 196;

    [[nodiscard]] static BurgerMenuLayout of (const Situation& situation);

    /** The panel in a parent, of which only the width matters. */
    [[nodiscard]] Area panelIn (int parentWidth) const;

    int width = panelWidth;
    int height = 0;

    Area message;
    Area phaseLabel, phaseButton, modeLabel, modeButton;
    Area resetTargets, addSmartBands, deleteAllBands;
    Area addBandsLabel;
    std::array<Area, 10> numbers {};

    bool phaseEnabled = true;
    bool modeEnabled = true;
};
