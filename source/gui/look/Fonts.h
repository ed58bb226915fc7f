#pragma once

#include <juce_graphics/juce_graphics.h>

/** The interface's two typefaces, read from the program itself.

    They are shared by everything that draws and go when the last holder goes; a look and feel holds them for as long as
    its instance lives, so that reopening a window reads nothing again. Other scripts fall back to the system's sans
    serif. Message thread. */
class Typefaces
{
public:
    Typefaces();

    const juce::Typeface::Ptr regular;
    const juce::Typeface::Ptr bold;
};

/** Fonts of the interface by height in pixels, from the descent to the ascent. */
namespace Fonts
{
[[nodiscard]] juce::Font regular (float height);
[[nodiscard]] juce::Font bold (float height);

/** A text's width, rounded up, so that a label of that width shows it whole. */
[[nodiscard]] int widthOf (const juce::Font& font, const juce::String& text);
} // namespace Fonts
