#include "gui/room/ScaleSelector.h"

#include "gui/room/RoomMouse.h"

#include <gmock/gmock.h>

#include <vector>

namespace
{
const juce::Rectangle<int> resting { 294, 597, 42, 25 };
}

class ScaleSelectorTest : public testing::Test
{
protected:
    ScaleSelectorTest()
    {
        room.setSize (630, 622);
        room.addAndMakeVisible (selector);
        selector.setRestingBounds (resting);
        selector.onScale = [this] (float scale) { chosen.push_back (scale); };
    }

    void press (juce::Point<float> position) { selector.mouseDown (roomMouse::eventAt (selector, position)); }

    juce::Component room;
    ScaleSelector selector;
    std::vector<float> chosen;
};

TEST_F (ScaleSelectorTest, aClickTakesTheCellThatWasClicked)
{
    for (const auto x : { 5.0f, 15.0f, 26.0f, 37.0f })
    {
        press ({ x, 12.0f });
        selector.mouseUp (roomMouse::eventAt (
            selector, selector.getLocalPoint (&room, resting.getPosition().toFloat()) + juce::Point (x, 12.0f)));
    }

    EXPECT_THAT (chosen, testing::ElementsAre (2.0f, 4.0f, 8.0f, 12.0f));
}

TEST_F (ScaleSelectorTest, aClickOnABorderDoesNothing)
{
    press ({ 21.0f, 12.0f });
    selector.mouseUp (roomMouse::eventAt (selector, { 21.0f, 12.0f }));
    EXPECT_TRUE (chosen.empty());
}

TEST_F (ScaleSelectorTest, underAPressItSpreadsAroundItsCentreAndShrinksOnRelease)
{
    press ({ 21.5f, 12.0f });
    EXPECT_GT (selector.getWidth(), 3 * resting.getWidth());
    EXPECT_EQ (selector.getBounds().getCentre(), resting.getCentre());
    EXPECT_EQ (selector.getHeight(), resting.getHeight());
    selector.mouseUp (roomMouse::eventAt (selector, { 10.0f, 12.0f }));
    EXPECT_EQ (selector.getBounds(), resting);
}

TEST_F (ScaleSelectorTest, afterAMovementTheCellUnderThePointerIsTaken)
{
    press ({ 21.5f, 12.0f });
    const auto start = selector.getLocalBounds().getCentre().toFloat();
    const juce::Point firstCell (10.0f, 12.0f);
    selector.mouseDrag (roomMouse::eventAt (selector, firstCell, start));
    selector.mouseUp (roomMouse::eventAt (selector, firstCell, start));
    EXPECT_THAT (chosen, testing::ElementsAre (2.0f));
}

TEST_F (ScaleSelectorTest, lettingGoOutsideChoosesNothing)
{
    press ({ 21.5f, 12.0f });
    const auto start = selector.getLocalBounds().getCentre().toFloat();
    const juce::Point outside (-30.0f, 12.0f);
    selector.mouseDrag (roomMouse::eventAt (selector, outside, start));
    selector.mouseUp (roomMouse::eventAt (selector, outside, start));
    EXPECT_TRUE (chosen.empty());
}

TEST_F (ScaleSelectorTest, itStaysInsideTheRoom)
{
    selector.setRestingBounds ({ 2, 597, 42, 25 });
    press ({ 5.0f, 12.0f });
    EXPECT_EQ (selector.getX(), 0);
}

TEST_F (ScaleSelectorTest, arrowKeysStepFromScaleToScale)
{
    EXPECT_TRUE (selector.keyPressed (juce::KeyPress (juce::KeyPress::leftKey)));
    EXPECT_TRUE (selector.keyPressed (juce::KeyPress (juce::KeyPress::downKey)));
    EXPECT_TRUE (selector.keyPressed (juce::KeyPress (juce::KeyPress::rightKey)));
    EXPECT_TRUE (selector.keyPressed (juce::KeyPress (juce::KeyPress::rightKey)));
    EXPECT_TRUE (selector.keyPressed (juce::KeyPress (juce::KeyPress::rightKey)));
    EXPECT_FALSE (selector.keyPressed (juce::KeyPress ('x')));
    EXPECT_THAT (chosen, testing::ElementsAre (8.0f, 4.0f, 8.0f, 12.0f, 12.0f));
}

TEST_F (ScaleSelectorTest, aScaleFromElsewhereIsShownAndNotToldBack)
{
    selector.setScale (4.0f);
    EXPECT_TRUE (chosen.empty());
    EXPECT_TRUE (selector.keyPressed (juce::KeyPress (juce::KeyPress::leftKey)));
    EXPECT_THAT (chosen, testing::ElementsAre (2.0f));
}

TEST_F (ScaleSelectorTest, theScaleInUseIsLit)
{
    const auto picture = selector.createComponentSnapshot (selector.getLocalBounds());
    const auto brightnessAt = [&picture] (int x) { return picture.getPixelAt (x, 4).getBrightness(); };
    EXPECT_GT (brightnessAt (37), 0.4f);
    EXPECT_LT (brightnessAt (5), 0.2f);
    EXPECT_LT (brightnessAt (26), 0.2f);
}

TEST_F (ScaleSelectorTest, noTextRunsIntoTheOutline)
{
    // As narrow as in the smallest window.
    selector.setRestingBounds ({ 243, 491, 34, 25 });
    const auto picture = selector.createComponentSnapshot (selector.getLocalBounds());

    for (int y = 0; y < picture.getHeight(); ++y)
        for (const auto x : { 0, picture.getWidth() - 1 })
            EXPECT_LT (picture.getPixelAt (x, y).getBrightness(), 0.4f) << x << ", " << y;
}
