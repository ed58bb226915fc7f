#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** Red text in the menu's panel, whose lines are spread evenly around the panel's middle. Message thread. */
class MessageLabel final : public juce::Label
{
public:
    MessageLabel();

    /** How high the label is for a text: 20 pixels a wrapped line, 40 at least. */
    [[nodiscard]] static int heightFor (const juce::String& text);

    void paint (juce::Graphics& g) override;
};
