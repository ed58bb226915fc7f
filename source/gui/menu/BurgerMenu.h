#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** The panel below the burger button. It carries the room's messages.

    Message thread. */
class BurgerMenu final : public juce::Component
{
public:
    enum class State
    {
        smartBands = 0,
        menu = 1,
        message = 2
    };

    /** Where the panel stands in its parent, of which only the width matters: from its right edge, at the top. */
    static constexpr int distanceFromRight = 272;
    static constexpr int panelWidth = 230;

    BurgerMenu();

    /** Shows a text instead of commands. The panel takes the height that the text needs. */
    void showMessage (State kind, const juce::String& text);

    [[nodiscard]] State state() const noexcept { return currentState; }
    [[nodiscard]] const juce::String& message() const noexcept { return messageText; }

    /** Takes bounds for a parent of this width. */
    void layOut (int parentWidth);

    /** How high a message's label is: 20 pixels a wrapped line, 40 at least. */
    [[nodiscard]] static int messageHeightFor (const juce::String& text);

    void paint (juce::Graphics& g) override;

private:
    /** Red text whose lines are spread evenly around the middle of the panel. */
    class MessageLabel final : public juce::Label
    {
    public:
        MessageLabel();
        void paint (juce::Graphics& g) override;
    };

    MessageLabel messageLabel;
    State currentState = State::menu;
    juce::String messageText;
    int messageHeight = 0;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (BurgerMenu)
};
