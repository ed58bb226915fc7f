#include "gui/look/SVGButton.h"

#include "gui/look/SVGCheckbox.h"
#include "gui/look/SVGHyperlinkButton.h"
#include "support/Pictures.h"

#include <gtest/gtest.h>

namespace
{
/** A square of 10 in a view box of 20. */
juce::String square (const juce::String& colour)
{
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"20\" height=\"20\" viewBox=\"0 0 20 20\">"
           "<rect x=\"5\" y=\"5\" width=\"10\" height=\"10\" fill=\""
           + colour + "\"/></svg>";
}

const auto white = juce::Colours::white;
const auto red = juce::Colour (0xFFFF0000);
const auto green = juce::Colour (0xFF00FF00);
const auto blue = juce::Colour (0xFF0000FF);

juce::Colour middleOf (juce::Component& component)
{
    return Pictures::of (component).getPixelAt (component.getWidth() / 2, component.getHeight() / 2);
}

juce::MouseEvent mouseOver (juce::Component& component)
{
    const auto now = juce::Time::getCurrentTime();
    const juce::Point<float> middle (10.0f, 10.0f);
    return { juce::Desktop::getInstance().getMainMouseSource(),
             middle,
             juce::ModifierKeys(),
             0.0f,
             0.0f,
             0.0f,
             0.0f,
             0.0f,
             &component,
             &component,
             now,
             middle,
             now,
             1,
             false };
}
} // namespace

TEST (SVGButtonTest, onlyTheKeyboardsWalkDrawsARing)
{
    orvik::SVGButton button ("Test");
    button.setSize (40, 40);
    const auto drawn = [&] { return Pictures::countDrawn (Pictures::of (button), button.getLocalBounds()); };

    button.focusGained (juce::Component::focusChangedDirectly);
    EXPECT_EQ (drawn(), 0);
    button.focusGained (juce::Component::focusChangedByTabKey);
    EXPECT_GT (drawn(), 100);
    button.focusLost (juce::Component::focusChangedByTabKey);
    EXPECT_EQ (drawn(), 0);
}

TEST (SVGButtonTest, anIconKeepsItsPlaceInItsViewBox)
{
    orvik::SVGButton button ("Test");
    button.setImages (square ("#FFFFFF"));
    button.setSize (40, 40);
    const auto picture = Pictures::of (button);

    EXPECT_EQ (Pictures::count (picture, { 10, 10, 20, 20 }, white), 400);
    EXPECT_EQ (Pictures::countDrawn (picture, picture.getBounds()), 400);
}

TEST (SVGButtonTest, anIconIsCentredAndNotStretched)
{
    orvik::SVGButton button ("Test");
    button.setImages (square ("#FFFFFF"));
    button.setSize (60, 20);
    const auto picture = Pictures::of (button);

    EXPECT_EQ (Pictures::count (picture, { 25, 5, 10, 10 }, white), 100);
    EXPECT_EQ (Pictures::countDrawn (picture, picture.getBounds()), 100);
}

TEST (SVGButtonTest, isCalledByItsName)
{
    const orvik::SVGButton button ("Gain Scale");
    EXPECT_EQ (button.getTitle(), "Gain Scale");
    EXPECT_EQ (button.getName(), "Gain Scale");
}

TEST (SVGButtonTest, anUnsetImageIsReplacedByTheNormalOne)
{
    orvik::SVGButton button ("Test");
    button.setSize (20, 20);
    button.setImages (square ("#FFFFFF"), {}, square ("#0000FF"));

    button.setState (juce::Button::buttonOver);
    EXPECT_EQ (middleOf (button), white);
    button.setState (juce::Button::buttonDown);
    EXPECT_EQ (middleOf (button), blue);

    button.setImages (square ("#FFFFFF"), square ("#00FF00"), {});
    button.setState (juce::Button::buttonOver);
    EXPECT_EQ (middleOf (button), green);
    button.setState (juce::Button::buttonDown);
    EXPECT_EQ (middleOf (button), white);
}

TEST (SVGButtonTest, whatIsNoSvgDrawsNothing)
{
    orvik::SVGButton button ("Test");
    button.setSize (20, 20);
    button.setImages ("<svg");
    const auto picture = Pictures::of (button);
    EXPECT_EQ (Pictures::countDrawn (picture, picture.getBounds()), 0);
}

TEST (SVGButtonTest, theToggledStateHasAColourAndAnAlphaOfItsOwn)
{
    orvik::SVGButton button ("Test");
    button.setSize (20, 20);
    button.setImages (square ("#FFFFFF"));
    button.setColours (white, green);
    button.setAlphas (0.8f, 1.0f);
    EXPECT_NEAR (button.getAlpha(), 0.8f, 0.005f);

    button.setToggled (true);
    EXPECT_TRUE (button.isToggled());
    EXPECT_FLOAT_EQ (button.getAlpha(), 1.0f);
    EXPECT_EQ (middleOf (button), green);

    button.setToggled (false);
    EXPECT_FALSE (button.isToggled());
    EXPECT_NEAR (button.getAlpha(), 0.8f, 0.005f);
    button.setAlphas (1.0f, 1.0f);
    EXPECT_EQ (middleOf (button), white);
}

