#include "window/HandTest.h"

#include <cmath>
#include <string>

// What stands in and around the room: the scale, the panels at ceiling and floor, hidden bands, the top and bottom row.

namespace
{
constexpr int left = 120;
constexpr auto gain = "Band 1 Gain";

/** More than the scale takes to come to another, in ms. */
constexpr int scaleTime = 900;

class RoomByHandTest : public HandTest
{
protected:
    /** Clicks a cell of the scale: 2, 4, 8 and 12 dB from the left, side by side on the floor. */
    void chooseScale (int cell)
    {
        click (299 + cell * 21 / 2, 609);
        idleFor (scaleTime);
    }

    [[nodiscard]] int bandCount()
    {
        auto count = 0;

        for (int number = 1; number <= 10; ++number)
            count += window.isOn ("Band " + std::to_string (number) + " Active") ? 1 : 0;

        return count;
    }
};

// 150 pixels are the whole of a scale, from its boost to its cut.
TEST_F (RoomByHandTest, scaleDecidesHowFarADragGoes)
{
    struct Chosen
    {
        int cell;
        double gainDb;
    };

    for (const auto& chosen : { Chosen { 0, -1.1 }, Chosen { 1, -2.1 }, Chosen { 2, -4.3 }, Chosen { 3, -6.4 } })
    {
        hang (window, 1, { 3910.0 });
        chooseScale (chosen.cell);
        press (left, 300);
        moveTo (left, 340);
        EXPECT_TRUE (comesTo (gain, chosen.gainDb)) << chosen.cell << ": " << window.text (gain);
        letGo();
    }
}

TEST_F (RoomByHandTest, dotBringsTheScaleBack)
{
    hangAndSee (1, { 3910.0, 5.0 });
    hangAndSee (2, { 800.0, -2.0 });
    chooseScale (0);
    EXPECT_TRUE (window.eventually ([this] { return showsMessage(); })) << "a band is out of scale";

    // Out of the scale the first band is two dots, half of each, at the front edges of its line.
    constexpr int dotRow = 246;
    EXPECT_TRUE (showsColour (roomX + 1, roomY + dotRow, 0x555555));
    EXPECT_TRUE (showsColour (roomX + 628, roomY + dotRow, 0x555555));
    click (1, dotRow);
    idleFor (scaleTime);

    // The scale of 8 dB, which holds 5 and -2.
    press (left, 300);
    moveTo (left, 340);
    EXPECT_TRUE (comesTo (gain, 0.7)) << window.text (gain);
    letGo();
}

TEST_F (RoomByHandTest, typedGainWidensTheScale)
{
    hangAndSee (1, { 3910.0 });
    chooseScale (0);
    moveTo (left, 300);
    ASSERT_TRUE (window.eventually ([this] { return showsPanel (255); }));
    click (316, 255);
    idleFor (50);
    window.type ("5.5");
    window.key ("Return");
    EXPECT_TRUE (comesTo (gain, 5.5)) << window.text (gain);
    idleFor (scaleTime);
    press (left, 300);
    moveTo (left, 340);
    EXPECT_TRUE (comesTo (gain, 1.2)) << window.text (gain) << ", at 8 dB";
    letGo();
}

TEST_F (RoomByHandTest, dragToTheEndOfAScaleWidensIt)
{
    hangAndSee (1, { 3910.0 });
    chooseScale (0);
    press (left, 300);
    moveTo (left, 200);
    EXPECT_TRUE (comesTo (gain, 2.0)) << window.text (gain);
    idleFor (scaleTime);
    EXPECT_EQ (window.figure (gain), 2.0) << "under a hand that rests the scale changes, and not the gain";

    // 15 pixels are a tenth of the 8 dB between the walls.
    moveTo (left, 185);
    EXPECT_TRUE (comesTo (gain, 2.8)) << window.text (gain);
    letGo();
}

//======================================================================================================================
TEST_F (RoomByHandTest, bandAtTheCeilingHasItsPanelAboveTheRoom)
{
    constexpr int panelRow = 52 - roomY;
    hang (window, 1, { 19500.0, 10.7, 5.0 });
    ASSERT_TRUE (window.eventually ([this] { return showsPanel (panelRow); }));

    doubleClick (340 - roomX, 130 - roomY);
    idleFor (300);
    EXPECT_EQ (bandCount(), 1) << "the space belongs to the panel";

    click (341 - roomX, panelRow);
    idleFor (50);
    window.type ("-2");
    window.key ("Return");
    EXPECT_TRUE (comesTo (gain, -2.0)) << window.text (gain);
    EXPECT_TRUE (window.eventually ([this] { return ! showsPanel (panelRow); })) << "back in the room";

    doubleClick (10, 90);
    EXPECT_TRUE (window.eventually ([this] { return bandCount() == 2; }));
    EXPECT_GE (window.figure ("Band 2 Frequency"), 14800.0);
}

TEST_F (RoomByHandTest, bandAtTheFloorHasItsPanelBelowTheRoom)
{
    constexpr int panelRow = 619;
    hang (window, 1, { 320.0, 12.0, 5.0 });
    ASSERT_TRUE (window.eventually ([this] { return showsPanel (panelRow); }));

    doubleClick (10, 540);
    idleFor (300);
    EXPECT_EQ (bandCount(), 1) << "the space belongs to the panel";

    doubleClick (10, 400);
    EXPECT_TRUE (window.eventually ([this] { return bandCount() == 2; })) << "above 430 Hz there is room";

    // Its bypass, as wide from the middle as in a panel of the room.
    idleFor (450);
    click (271, panelRow);
    EXPECT_TRUE (window.eventually ([this] { return window.isOn ("Band 1 Bypass"); }));
}

TEST_F (RoomByHandTest, eleventhBandIsRefused)
{
    for (int number = 1; number <= 10; ++number)
        hang (window, number, { 500.0 + 1500.0 * number, 0.0, 5.0 });

    idleFor (200);
    doubleClick (20, 500);
    idleFor (300);
    EXPECT_EQ (bandCount(), 10);

    for (int number = 1; number <= 10; ++number)
        EXPECT_NEAR (window.figure ("Band " + std::to_string (number) + " Frequency"), 500.0 + 1500.0 * number, 10.0);

    window.setNormalised ("Band 4 Active", 0.0f);
    idleFor (450);
    doubleClick (20, 500);
    EXPECT_TRUE (window.eventually ([this] { return bandCount() == 10; })) << "the place of one that has gone";
    EXPECT_LT (window.figure ("Band 4 Frequency"), 1000.0);
}

TEST_F (RoomByHandTest, shiftHangsABandWhereAnotherHangs)
{
    hangAndSee (1, { 3910.0, 3.0 });
    window.keyDown ("Shift_L");
    doubleClick (left, 300);
    window.keyUp ("Shift_L");
    EXPECT_TRUE (window.eventually ([this] { return bandCount() == 2; }));
    EXPECT_EQ (window.figure (gain), 3.0);

    idleFor (450);
    doubleClick (left - 30, 320);
    EXPECT_TRUE (comesTo (gain, 0.0)) << "without Shift it is the way to 0 dB";
    EXPECT_EQ (bandCount(), 2);
}

TEST_F (RoomByHandTest, altClickBringsTheGainToZero)
{
    hangAndSee (1, { 3910.0, 3.0 });
    window.keyDown ("Alt_L");
    click (left, 300);
    window.keyUp ("Alt_L");
    EXPECT_TRUE (comesTo (gain, 0.0)) << window.text (gain);
}

TEST_F (RoomByHandTest, ctrlBringsAHiddenBandForward)
{
    reachBehindWithCtrl();
    window.keyUp ("Control_L");
    moveTo (100, hiddenLine + 1);
    press (100, hiddenLine);
    moveTo (100, hiddenLine - 30);
    EXPECT_TRUE (window.eventually ([this] { return window.figure ("Band 2 Frequency") > 1300.0; }))
        << window.text ("Band 2 Frequency");
    letGo();
    EXPECT_EQ (window.figure ("Band 1 Frequency"), 1000.0);
    EXPECT_EQ (window.figure (gain), 6.0);
}

//======================================================================================================================
TEST_F (RoomByHandTest, comparesTwoStatesAndCopiesOneToTheOther)
{
    constexpr int compareX = 490;
    constexpr int compareY = 22;
    constexpr int copyY = 6;

    hangAndSee (1, { 3910.0, 3.0 });
    window.click (compareX, copyY);
    idleFor (450);
    window.click (compareX, compareY);
    idleFor (300);
    EXPECT_EQ (window.figure (gain), 3.0) << "B is what A was";

    press (left, 300);
    moveTo (left, 340);
    EXPECT_TRUE (comesTo (gain, -3.4)) << window.text (gain);
    letGo();
    idleFor (450);

    window.click (compareX, compareY);
    EXPECT_TRUE (comesTo (gain, 3.0)) << "A has kept its own";
    idleFor (450);
    window.click (compareX, compareY);
    EXPECT_TRUE (comesTo (gain, -3.4)) << "and B";
}

TEST_F (RoomByHandTest, outputButtonBypassesTheWhole)
{
    window.click (565, 27);
    EXPECT_TRUE (window.eventually ([this] { return window.isOn ("ZVQ Bypass"); }));
    idleFor (450);
    window.click (565, 27);
    EXPECT_TRUE (window.eventually ([this] { return ! window.isOn ("ZVQ Bypass"); }));
}

// The menu opens above the label; its entries stand where they stand with the presets that the plug-in comes with.
TEST_F (RoomByHandTest, presetIsChosenFromItsMenu)
{
    constexpr std::uint32_t highlight = 0x3b3b3b;
    constexpr int popRow = 595;
    constexpr int danceRow = 463;

    constexpr float danceOfPop = 105.0f / 131.0f;

    window.click (60, 686);
    idleFor (100);
    window.moveTo (62, popRow - 2);
    window.moveTo (62, popRow);
    ASSERT_TRUE (window.eventually ([this] { return showsColour (200, popRow, highlight); }));
    ASSERT_TRUE (window.eventually ([this] { return showsColour (300, 600, 0x282828); })) << "its presets";
    window.moveTo (310, popRow);
    window.moveTo (320, danceRow);
    ASSERT_TRUE (window.eventually ([this] { return showsColour (400, danceRow, highlight); }));

    // A menu takes no click that soon, which may be the end of the one that opened it.
    idleFor (300);
    window.click (320, danceRow);
    EXPECT_TRUE (window.eventually ([&]
                                    { return std::abs (window.normalised ("Current Preset") - danceOfPop) < 0.001f; },
                                    std::chrono::seconds (5)))
        << window.text ("Current Preset");
}
} // namespace
