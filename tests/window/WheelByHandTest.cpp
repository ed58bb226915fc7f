#include "window/HandTest.h"
#include "window/Preferences.h"

namespace
{
const HungBand middle { 3910.0 };
constexpr int left = 120;
constexpr int body = 300;
constexpr auto gain = "Band 1 Gain";

class WheelByHandTest : public HandTest
{
protected:
    /** Whether the wheel moves the gain of a band, by a notch away from the user. */
    bool turns (const std::string& parameterName, int column, int row)
    {
        const auto before = window.normalised (parameterName);
        wheel (column, row, 1);
        idleFor (300);
        return window.normalised (parameterName) != before;
    }
};

// The display's notch is 50 / 256 of the framework's measure, a fifth of which is the part of the room that the band
// goes.
TEST_F (WheelByHandTest, notchPushesTheBandAway)
{
    hangAndSee (1, middle);
    wheel (left, body, 1);
    EXPECT_TRUE (comesTo (gain, -0.9)) << window.text (gain);
    idleFor (200);
    const auto heard = told (gain);
    EXPECT_THAT (heard.changes, testing::ElementsAre (-0.2, -0.5, -0.7, -0.9)) << "a quarter of the way each 20 ms";
    EXPECT_EQ (heard.begins, 1);
    EXPECT_EQ (heard.ends, 1);
}

TEST_F (WheelByHandTest, notchesAddUp)
{
    hangAndSee (1, middle);
    wheel (left, body, -3);
    EXPECT_TRUE (comesTo (gain, 2.8)) << window.text (gain);
    wheel (left, body, -20);
    EXPECT_TRUE (comesTo (gain, 12.0)) << window.text (gain);
    EXPECT_EQ (window.figure ("Band 1 Frequency"), 3910.0);
    EXPECT_EQ (window.figure ("Band 1 Q"), 1.0);
}

TEST_F (WheelByHandTest, masterStopsTheWheelAtItsLimit)
{
    window.setNormalised ("Mix/Master Mode", 0.0f);
    hangAndSee (1, middle);
    wheel (left, body, 9);
    EXPECT_TRUE (comesTo (gain, -4.0)) << window.text (gain);
    idleFor (200);
    EXPECT_EQ (window.figure (gain), -4.0);
}

TEST_F (WheelByHandTest, modifiersLeaveTheWheelAsItIs)
{
    for (const auto* modifier : { "Control_L", "Shift_L", "Alt_L" })
    {
        hang (window, 1, middle);
        ASSERT_TRUE (window.eventually ([this] { return showsLine (1, 255); }));
        window.keyDown (modifier);
        wheel (left, body, 1);
        EXPECT_TRUE (comesTo (gain, -0.9)) << modifier << ": " << window.text (gain);
        window.keyUp (modifier);
        idleFor (200);
    }
}

TEST_F (WheelByHandTest, turnsTheBandInFront)
{
    hangAndSee (2, { 1200.0 });
    hangAndSee (1, { 1000.0, 6.0 });
    wheel (100, 380, 1);
    EXPECT_TRUE (comesTo (gain, 5.1)) << window.text (gain);
    EXPECT_EQ (window.figure ("Band 2 Gain"), 0.0);
}

TEST_F (WheelByHandTest, reachesAHiddenBandWithCtrl)
{
    reachBehindWithCtrl();
    wheel (100, hiddenLine + 1, 1);
    EXPECT_TRUE (comesTo ("Band 2 Gain", -0.9)) << window.text ("Band 2 Gain");
    window.keyUp ("Control_L");
    EXPECT_EQ (window.figure (gain), 6.0);
}

TEST_F (WheelByHandTest, turnsABandThroughItsReadout)
{
    hangAndSee (1, middle);
    moveTo (left, body);
    ASSERT_TRUE (window.eventually ([this] { return showsPanel (255); }));
    wheel (316, 255, 1);
    EXPECT_TRUE (comesTo (gain, -0.9)) << window.text (gain);
}

TEST_F (WheelByHandTest, turnsNothingOnTheWallsAndInTheEmptyRoom)
{
    hangAndSee (1, middle);
    EXPECT_FALSE (turns (gain, 20, body)) << "the left wall in front of the band";
    EXPECT_FALSE (turns (gain, 610, body)) << "the right wall";
    EXPECT_FALSE (turns (gain, left, 500)) << "below the band";
    EXPECT_TRUE (turns (gain, left, body));
}

TEST_F (WheelByHandTest, turnsNothingThatIsBypassedOrSolo)
{
    hangAndSee (1, middle);

    for (const auto* state : { "Band 1 Bypass", "Band 1 Solo", "ZVQ Bypass" })
    {
        window.setNormalised (state, 1.0f);
        idleFor (150);
        EXPECT_FALSE (turns (gain, left, body)) << state;
        window.setNormalised (state, 0.0f);
        idleFor (150);
    }

    EXPECT_TRUE (turns (gain, left, body));
}

class ReversedWheelTest : Preferences, public HandTest
{
protected:
    ReversedWheelTest() : Preferences ("ReverseMousewheel=\"1\"") {}
};

TEST_F (ReversedWheelTest, notchPullsTheBandNearer)
{
    hangAndSee (1, middle);
    wheel (left, body, 1);
    EXPECT_TRUE (comesTo (gain, 0.9)) << window.text (gain);
}
} // namespace
