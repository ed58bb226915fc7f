#include "gui/menu/BurgerMenu.h"

#include "gui/editor/EditorMessages.h"
#include "gui/look/Palette.h"
#include "support/Pictures.h"

#include <gtest/gtest.h>

namespace
{
/** The menu in a parent as wide as a new window's. */
struct Rig
{
    Rig()
    {
        parent.setSize (670, 622);
        parent.addAndMakeVisible (menu);
    }

    juce::Component parent;
    BurgerMenu menu;
};
} // namespace

TEST (BurgerMenuTest, aMessageTakesTheHeightOfItsLines)
{
    EXPECT_EQ (BurgerMenu::messageHeightFor ("One line."), 40);
    EXPECT_EQ (BurgerMenu::messageHeightFor ("One line.\nAnother."), 40);
    EXPECT_EQ (BurgerMenu::messageHeightFor ("One.\nTwo.\nThree."), 60);
    EXPECT_EQ (BurgerMenu::messageHeightFor ("One.\n\nThree.\n\nFive."), 100);
}

TEST (BurgerMenuTest, aMessageStandsAtTheUpperRight)
{
    Rig rig;
    rig.menu.showMessage (BurgerMenu::State::message, "One.\nTwo.\nThree.");
    EXPECT_EQ (rig.menu.getBounds(), juce::Rectangle<int> (670 - 272, 0, 230, 15 + 60));
    EXPECT_EQ (rig.menu.state(), BurgerMenu::State::message);
    EXPECT_EQ (rig.menu.message(), "One.\nTwo.\nThree.");

    rig.menu.layOut (1390);
    EXPECT_EQ (rig.menu.getBounds(), juce::Rectangle<int> (1390 - 272, 0, 230, 75));
}

TEST (BurgerMenuTest, aMessageIsRedAndWithinItsPanel)
{
    for (const auto& text : { EditorMessages::masterLimits(), EditorMessages::bandsOutOfScale() })
    {
        Rig rig;
        rig.menu.showMessage (BurgerMenu::State::message, text);
        const auto picture = Pictures::of (rig.menu, "message-" + text.substring (0, 6));
        const auto red = juce::Colour (Palette::message);
        const auto inside = picture.getBounds().withTrimmedTop (10).withTrimmedBottom (5).reduced (8, 0);
        const auto all = Pictures::count (picture, picture.getBounds(), red, 100);
        EXPECT_GT (all, 100);
        EXPECT_EQ (Pictures::count (picture, inside, red, 100), all) << text;
    }
}
