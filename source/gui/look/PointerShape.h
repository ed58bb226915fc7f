#pragma once

#include <juce_graphics/juce_graphics.h>

/** The bubble of a label that points at the frequency scale: a rounded box with a tip on the side that the label's id
    names, in the middle of that side, or at its upper or lower end where the id holds "Top" or "Bottom". */
class PointerShape
{
public:
    static constexpr float tipLength = 5.0f;

    /** Whether an id is one of "left", "right" and both with "Top" or "Bottom". */
    [[nodiscard]] static bool isPointer (const juce::String& id);

    PointerShape (const juce::String& id, juce::Rectangle<float> bounds);

    [[nodiscard]] const juce::Path& outline() const noexcept { return path; }

    /** The box without the tip, where the text stands. */
    [[nodiscard]] juce::Rectangle<float> box() const noexcept { return textBox; }

    /** The tip's point. */
    [[nodiscard]] juce::Point<float> tip() const noexcept { return tipPoint; }

private:
    juce::Rectangle<float> textBox;
    juce::Point<float> tipPoint;
    juce::Path path;
};
