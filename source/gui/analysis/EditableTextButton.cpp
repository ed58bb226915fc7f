#include "gui/analysis/EditableTextButton.h"

#include "gui/look/Fonts.h"
#include "gui/look/Palette.h"

#include <algorithm>

namespace
{
constexpr float textHeight = 14.0f;
constexpr int usualBorder = 10;

/** So much of a narrow button goes to each border. */
constexpr int borderShare = 6;

/** Latin letters, punctuation and signs of currency. */
bool isInOwnFont (juce::juce_wchar character)
{
    return character < 0x24F || (character >= 0x2000 && character <= 0x20CF);
}
} // namespace

EditableTextButton::EditableTextButton()
    : juce::Label ("track"), unselectedColour (Palette::trackGround), selectedColour (Palette::selectedRow)
{
    setJustificationType (juce::Justification::centred);
    setMinimumHorizontalScale (1.0f);
    setEditable (false, true, false);
    setWantsKeyboardFocus (true);
    setMouseClickGrabsKeyboardFocus (false);
    setFont (fontFor ({}));
    setColour (backgroundWhenEditingColourId, juce::Colour (Palette::rowTyping));
    setColour (textWhenEditingColourId, juce::Colour (Palette::text));
    setColour (outlineWhenEditingColourId, juce::Colours::transparentBlack);
    setColour (juce::TextEditor::focusedOutlineColourId, juce::Colours::transparentBlack);
    showColours (false);
}

juce::Font EditableTextButton::fontFor (const juce::String& text)
{
    for (auto character = text.getCharPointer(); ! character.isEmpty(); ++character)
        if (! isInOwnFont (*character))
            return { juce::Font::getDefaultSansSerifFontName(), textHeight, juce::Font::plain };

    return Fonts::regular (textHeight);
}

juce::TextEditor* EditableTextButton::createEditorComponent()
{
    auto* made = Label::createEditorComponent();
    made->setJustification (juce::Justification::centred);
    return made;
}

void EditableTextButton::textWasChanged()
{
    setFont (fontFor (getText()));
}

void EditableTextButton::setSelected (bool shouldBeSelected)
{
    selected = shouldBeSelected;
    showColours (false);
}

void EditableTextButton::showColours (bool pointed)
{
    setColour (backgroundColourId, selected ? selectedColour : unselectedColour);
    setColour (textColourId, juce::Colour (selected || pointed ? Palette::text : Palette::rowText));
}

void EditableTextButton::resized()
{
    const auto side = std::clamp (getWidth() / borderShare, 0, usualBorder);
    setBorderSize ({ 0, side, 0, side });
    Label::resized();
}

void EditableTextButton::mouseEnter (const juce::MouseEvent&)
{
    showColours (true);
}

void EditableTextButton::mouseExit (const juce::MouseEvent&)
{
    showColours (false);
}

void EditableTextButton::mouseUp (const juce::MouseEvent& event)
{
    Label::mouseUp (event);

    if (getLocalBounds().contains (event.getPosition()) && onClick)
        onClick (this);
}

bool EditableTextButton::keyPressed (const juce::KeyPress& key)
{
    if (key == juce::KeyPress::F2Key)
    {
        showEditor();
        return true;
    }

    if (key != juce::KeyPress::returnKey || ! onClick)
        return false;

    onClick (this);
    return true;
}

void EditableTextButton::focusGained (FocusChangeType cause)
{
    focusShown = cause == focusChangedByTabKey;
    repaint();
}

void EditableTextButton::focusLost (FocusChangeType)
{
    focusShown = false;
    repaint();
}

void EditableTextButton::paint (juce::Graphics& g)
{
    Label::paint (g);

    if (! focusShown)
        return;

    g.setColour (juce::Colour (Palette::focusRing));
    g.drawRect (getLocalBounds());
}
