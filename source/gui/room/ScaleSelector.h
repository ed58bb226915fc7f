#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>

/** Four scales in dB to choose from, on the room's floor.

    It is small while it rests. Under a pressed button it spreads around its centre so that each cell can be read, and
    the cell under the pointer is taken on release; a click without a movement takes the cell that was clicked. The
    keyboard's arrows step from scale to scale. Message thread. */
class ScaleSelector final : public juce::Component, public juce::SettableTooltipClient, private juce::Timer
{
public:
    /** Gets the scale in dB that was chosen by hand. */
    std::function<void (float)> onScale;

    /** The mouse has come over it, or has left it. */
    std::function<void (bool)> onHover;

    ScaleSelector();

    /** Where it stands while it rests. */
    void setRestingBounds (juce::Rectangle<int> bounds);

    /** Shows which scale is in use, by a slide of the highlight when it is another than before. */
    void setScale (float scaleDb);

    void paint (juce::Graphics& graphics) override;
    void mouseEnter (const juce::MouseEvent& event) override;
    void mouseExit (const juce::MouseEvent& event) override;
    void mouseDown (const juce::MouseEvent& event) override;
    void mouseDrag (const juce::MouseEvent& event) override;
    void mouseUp (const juce::MouseEvent& event) override;
    bool keyPressed (const juce::KeyPress& key) override;
    void focusGained (FocusChangeType) override { repaint(); }
    void focusLost (FocusChangeType) override { repaint(); }
    std::unique_ptr<juce::AccessibilityHandler> createAccessibilityHandler() override;

    /** A step of 20 ms. */
    void timerCallback() override;

private:
    void spread();
    void slideTo (int cell);
    void choose (int cell);
    [[nodiscard]] juce::Rectangle<float> cellBounds (float cell) const;
    [[nodiscard]] int textHeight() const;
    [[nodiscard]] bool isSpread() const { return getBounds() != resting; }

    juce::Rectangle<int> resting;
    int selected = 3;

    /** In cells; moves towards `slideEnd`. */
    float highlight = 3.0f;
    float slideStart = 3.0f;
    float slideEnd = 3.0f;
    int slideStep = 0;

    int pressedCell = -1;
    bool movedSincePress = false;
};