TEST (SVGButtonTest, newImagesTakeTheColourOfTheState)
{
    orvik::SVGButton button ("Test");
    button.setSize (20, 20);
    button.setImages (square ("#FFFFFF"));
    button.setColours (white, red);
    button.setToggled (true);
    button.setImages (square ("#FFFFFF"));
    EXPECT_EQ (middleOf (button), red);
}

TEST (SVGButtonTest, aSecondColourInAnIconStaysAsItIs)
{
    orvik::SVGButton button ("Test");
    button.setSize (20, 20);
    button.setImages (square ("#0000FF"));
    button.setColours (red, green);
    EXPECT_EQ (middleOf (button), blue);
}

TEST (SVGButtonTest, fadesTowardsFullAlphaAndBack)
{
    orvik::SVGButton button ("Test");
    button.setAlphas (0.7f, 1.0f);

    // It is on no screen, so the mouse does not brighten it.
    button.mouseEnter (mouseOver (button));
    button.advanceFade();
    EXPECT_NEAR (button.getAlpha(), 0.7f, 0.005f);

    button.setAlpha (1.0f);
    button.mouseExit (mouseOver (button));
    button.advanceFade();
    EXPECT_GT (button.getAlpha(), 0.7f);
    EXPECT_LT (button.getAlpha(), 1.0f);

    for (auto frame = 0; frame < 20; ++frame)
        button.advanceFade();

    EXPECT_NEAR (button.getAlpha(), 0.7f, 0.005f);
}

TEST (SVGButtonTest, aToggledButtonDoesNotFade)
{
    orvik::SVGButton button ("Test");
    button.setAlphas (0.7f, 0.9f);
    button.setToggled (true);
    button.mouseExit (mouseOver (button));

    for (auto frame = 0; frame < 20; ++frame)
        button.advanceFade();

    EXPECT_NEAR (button.getAlpha(), 0.9f, 0.005f);
}

//======================================================================================================================
TEST (SVGCheckboxTest, eachStateHasItsImages)
{
    orvik::SVGCheckbox box ("Test");
    box.setSize (20, 20);
    box.setImages (square ("#FF0000"), square ("#00FF00"), square ("#0000FF"), square ("#FFFFFF"));

    EXPECT_EQ (middleOf (box), red);
    box.setState (juce::Button::buttonDown);
    EXPECT_EQ (middleOf (box), green);

    box.setState (juce::Button::buttonNormal);
    box.setToggleState (true, juce::dontSendNotification);
    EXPECT_EQ (middleOf (box), blue);
    box.setState (juce::Button::buttonDown);
    EXPECT_EQ (middleOf (box), white);
}

TEST (SVGCheckboxTest, aMissingPressedImageIsTheStatesOwn)
{
    orvik::SVGCheckbox box ("Test");
    box.setSize (20, 20);
    box.setImages (square ("#FF0000"), {}, square ("#0000FF"), {});
    box.setState (juce::Button::buttonDown);
    EXPECT_EQ (middleOf (box), red);
    box.setToggleState (true, juce::dontSendNotification);
    EXPECT_EQ (middleOf (box), blue);
}

TEST (SVGCheckboxTest, aClickTogglesIt)
{
    orvik::SVGCheckbox box ("Test");
    EXPECT_TRUE (box.getClickingTogglesState());
    EXPECT_FALSE (box.getToggleState());
}

//======================================================================================================================
TEST (SVGHyperlinkButtonTest, aClickOpensTheAddress)
{
    orvik::SVGHyperlinkButton link ("User Manual", juce::URL ("https://help.solvane.example/pages/solvane-manual"));
    juce::String opened;
    link.openAddress = [&opened] (const juce::URL& url) { opened = url.toString (true); };
    link.clicked();
    EXPECT_EQ (opened, "https://help.solvane.example/pages/solvane-manual");
}

TEST (SVGHyperlinkButtonTest, anEmptyAddressOpensNothing)
{
    orvik::SVGHyperlinkButton link ("User Manual", {});
    auto opened = false;
    link.openAddress = [&opened] (const juce::URL&) { opened = true; };
    link.clicked();
    EXPECT_FALSE (opened);
}

TEST (SVGHyperlinkButtonTest, withoutAnIconItShowsItsTextAtTheLeft)
{
    orvik::SVGHyperlinkButton link ("Support", {});
    link.setSize (200, 20);
    const auto picture = Pictures::of (link);
    EXPECT_GT (Pictures::countDrawn (picture, { 0, 0, 60, 20 }), 50);
    EXPECT_EQ (Pictures::countDrawn (picture, { 100, 0, 100, 20 }), 0);
}

TEST (SVGHyperlinkButtonTest, withAnIconItShowsNoText)
{
    orvik::SVGHyperlinkButton link ("Support", {});
    link.setImages (square ("#FFFFFF"));
    link.setSize (200, 20);
    const auto picture = Pictures::of (link);
    EXPECT_EQ (Pictures::countDrawn (picture, { 0, 0, 60, 20 }), 0);
    EXPECT_EQ (Pictures::count (picture, { 95, 5, 10, 10 }, white), 100);
}
