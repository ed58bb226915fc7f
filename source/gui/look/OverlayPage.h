#pragma once

#include "gui/look/SVGButton.h"

/** A page that lies over the room: a ground with a frame, a title, and "Close", which sends the page's word to whoever
    listens and hides nothing by itself. Where the window is smaller than the page, the frame stays inside the window.
    Message thread. */
class OverlayPage : public juce::Component, public juce::Button::Listener, public juce::ActionBroadcaster
{
public:
    static constexpr int pageWidth = 600;
    static constexpr int pageHeight = 510;

    /** @param closingWord what is broadcast on "Close" */
    OverlayPage (const juce::String& title, int titleWidth, juce::String closingWord);

    void paint (juce::Graphics& g) override;
    void moved() override { repaint(); }
    void buttonClicked (juce::Button* button) override;

    [[nodiscard]] juce::Button& close() noexcept { return closeButton; }

protected:
    /** Puts a line of text on the page. */
    void addText (juce::Label& label, const juce::String& text, juce::Rectangle<int> bounds);

private:
    const juce::String word;
    juce::Label titleLabel;
    orvik::SVGButton closeButton { "Close" };

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (OverlayPage)
};
