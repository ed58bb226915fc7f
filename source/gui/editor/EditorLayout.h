#pragma once

#include <juce_graphics/juce_graphics.h>

/** Where everything stands in the window, in pixels. A plain computation: it knows no component. */
struct EditorLayout
{
    static constexpr int minWidth = 570;
    static constexpr int maxWidth = 2000;
    static constexpr int minHeight = 606;
    static constexpr int maxHeight = 2000;
    static constexpr int topBarHeight = 42;
    static constexpr int bottomBarHeight = 48;

    /** @param typeWidth, nameWidth widths of the two preset texts, rounded up */
    [[nodiscard]] static EditorLayout of (int width, int height, int typeWidth, int nameWidth);

    /** The size with which a window opens.
        @param minimised opens at the least height, whatever the height was */
    [[nodiscard]] static juce::Rectangle<int> openingSize (int width, int height, bool minimised);

    juce::Rectangle<int> title, header, gainScale, compare, link, burger, outputGain, settings, help;
    juce::Rectangle<int> separator;
    juce::Rectangle<int> mainWindow;
    juce::Rectangle<int> analyse, presetType, presetName, websiteLink, websiteIcon;
};
