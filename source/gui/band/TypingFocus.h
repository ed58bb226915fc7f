#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** Keeps the keyboard at a label's open text editor.

    Where windows are activated by a click, the news of that comes after the click itself has opened the editor, and the
    framework then gives the keyboard to who had it before: the editor would stand open and hear nothing.
    Message thread. */
class TypingFocus final : private juce::FocusChangeListener, private juce::AsyncUpdater
{
public:
    /** @param label outlives this object */
    explicit TypingFocus (juce::Label& label);
    ~TypingFocus() override;

private:
    void globalFocusChanged (juce::Component* focused) override;
    void handleAsyncUpdate() override;
    [[nodiscard]] juce::TextEditor* editorWithoutKeyboard() const;

    juce::Label& label;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (TypingFocus)
};
