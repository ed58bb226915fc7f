#pragma once

#include "gui/look/TransportPicture.h"

#include <functional>

/** The transport of a reference track: a transparent slider over the waveform, of which the strip at the bottom hears
   the mouse. Its value is the play position, 0 to 1; its name is that of its symbol.

    A click on the symbol moves nothing: what it asks for is to play or to pause. Message thread. */
class TransportControl final : public juce::Slider
{
public:
    TransportControl();

    /** The hand comes down, before it moves anything. */
    std::function<void()> onPress;

    /** The hand has let go where it came down, however long that took. */
    std::function<void()> onClick;

    /** Shows what a click will do. */
    void showPlaying (bool playing);

    bool hitTest (int x, int y) override;
    void mouseDown (const juce::MouseEvent& event) override;
    void mouseDrag (const juce::MouseEvent& event) override;
    void mouseUp (const juce::MouseEvent& event) override;
    bool keyPressed (const juce::KeyPress& key) override;

private:
    bool onSymbol = false;
    bool dragged = false;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (TransportControl)
};
