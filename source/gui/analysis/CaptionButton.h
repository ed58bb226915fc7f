#pragma once

#include "gui/look/SVGButton.h"

/** An icon button with a text of the interface's font in it. Without an icon it has a frame. Message thread. */
class CaptionButton final : public orvik::SVGButton
{
public:
    /** @param name what the button is called; the text is shown, and said by a screen reader */
    CaptionButton (const juce::String& name, const juce::String& text);

    /** Has an icon in place of the frame.
        @param caption where the text stands, in pixels of the button */
    void setPicture (const juce::String& svg, juce::Rectangle<int> caption);

    void paintButton (juce::Graphics& g, bool over, bool down) override;

private:
    void drawFrame (juce::Graphics& g, bool over, bool down) const;

    const juce::String text;
    juce::Rectangle<int> captionArea;
    bool framed = true;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (CaptionButton)
};
