#include "gui/analysis/EditableTextButton.h"

#include "gui/look/VelmoraLookandFeel.h"
#include "gui/room/RoomMouse.h"
#include "support/Messages.h"

#include <gtest/gtest.h>

namespace
{
class EditableTextButtonTest : public testing::Test
{
protected:
    EditableTextButtonTest()
    {
        button.setLookAndFeel (&look);
        button.setSize (200, 24);
        button.setText ("A name", juce::dontSendNotification);
        button.onClick = [this] (EditableTextButton*) { ++clicks; };
    }

    ~EditableTextButtonTest() override { button.setLookAndFeel (nullptr); }

    [[nodiscard]] juce::Colour ground() const { return button.findColour (juce::Label::backgroundColourId); }
    [[nodiscard]] juce::Colour text() const { return button.findColour (juce::Label::textColourId); }

    /** What the framework calls. */
    [[nodiscard]] juce::Component& asComponent() { return button; }

    std::atomic<float> levelMatch { 1.0f };
    VelmoraLookandFeel look { levelMatch };
    EditableTextButton button;
    int clicks = 0;
};
} // namespace

TEST_F (EditableTextButtonTest, coloursTellWhetherItIsSelected)
{
    EXPECT_EQ (ground(), juce::Colour (0xFF1D1D1D));
    EXPECT_EQ (text(), juce::Colour (0xFF565656));
    button.setSelected (true);
    EXPECT_EQ (ground(), juce::Colour (0xFF232323));
    EXPECT_EQ (text(), juce::Colours::white);
    button.setSelected (false);
    EXPECT_EQ (ground(), juce::Colour (0xFF1D1D1D));
    EXPECT_EQ (text(), juce::Colour (0xFF565656));
}

TEST_F (EditableTextButtonTest, textTurnsWhiteUnderThePointer)
{
    const auto event = roomMouse::eventAt (button, { 5.0f, 5.0f });

    for (const auto selected : { false, true })
    {
        button.setSelected (selected);
        button.mouseEnter (event);
        EXPECT_EQ (text(), juce::Colours::white);
        button.mouseExit (event);
        EXPECT_EQ (text(), juce::Colour (selected ? 0xFFFFFFFF : 0xFF565656));
    }
}

TEST_F (EditableTextButtonTest, aClickIsToldWhereItEnds)
{
    button.mouseUp (roomMouse::eventAt (button, { 5.0f, 5.0f }));
    EXPECT_EQ (clicks, 1);
    button.mouseUp (roomMouse::eventAt (button, { 5.0f, 50.0f }, { 5.0f, 5.0f }));
    EXPECT_EQ (clicks, 1);
    EXPECT_FALSE (button.isBeingEdited());
}

TEST_F (EditableTextButtonTest, onlyADoubleClickOpensItForTyping)
{
    button.mouseUp (roomMouse::eventAt (button, { 5.0f, 5.0f }));
    EXPECT_FALSE (button.isBeingEdited());
    asComponent().mouseDoubleClick (roomMouse::eventAt (button, { 5.0f, 5.0f }));
    ASSERT_TRUE (button.isBeingEdited());
    const auto& editor = *button.getCurrentTextEditor();
    EXPECT_EQ (editor.findColour (juce::TextEditor::backgroundColourId), juce::Colour (0xFF00537F));
    EXPECT_EQ (editor.findColour (juce::TextEditor::textColourId), juce::Colours::white);
    button.hideEditor (true);
}

TEST_F (EditableTextButtonTest, leavingTheEditorKeepsWhatWasTyped)
{
    button.showEditor();
    button.getCurrentTextEditor()->setText ("Typed");
    asComponent().inputAttemptWhenModal(); // a click elsewhere
    EXPECT_EQ (button.getText(), "Typed");

    button.showEditor();
    button.getCurrentTextEditor()->setText ("Not kept", false);
    button.getCurrentTextEditor()->keyPressed (juce::KeyPress (juce::KeyPress::escapeKey));
    Messages::deliver();
    EXPECT_FALSE (button.isBeingEdited());
    EXPECT_EQ (button.getText(), "Typed");
}

TEST_F (EditableTextButtonTest, keysSelectAndOpen)
{
    EXPECT_TRUE (button.keyPressed (juce::KeyPress (juce::KeyPress::returnKey)));
    EXPECT_EQ (clicks, 1);
    EXPECT_FALSE (button.keyPressed (juce::KeyPress (juce::KeyPress::spaceKey))) << "the host's";
    EXPECT_TRUE (button.keyPressed (juce::KeyPress (juce::KeyPress::F2Key)));
    EXPECT_TRUE (button.isBeingEdited());
    button.hideEditor (true);
}

TEST_F (EditableTextButtonTest, otherScriptsHaveTheSystemsFont)
{
    for (const auto* text : { "A mix", "\xc3\x9c\x62\x65r M\xc3\xa9lodie", "10 \xe2\x82\xac \xe2\x80\x93 x" })
        EXPECT_EQ (EditableTextButton::fontFor (juce::String::fromUTF8 (text)).getTypefaceName(), "Lato") << text;

    for (const auto* text : { "\xe6\x9b\xb2", "A \xd0\x9f", "\xf0\x9f\x8e\xb5" })
        EXPECT_EQ (EditableTextButton::fontFor (juce::String::fromUTF8 (text)).getTypefaceName(),
                   juce::Font::getDefaultSansSerifFontName())
            << text;

    EXPECT_FLOAT_EQ (EditableTextButton::fontFor ("A").getHeight(), 14.0f);
    EXPECT_FLOAT_EQ (EditableTextButton::fontFor (juce::String::fromUTF8 ("\xe6\x9b\xb2")).getHeight(), 14.0f);

    // And the look and feel draws with it.
    button.setText (juce::String::fromUTF8 ("\xe6\x9b\xb2"), juce::dontSendNotification);
    button.setFont (EditableTextButton::fontFor (button.getText()));
    EXPECT_EQ (look.getLabelFont (button).getTypefaceName(), juce::Font::getDefaultSansSerifFontName());
}

TEST_F (EditableTextButtonTest, bordersOfANarrowOneLeaveRoomForLetters)
{
    EXPECT_EQ (button.getBorderSize(), juce::BorderSize<int> (0, 10, 0, 10));
    button.setSize (21, 24);
    EXPECT_GE (button.getWidth() - button.getBorderSize().getLeftAndRight(), 14);
}
