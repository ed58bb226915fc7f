#pragma once

#include <juce_graphics/juce_graphics.h>

/** Keeps a panel open while the mouse is over its button, over the panel, or on the way from one to the other, and for
   a moment after it has left. Positions are pixels of one and the same component. */
class HoverHold
{
public:
    /** How long a panel stays after the mouse has left: 300 ms in ticks of the editor's timer, rounded up. */
    static constexpr int graceTicks = 8;

    /** The panel has opened below its button. */
    void open (juce::Rectangle<int> button, juce::Rectangle<int> panel);

    /** The panel was closed, by whomever. */
    void close() noexcept { isOpen = false; }

    /** The mouse is at a position; with a button held down it counts as inside, wherever it is. */
    void mouseAt (juce::Point<int> position, bool buttonDown);

    /** One tick of the editor's timer; true when the panel's time is over. */
    [[nodiscard]] bool advance() noexcept;

private:
    [[nodiscard]] bool contains (juce::Point<int> position) const;

    juce::Rectangle<int> buttonArea, panelArea, wayBetween;
    int ticksOutside = 0;
    bool isOpen = false;
    bool inside = false;
};
