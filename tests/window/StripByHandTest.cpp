#include "window/HandTest.h"

// The strip of buttons across a band's line.

namespace
{
const HungBand middle { 3910.0 };
constexpr int line = 255;
constexpr int body = 300;
constexpr int left = 120;

// Columns of a band that hangs in the middle of its room.
constexpr int shelfButton = 252;
constexpr int bypassButton = 271;
constexpr int soloButton = 361;
constexpr int closeButton = 384;

class StripByHandTest : public HandTest
{
protected:
    /** Moves over the band, so that its strip shows, and clicks a button of it. */
    void clickButton (int button, int row = line)
    {
        moveTo (left, row + 40);
        ASSERT_TRUE (window.eventually ([&] { return showsPanel (row); }));
        click (button, row);
        idleFor (450);
    }
};

TEST_F (StripByHandTest, buttonsSwitchAndSwitchBack)
{
    struct Button
    {
        int column;
        const char* parameter;
    };

    hangAndSee (1, middle);

    for (const auto& button : { Button { bypassButton, "Band 1 Bypass" },
                                Button { soloButton, "Band 1 Solo" },
                                Button { shelfButton, "Band 1 High Shelf" } })
    {
        clickButton (button.column);
        EXPECT_TRUE (window.isOn (button.parameter)) << button.parameter;
        clickButton (button.column);
        EXPECT_FALSE (window.isOn (button.parameter)) << button.parameter;
    }

    EXPECT_EQ (window.figure ("Band 1 Gain"), 0.0);
    EXPECT_EQ (window.figure ("Band 1 Frequency"), 3910.0);
}

TEST_F (StripByHandTest, crossRemovesTheBandAndForgetsItsValues)
{
    hangAndSee (1, { 3910.0, 0.0, 2.0, true, 0.3 });
    clickButton (closeButton);
    EXPECT_FALSE (window.isOn ("Band 1 Active"));
    EXPECT_EQ (window.figure ("Band 1 Gain"), 0.0);
    EXPECT_EQ (window.figure ("Band 1 Q"), 1.0);
    EXPECT_EQ (window.normalised ("Band 1 Mid/Side"), 0.5f);
    EXPECT_FALSE (window.isOn ("Band 1 High Shelf"));
    EXPECT_TRUE (window.eventually ([this] { return ! showsLine (1, line); }));
}

TEST_F (StripByHandTest, crossTakesOnlyAPressThatBeganOnIt)
{
    hangAndSee (1, middle);
    moveTo (left, body);
    ASSERT_TRUE (window.eventually ([this] { return showsPanel (line); }));
    press (closeButton, line);
    moveTo (closeButton, line + 14);
    letGo();
    EXPECT_TRUE (window.isOn ("Band 1 Active")) << "let go beside it";
    clickButton (closeButton);
    EXPECT_FALSE (window.isOn ("Band 1 Active"));
}

TEST_F (StripByHandTest, shelfIsRefusedBelow1600Hz)
{
    constexpr int lineOf1590 = 374;
    hangAndSee (1, { 1590.0 });
    clickButton (shelfButton, lineOf1590);
    EXPECT_FALSE (window.isOn ("Band 1 High Shelf"));

    hangAndSee (1, { 1600.0 });
    clickButton (shelfButton, lineOf1590);
    EXPECT_TRUE (window.isOn ("Band 1 High Shelf"));
}

TEST_F (StripByHandTest, bandKeepsItsShelfBelow1600Hz)
{
    hangAndSee (1, { 3910.0, 0.0, 1.0, true });
    press (left, line);
    moveTo (left, 450);
    EXPECT_TRUE (window.eventually ([this] { return window.figure ("Band 1 Frequency") < 1600.0; }));
    letGo();
    EXPECT_TRUE (window.isOn ("Band 1 High Shelf"));
}

TEST_F (StripByHandTest, bypassedBandAnswersToItsBypassAlone)
{
    hangAndSee (1, middle);
    clickButton (bypassButton);
    ASSERT_TRUE (window.isOn ("Band 1 Bypass"));
    clickButton (soloButton);
    clickButton (shelfButton);
    clickButton (closeButton);
    EXPECT_FALSE (window.isOn ("Band 1 Solo"));
    EXPECT_FALSE (window.isOn ("Band 1 High Shelf"));
    EXPECT_TRUE (window.isOn ("Band 1 Active"));
    clickButton (bypassButton);
    EXPECT_FALSE (window.isOn ("Band 1 Bypass"));
}

TEST_F (StripByHandTest, bandThatAnothersSoloSilencesAnswersToNothing)
{
    constexpr int lineOf10kHz = 138;
    hangAndSee (1, middle);
    hangAndSee (2, { 10000.0 });
    clickButton (soloButton);
    ASSERT_TRUE (window.isOn ("Band 1 Solo"));

    for (const auto button : { soloButton, bypassButton, shelfButton, closeButton })
        clickButton (button, lineOf10kHz);

    EXPECT_FALSE (window.isOn ("Band 2 Solo"));
    EXPECT_FALSE (window.isOn ("Band 2 Bypass"));
    EXPECT_FALSE (window.isOn ("Band 2 High Shelf"));
    EXPECT_TRUE (window.isOn ("Band 2 Active"));

    clickButton (soloButton);
    clickButton (soloButton, lineOf10kHz);
    EXPECT_TRUE (window.isOn ("Band 2 Solo")) << "free again when the first solo is over";
    EXPECT_FALSE (window.isOn ("Band 1 Solo"));
}

// Below the strip: an icon at either end of a slider.
TEST_F (StripByHandTest, stereoPlaceHasTwoEndsAndAMiddle)
{
    constexpr int midIcon = 268;
    constexpr int sideIcon = 367;
    constexpr int sliderMiddle = 316;
    constexpr int row = line + 24;
    constexpr auto midSide = "Band 1 Mid/Side";

    hangAndSee (1, middle);
    moveTo (left, body);
    ASSERT_TRUE (window.eventually ([this] { return showsPanel (line); }));
    idleFor (300);
    click (midIcon, row);
    EXPECT_TRUE (window.eventually ([&] { return window.normalised (midSide) == 0.0f; }, std::chrono::seconds (5)));
    EXPECT_EQ (window.text (midSide), "FULL MID");

    click (sideIcon, row);
    EXPECT_TRUE (window.eventually ([&] { return window.normalised (midSide) == 1.0f; }, std::chrono::seconds (5)));
    EXPECT_EQ (window.text (midSide), "FULL SIDE");

    idleFor (450);
    doubleClick (sliderMiddle + 30, row);
    EXPECT_TRUE (window.eventually ([&] { return window.normalised (midSide) == 0.5f; }, std::chrono::seconds (5)));
    EXPECT_EQ (window.text (midSide), "STEREO");

    idleFor (450);
    window.host().takeEdits();
    press (sliderMiddle, row);
    moveTo (sliderMiddle - 10, row);
    moveTo (sliderMiddle - 20, row);
    letGo();
    EXPECT_GT (window.normalised (midSide), 0.0f);
    EXPECT_LT (window.normalised (midSide), 0.5f);
    const auto heard = told (midSide);
    EXPECT_EQ (heard.begins, 1);
    EXPECT_EQ (heard.ends, 1);
    EXPECT_EQ (window.figure ("Band 1 Gain"), 0.0) << "the band behind the slider stays where it is";
}

TEST_F (StripByHandTest, stereoPlaceIsToldInPercent)
{
    hang (window, 1, { 3910.0, 0.0, 1.0, false, 0.05 });
    EXPECT_EQ (window.text ("Band 1 Mid/Side"), "100% MID 9% SIDE");
}
} // namespace
