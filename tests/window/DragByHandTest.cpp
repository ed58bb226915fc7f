#include "window/HandTest.h"

#include <cmath>
#include <ostream>

// Rows, and figures of what a drag gives, were computed apart from this program, from the room's perspective.

namespace
{
const HungBand middle { 3910.0 };

/** The line of 3910 Hz at 0 dB, and rows inside the band of that frequency at a Q of 1. */
constexpr int middleLine = 258;
constexpr int body = 300;
constexpr int insideTop = 179;
constexpr int insideBottom = 333;

/** Columns beside the left and the right wall. */
constexpr int left = 120;
constexpr int right = 510;

struct Stroke
{
    const char* what;
    const char* parameter;
    HungBand band;
    int column;
    int fromRow;
    int toRow;
    int events;

    /** What the host hears: one figure for each event that changes something. */
    std::vector<double> figures;

    /** What the parameter comes to under a resting hand. */
    double atRest;
    double tolerance;
};

void PrintTo (const Stroke& tested, std::ostream* stream)
{
    *stream << tested.what;
}

class StrokeTest : public HandTest, public testing::WithParamInterface<Stroke>
{
};

TEST_P (StrokeTest, changesItsParameterAtMostOnceForEachEvent)
{
    hangAndSee (1, GetParam().band);
    const auto heard = stroke (GetParam().parameter,
                               GetParam().column,
                               GetParam().fromRow,
                               GetParam().toRow,
                               GetParam().events,
                               GetParam().figures.size());
    EXPECT_THAT (heard, testing::Pointwise (testing::DoubleNear (GetParam().tolerance), GetParam().figures));
    EXPECT_TRUE (comesTo (GetParam().parameter, GetParam().atRest, GetParam().tolerance))
        << window.text (GetParam().parameter);

    // Between two steps of the parameter it may go to and fro a while.
    waitForRest();
    const auto held = window.normalised (GetParam().parameter);
    letGo();
    EXPECT_EQ (window.normalised (GetParam().parameter), held) << "letting go moves nothing";
    EXPECT_EQ (told (GetParam().parameter).ends, 1);

    EXPECT_FALSE (showsMessage()) << "Mix has no limits to speak about";
}

constexpr auto gain = "Band 1 Gain";
constexpr auto frequency = "Band 1 Frequency";
constexpr auto q = "Band 1 Q";
constexpr double exact = 0.0005;
constexpr double oneQStep = 0.11;
constexpr double twoSteps = 20.0;

// 150 pixels are 24 dB, and four events are averaged until the hand rests.
INSTANTIATE_TEST_SUITE_P (
    OfTheBody,
    StrokeTest,
    testing::Values (
        Stroke { "downOnTheLeft",
                 gain,
                 middle,
                 left,
                 body,
                 body + 40,
                 12,
                 { -0.1, -0.4, -0.8, -1.3, -1.8, -2.4, -2.9, -3.4, -4.0, -4.5, -5.0, -5.6 },
                 -6.4,
                 exact },
        Stroke { "downOnTheRightInOneEvent", gain, middle, right, body, body + 30, 1, { -1.2 }, -4.8, exact },
        Stroke { "pastTheFrontPlane", gain, middle, right, body, body - 200, 4, { 2.0, 6.0, 12.0 }, 12.0, exact }),
    [] (const auto& tested) { return std::string (tested.param.what); });

// Each event is one step of an approximation, which goes on while the hand rests.
INSTANTIATE_TEST_SUITE_P (
    OfTheLine,
    StrokeTest,
    testing::Values (
        Stroke { "up",
                 frequency,
                 middle,
                 left,
                 middleLine,
                 200,
                 12,
                 { 3950, 4100, 4260, 4430, 4610, 4800, 4960, 5150, 5360, 5580, 5810, 6040 },
                 6070,
                 twoSteps },
        Stroke { "upInOneEvent", frequency, { 1000.0 }, right, 428, 300, 1, { 1930 }, 2760, twoSteps },
        Stroke { "farDownInOneEvent", frequency, { 10000.0 }, right, 139, 480, 1, { 320 }, 660, twoSteps },
        Stroke { "aboveTheCeiling", frequency, middle, left, middleLine, -30, 1, { 11960 }, 20000, twoSteps },
        Stroke { "belowTheFloor", frequency, middle, left, middleLine, 700, 1, { 320 }, 320, twoSteps }),
    [] (const auto& tested) { return std::string (tested.param.what); });

INSTANTIATE_TEST_SUITE_P (OfAnEdge,
                          StrokeTest,
                          testing::Values (Stroke { "bottomNarrower",
                                                    q,
                                                    middle,
                                                    left,
                                                    insideBottom,
                                                    insideBottom - 36,
                                                    12,
                                                    { 1.2, 1.3, 1.4, 1.5, 1.7, 1.8, 2.0, 2.2, 2.5, 2.8, 3.1, 3.6 },
                                                    3.6,
                                                    oneQStep },
                                           Stroke { "topNarrower",
                                                    q,
                                                    middle,
                                                    right,
                                                    insideTop,
                                                    insideTop + 36,
                                                    12,
                                                    { 1.3, 1.4, 1.5, 1.6, 1.8, 2.0, 2.2, 2.4, 2.7, 3.1, 3.5, 4.2 },
                                                    4.2,
                                                    oneQStep },
                                           Stroke { "bottomWiderThanTheLimit",
                                                    q,
                                                    middle,
                                                    right,
                                                    insideBottom,
                                                    insideBottom + 60,
                                                    15,
                                                    { 0.9, 0.8, 0.7, 0.6, 0.5 },
                                                    0.5,
                                                    exact },
                                           Stroke { "topToTheNarrowestBand",
                                                    q,
                                                    { 3910.0, 0.0, 2.0 },
                                                    left,
                                                    204,
                                                    204 + 30,
                                                    30,
                                                    { 2.6, 2.7, 2.8, 3.0, 3.1, 3.2, 3.4, 3.6, 3.8, 4.0, 4.3, 4.6, 5.0 },
                                                    5.0,
                                                    oneQStep }),
                          [] (const auto& tested) { return std::string (tested.param.what); });

using DragByHandTest = HandTest;

TEST_F (DragByHandTest, halfAScaleLetsMasterReachTwiceItsGain)
{
    window.setNormalised ("Mix/Master Mode", 0.0f);
    window.setNormalised ("Gain Scale", 0.25f);
    hangAndSee (1, middle);
    EXPECT_THAT (stroke (gain, left, body, body - 100, 20, 12),
                 testing::Pointwise (testing::DoubleNear (exact),
                                     { 0.2, 0.6, 1.2, 2.0, 2.8, 3.6, 4.4, 5.2, 6.0, 6.8, 7.6, 8.0 }));
    EXPECT_TRUE (window.eventually ([this] { return showsMessage(); }));
    letGo();
    EXPECT_EQ (window.figure (gain), 8.0);
}

TEST_F (DragByHandTest, masterStopsAtItsLimitsAndSaysSo)
{
    window.setNormalised ("Mix/Master Mode", 0.0f);
    hangAndSee (1, middle);
    stroke (gain, left, body, body + 20, 10, 10);
    EXPECT_TRUE (comesTo (gain, -3.2)) << window.text (gain);
    letGo();
    EXPECT_FALSE (showsMessage()) << "within the limits there is nothing to say";

    // The band's body is further down at the depth where it hangs now.
    stroke (gain, right, body, body + 60, 10, 1);
    EXPECT_TRUE (comesTo (gain, -4.0)) << window.text (gain);
    EXPECT_TRUE (window.eventually ([this] { return showsMessage(); }));
    letGo();
    EXPECT_EQ (window.figure (gain), -4.0);
}

TEST_F (DragByHandTest, masterHoldsTheQAndSaysSo)
{
    window.setNormalised ("Mix/Master Mode", 0.0f);
    hangAndSee (1, middle);
    const auto heard = stroke (q, left, insideBottom, insideBottom - 36, 12, 4);
    EXPECT_THAT (heard, testing::Pointwise (testing::DoubleNear (oneQStep), { 1.2, 1.3, 1.4, 1.5 }));
    EXPECT_TRUE (window.eventually ([this] { return showsMessage(); }));
    letGo();
    EXPECT_EQ (window.figure (q), 1.5);
}

TEST_F (DragByHandTest, lineStopsBelowTheSpaceOfABandAtTheCeiling)
{
    hangAndSee (1, { 12000.0 });
    hang (window, 2, { 19500.0, 10.7, 5.0 });
    ASSERT_TRUE (window.eventually ([this] { return showsColour (262, 52, bandPanel); }));
    EXPECT_THAT (stroke (frequency, left, 120, 70, 10, 5),
                 testing::Pointwise (testing::DoubleNear (twoSteps), { 12190, 12670, 13220, 13800, 14410 }));
    letGo();
    EXPECT_NEAR (window.figure (frequency), 14410.0, twoSteps);
}

TEST_F (DragByHandTest, leavesTheWindowAndComesBack)
{
    hangAndSee (1, middle);
    press (left, body);
    moveTo (left - 300, 1200);
    EXPECT_TRUE (comesTo (gain, -12.0)) << window.text (gain);
    moveTo (1200, -60);
    EXPECT_TRUE (comesTo (gain, 12.0)) << window.text (gain);
    moveTo (left, body);
    EXPECT_TRUE (comesTo (gain, 0.0)) << window.text (gain);
    letGo();
    EXPECT_EQ (window.figure (gain), 0.0);
}

TEST_F (DragByHandTest, pressTakesTheZoneUnderThePointer)
{
    hangAndSee (1, middle);
    press (70, 264);
    moveTo (70, 250);
    EXPECT_TRUE (window.eventually ([this] { return window.figure (frequency) != 3910.0; })) << "the line";
    letGo();
    EXPECT_EQ (window.figure (gain), 0.0);
}

TEST_F (DragByHandTest, bandOfMoreGainIsInFront)
{
    hangAndSee (1, { 1000.0, 6.0 });
    hang (window, 2, { 1200.0 });
    idleFor (200);
    press (85, 358);
    moveTo (85, 338);
    EXPECT_TRUE (window.eventually ([this] { return window.figure (q) < 1.0; }))
        << "the upper edge of the band in front";
    letGo();
    EXPECT_EQ (window.figure ("Band 2 Q"), 1.0);
    EXPECT_EQ (window.figure ("Band 2 Gain"), 0.0);
    EXPECT_EQ (window.figure ("Band 2 Frequency"), 1200.0);
}

TEST_F (DragByHandTest, pressWithCtrlChangesNothing)
{
    hangAndSee (1, middle);
    window.keyDown ("Control_L");
    press (left, body);
    moveTo (left, body + 40);
    letGo();
    window.keyUp ("Control_L");
    const auto heard = told (gain);
    EXPECT_EQ (heard.begins, 1);
    EXPECT_EQ (heard.ends, 1);
    EXPECT_THAT (heard.changes, testing::IsEmpty());
}

TEST_F (DragByHandTest, doesNothingToABandThatIsBypassedOrSilenced)
{
    for (const auto* other : { "Band 1 Bypass", "ZVQ Bypass", "Band 2 Solo" })
    {
        hangAndSee (1, middle);
        hang (window, 2, { 400.0 });
        window.setNormalised (other, 1.0f);
        ASSERT_TRUE (window.eventually ([this] { return ! showsLine (1, 255); }));
        window.host().takeEdits();
        press (left, body);
        moveTo (left, body + 40);
        letGo();
        EXPECT_THAT (window.host().takeEdits(), testing::IsEmpty()) << other;
        window.setNormalised (other, 0.0f);
    }
}

TEST_F (DragByHandTest, gestureEndsWithItsWindow)
{
    struct Held
    {
        const char* parameter;
        int fromRow;
        int toRow;
    };

    hangAndSee (1, middle);

    for (const auto& held : { Held { gain, body, body + 20 },
                              Held { frequency, middleLine, 250 },
                              Held { q, insideBottom, insideBottom - 20 } })
    {
        hang (window, 1, middle);
        ASSERT_TRUE (window.eventually ([this] { return showsLine (1, 255); }));
        window.host().takeEdits();
        press (left, held.fromRow);
        moveTo (left, held.toRow);
        idleFor (100);
        window.close();
        window.screen().release (1);

        const auto heard = told (held.parameter);
        EXPECT_EQ (heard.begins, 1) << held.parameter;
        EXPECT_EQ (heard.ends, 1) << held.parameter;
        EXPECT_THAT (heard.changes, testing::Not (testing::IsEmpty())) << held.parameter;
        window.open();
    }
}
} // namespace
