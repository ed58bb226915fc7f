#pragma once

#include "gui/band/TypingFocus.h"

#include <functional>

/** A button that is a text: a click selects, a double click opens the text for typing, and whatever ends the typing but
    Escape keeps what was typed. With the keyboard, Enter selects and F2 opens. Message thread. */
class EditableTextButton final : public juce::Label
{
public:
    EditableTextButton();

    /** A click, also each of a double click. */
    std::function<void (EditableTextButton*)> onClick;

    void setSelected (bool shouldBeSelected);
    [[nodiscard]] bool isSelected() const noexcept { return selected; }

    /** The font for a text: the interface's own where it has the characters, else the system's. */
    [[nodiscard]] static juce::Font fontFor (const juce::String& text);

    void resized() override;
    void mouseEnter (const juce::MouseEvent& event) override;
    void mouseExit (const juce::MouseEvent& event) override;
    void mouseUp (const juce::MouseEvent& event) override;
    bool keyPressed (const juce::KeyPress& key) override;
    void focusGained (FocusChangeType cause) override;
    void focusLost (FocusChangeType cause) override;
    void paint (juce::Graphics& g) override;

protected:
    juce::TextEditor* createEditorComponent() override;
    void textWasChanged() override;

private:
    void showColours (bool pointed);

    bool selected = false;
    bool focusShown = false;
    const juce::Colour unselectedColour;
    const juce::Colour selectedColour;
    TypingFocus typingFocus { *this };

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (EditableTextButton)
};
