#include "gui/editor/EditorLayout.h"

#include <algorithm>

EditorLayout EditorLayout::of (int width, int height, int typeWidth, int nameWidth)
{
    EditorLayout layout;
    layout.title = { 6, 12, 90, 15 };
    layout.header = { 100, 10, 290, 20 };
    layout.gainScale = { width - 240, 5, 31, 32 };
    layout.compare = { width - 205, 13, 30, 15 };
    layout.link = { width - 202, 1, 25, 15 };
    layout.burger = { width - 168, 13, 32, 15 };
    layout.outputGain = { width - 130, 11, 31, 32 };
    layout.separator = { width - 103, 8, 2, 22 };
    layout.settings = { width - 96, 4, 30, 30 };
    layout.help = { width - 36, 4, 30, 30 };
    layout.mainWindow = { 5, topBarHeight, width - 10, height - topBarHeight - bottomBarHeight };
    layout.analyse = { 2, height - 40, 27, 27 };
    layout.presetType = { 30, height - 35, typeWidth, 20 };
    layout.presetName = { 32 + typeWidth, height - 33, nameWidth, 16 };
    layout.websiteLink = { width - 121, height - 32, 150, 14 };
    layout.websiteIcon = { width - 151, height - 37, 20, 20 };
    return layout;
}

juce::Rectangle<int> EditorLayout::openingSize (int width, int height, bool minimised)
{
    return { std::clamp (width, minWidth, maxWidth),
             minimised ? minHeight : std::clamp (height, minHeight, maxHeight) };
}
