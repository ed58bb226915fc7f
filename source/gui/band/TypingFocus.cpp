#include "gui/band/TypingFocus.h"

TypingFocus::TypingFocus (juce::Label& labelToServe) : label (labelToServe)
{
    juce::Desktop::getInstance().addFocusChangeListener (this);
}

TypingFocus::~TypingFocus()
{
    juce::Desktop::getInstance().removeFocusChangeListener (this);
    cancelPendingUpdate();
}

/** An editor that loses the keyboard by the framework's own rules is closed by that. */
juce::TextEditor* TypingFocus::editorWithoutKeyboard() const
{
    auto* editor = label.getCurrentTextEditor();
    return editor != nullptr && editor->isShowing() && ! editor->hasKeyboardFocus (true) ? editor : nullptr;
}

void TypingFocus::globalFocusChanged (juce::Component* focused)
{
    if (focused != nullptr && editorWithoutKeyboard() != nullptr)
        triggerAsyncUpdate();
}

void TypingFocus::handleAsyncUpdate()
{
    if (auto* editor = editorWithoutKeyboard())
        editor->grabKeyboardFocus();
}
