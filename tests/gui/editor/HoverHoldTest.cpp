#include "gui/editor/HoverHold.h"

#include <gtest/gtest.h>

namespace
{
const juce::Rectangle<int> button { 440, 5, 31, 32 };
const juce::Rectangle<int> panel { 330, 42, 230, 70 };

/** Ticks until the panel is to hide; more than enough means never. */
int ticksUntilHidden (HoverHold& hold)
{
    constexpr auto enough = 100;

    for (auto tick = 1; tick <= enough; ++tick)
        if (hold.advance())
            return tick;

    return enough;
}
} // namespace

TEST (HoverHoldTest, staysWhileTheMouseIsOverButtonPanelOrTheGapBetween)
{
    HoverHold hold;

    for (const auto place : { juce::Point<int> (450, 20), juce::Point<int> (450, 39), juce::Point<int> (340, 100) })
    {
        hold.open (button, panel);
        hold.mouseAt (place, false);
        EXPECT_EQ (ticksUntilHidden (hold), 100) << place.x << ", " << place.y;
    }
}

TEST (HoverHoldTest, hidesThreeHundredMillisecondsAfterTheMouseHasLeft)
{
    HoverHold hold;
    hold.open (button, panel);
    hold.mouseAt ({ 100, 300 }, false);
    EXPECT_EQ (ticksUntilHidden (hold), 8); // the first tick of 40 ms that lies beyond 300
    EXPECT_EQ (ticksUntilHidden (hold), 100);
}

TEST (HoverHoldTest, besideTheGapIsOutside)
{
    HoverHold hold;
    hold.open (button, panel);
    hold.mouseAt ({ 400, 39 }, false);
    EXPECT_EQ (ticksUntilHidden (hold), 8);
}

TEST (HoverHoldTest, comingBackInTimeKeepsThePanel)
{
    HoverHold hold;
    hold.open (button, panel);
    hold.mouseAt ({ 100, 300 }, false);

    for (auto tick = 0; tick < 7; ++tick)
        EXPECT_FALSE (hold.advance());

    hold.mouseAt ({ 450, 60 }, false);
    EXPECT_FALSE (hold.advance());
    hold.mouseAt ({ 100, 300 }, false);
    EXPECT_EQ (ticksUntilHidden (hold), 8);
}

TEST (HoverHoldTest, aDragMayLeaveThePanel)
{
    HoverHold hold;
    hold.open (button, panel);
    hold.mouseAt ({ 100, 300 }, true);
    EXPECT_EQ (ticksUntilHidden (hold), 100);
}

TEST (HoverHoldTest, aClosedPanelIsNotHiddenAgain)
{
    HoverHold hold;
    hold.mouseAt ({ 100, 300 }, false);
    EXPECT_EQ (ticksUntilHidden (hold), 100);
    hold.open (button, panel);
    hold.mouseAt ({ 100, 300 }, false);
    hold.close();
    EXPECT_EQ (ticksUntilHidden (hold), 100);
}
