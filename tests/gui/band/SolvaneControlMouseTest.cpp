#include "gui/band/BandRig.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

namespace
{
constexpr auto ctrl = juce::ModifierKeys::ctrlModifier;
constexpr auto alt = juce::ModifierKeys::altModifier;
constexpr auto shift = juce::ModifierKeys::shiftModifier;
} // namespace

TEST (SolvaneControlMouseTest, hasNoPlaceBeforeFrequencyAndQAreSet)
{
    BandRig rig;
    rig.control->setGain (3.0f);
    EXPECT_TRUE (rig.control->getBounds().isEmpty());
    rig.control->setFrequency (1000.0f);
    EXPECT_TRUE (rig.control->getBounds().isEmpty());
    rig.control->setQ (1.0f);
    EXPECT_FALSE (rig.control->getBounds().isEmpty());
}

TEST (SolvaneControlMouseTest, hangsWhereItsValuesSay)
{
    BandRig rig;
    rig.place (1000, 3.3f);
    EXPECT_EQ (rig.control->getBounds(), juce::Rectangle<int> (44, 346, 544, 175));
    EXPECT_EQ (rig.control->panel().getBounds(), juce::Rectangle<int> (180, 71, 186, 34));
}

TEST (SolvaneControlMouseTest, aDragOfTheBodyIsOneGestureOfTheGain)
{
    BandRig rig;
    rig.place (3910, 0.0f);
    const auto start = rig.control->getY() + rig.onBody().y;
    rig.press (rig.onBody());

    // The body moves under the hand; rows of the room stand still.
    for (int event = 1; event <= 12; ++event)
        rig.dragToRow (start + 40 * event / 12);

    EXPECT_EQ (rig.log.front(), "begin 1");
    EXPECT_EQ (rig.log.back(), "gain -5.6");
    EXPECT_EQ (rig.countOf ("begin 1"), 1);
    EXPECT_EQ (rig.log.size(), 13u);

    rig.log.clear();
    rig.releaseAtRow (start + 40);
    EXPECT_EQ (rig.log.size(), 2u);
    EXPECT_EQ (rig.log.back(), "end 1");
    EXPECT_THAT (rig.log.front(), testing::StartsWith ("click "));
}

TEST (SolvaneControlMouseTest, aRestingHandFindsTheBandUnderIt)
{
    BandRig rig;
    rig.place (3910, 0.0f);
    const auto start = rig.control->getY() + rig.onBody().y;
    rig.press (rig.onBody());
    rig.dragToRow (start + 30);
    EXPECT_EQ (rig.log.back(), "gain -1.2");

    // The tick in which the event came does nothing.
    rig.log.clear();
    rig.tick();
    EXPECT_TRUE (rig.log.empty());
    rig.tick (10);
    EXPECT_THAT (rig.log, ElementsAre ("gain -2.4", "gain -3.6", "gain -4.8"));
}

TEST (SolvaneControlMouseTest, lettingGoMovesNothing)
{
    BandRig rig;
    rig.place (3910, 0.0f);
    const auto start = rig.control->getY() + rig.onBody().y;
    rig.press (rig.onBody());
    rig.dragToRow (start + 30);
    rig.releaseAtRow (start + 30);
    rig.log.clear();
    rig.tick (10);
    EXPECT_TRUE (rig.log.empty());
}

TEST (SolvaneControlMouseTest, theDragGoesOnFromAChangedScale)
{
    BandRig rig;
    rig.place (3910, 2.0f);
    const auto start = rig.control->getY() + rig.onBody().y;
    rig.press (rig.onBody());
    rig.dragToRow (start);
    EXPECT_EQ (rig.log.back(), "gain 2.0");

    rig.room.scaleDb = 4.0f;
    rig.control->updateBounds();
    rig.rebase = true;
    rig.dragToRow (start);
    EXPECT_EQ (rig.log.back(), "gain 2.0");
    EXPECT_FALSE (rig.rebase);
    rig.dragToRow (start + 15);
    rig.tick (5);

    // 15 of 150 pixels are a tenth of 8 dB.
    EXPECT_EQ (rig.log.back(), "gain 1.2");
}

TEST (SolvaneControlMouseTest, noDragWhileTheScaleIsOnItsWay)
{
    BandRig rig;
    rig.place (3910, 0.0f);
    rig.press (rig.onBody());
    rig.animating = true;
    rig.log.clear();
    rig.dragToRow (rig.control->getY() + 100);
    EXPECT_TRUE (rig.log.empty());
}

TEST (SolvaneControlMouseTest, theHandGoesOnFromWhereAutomationPutTheBand)
{
    BandRig rig;
    rig.place (3910, 0.0f);
    const auto start = rig.control->getY() + rig.onBody().y;
    rig.press (rig.onBody());
    rig.dragToRow (start + 10);
    rig.control->setGain (6.0f);
    rig.dragToRow (start + 10);
    EXPECT_EQ (rig.log.back(), "gain 6.0");
}

TEST (SolvaneControlMouseTest, masterStopsTheDragAtItsLimitAndSaysSo)
{
    BandRig rig;
    rig.place (3910, 0.0f);
    rig.mode = FilterMode::master;
    rig.gainScale = 50.0f;
    const auto start = rig.control->getY() + rig.onBody().y;
    rig.press (rig.onBody());

    for (int event = 1; event <= 20; ++event)
        rig.dragToRow (start - 5 * event);

    EXPECT_EQ (rig.log.back(), "gain 8.0");
    EXPECT_GT (rig.mastersExceeded, 0);
}

TEST (SolvaneControlMouseTest, aSingleEventBeyondTheLimitSaysSoInMixToo)
{
    BandRig rig;
    rig.place (3910, 4.0f);
    const auto start = rig.control->getY() + rig.onBody().y;
    rig.press (rig.onBody());
    rig.dragToRow (start);
    EXPECT_EQ (rig.mastersExceeded, 0);
    rig.dragToRow (start - 10);
    EXPECT_EQ (rig.mastersExceeded, 1);
}

TEST (SolvaneControlMouseTest, aDragOfTheLineIsOneGestureOfTheFrequency)
{
    BandRig rig;
    rig.place (3910, 0.0f);
    rig.press (rig.onLine());
    rig.dragToRow (200);
    EXPECT_FLOAT_EQ (rig.lastRow, 200.0f);
    EXPECT_TRUE (rig.text().endsWith ("Hz"));

    // A resting hand has its line under it in the end.
    rig.tick (40);
    EXPECT_NEAR (rig.room.wallRow (static_cast<float> (rig.control->bandState().frequencyHz), 0.0f), 200.0f, 1.0f);

    rig.releaseAtRow (200);
    EXPECT_EQ (rig.log.front(), "begin 0");
    EXPECT_EQ (rig.log.back(), "end 0");
    EXPECT_EQ (rig.countOf ("begin 0"), 1);
}

TEST (SolvaneControlMouseTest, aDragOfAnEdgeIsOneGestureOfTheQ)
{
    BandRig rig;
    rig.place (3910, 0.0f);
    const auto start = rig.control->getBottom() - 8;
    rig.press ({ 40, rig.control->getHeight() - 8 });

    for (int event = 1; event <= 12; ++event)
        rig.dragToRow (start - 36 * event / 12);

    EXPECT_NEAR (rig.control->bandState().q, 3.6f, 0.11f);
    EXPECT_GT (rig.mastersExceeded, 0);
    rig.releaseAtRow (start - 36);
    EXPECT_EQ (rig.log.front(), "begin 2");
    EXPECT_EQ (rig.log.back(), "end 2");
}

TEST (SolvaneControlMouseTest, masterLimitsTheDraggedQ)
{
    BandRig rig;
    rig.place (3910, 0.0f);
    rig.mode = FilterMode::master;
    const auto start = rig.control->getBottom() - 8;
    rig.press ({ 40, rig.control->getHeight() - 8 });
    rig.dragToRow (start - 30);
    EXPECT_NEAR (rig.lastNormalisedQ, (1.5f - 0.5f) / 4.5f, 1e-5f);
}

TEST (SolvaneControlMouseTest, anEdgeOfAShelfIsHeldButDoesNothing)
{
    BandRig rig;
    rig.place (3910, 0.0f, 1.0f, true);
    rig.press (rig.onBottomEdge());
    rig.dragToRow (rig.control->getBottom() - 40);
    rig.releaseAtRow (rig.control->getBottom() - 40);
    EXPECT_TRUE (rig.log.empty());
}

TEST (SolvaneControlMouseTest, ctrlOnlyBeginsAGestureAndNamesThePointOnRelease)
{
    BandRig rig;
    rig.place (3910, 0.0f);
    const auto bounds = rig.control->getBounds();
    rig.press (rig.onLine(), ctrl);
    rig.dragToRow (bounds.getY());
    EXPECT_THAT (rig.log, ElementsAre ("begin 1"));
    rig.releaseAtRow (bounds.getY() + 20, ctrl);
    EXPECT_THAT (
        rig.log,
        ElementsAre ("begin 1",
                     "click " + std::to_string (bounds.getX() + 40) + " " + std::to_string (bounds.getY() + 20),
                     "end 1"));
}

TEST (SolvaneControlMouseTest, altOnReleaseBringsTheGainToZero)
{
    BandRig rig;
    rig.place (3910, 5.0f);
    rig.press (rig.onBody(), alt);
    rig.releaseAtRow (rig.control->getY() + rig.onBody().y, alt);
    EXPECT_THAT (rig.log, ElementsAre ("begin 1", "gain 0.0", "end 1"));
}

TEST (SolvaneControlMouseTest, aDoubleClickInTheFrameBringsTheGainToZero)
{
    BandRig rig;
    rig.place (3910, 5.0f);
    rig.doubleClick (rig.onBody());
    EXPECT_THAT (rig.log, ElementsAre ("begin 1", "gain 0.0", "end 1"));
}

TEST (SolvaneControlMouseTest, aDoubleClickWithShiftAsksForAFurtherBand)
{
    BandRig rig;
    rig.place (3910, 5.0f);
    const auto point = rig.onBody() + rig.control->getPosition();
    rig.doubleClick (rig.onBody(), shift);
    EXPECT_THAT (rig.log, ElementsAre ("add " + std::to_string (point.x) + " " + std::to_string (point.y)));
}

TEST (SolvaneControlMouseTest, theWheelArrivesAndIsOneGesture)
{
    BandRig rig;
    rig.place (3910, 0.0f);
    rig.turnWheel (0.25f, 0.0);
    EXPECT_EQ (rig.log.back(), "gain -0.3");
    rig.tick (10);

    // A fifth of a quarter of 24 dB, towards the back wall.
    EXPECT_THAT (rig.log, ElementsAre ("begin 1", "gain -0.3", "gain -0.6", "gain -0.9", "gain -1.2", "end 1"));

    rig.log.clear();
    rig.reversed = true;
    rig.turnWheel (0.25f, 1000.0);
    rig.tick (10);
    EXPECT_EQ (rig.log[rig.log.size() - 2], "gain 0.0");
}

TEST (SolvaneControlMouseTest, aSoloedBandKeepsItsGainFromTheMouse)
{
    BandRig rig;
    rig.place (3910, 3.0f);
    rig.control->setSolo (true);
    EXPECT_EQ (rig.text(), "SOLOD");
    rig.press (rig.onBody());
    rig.dragToRow (rig.control->getY() + 100);
    rig.releaseAtRow (rig.control->getY() + 100);
    rig.turnWheel (0.5f, 0.0);
    rig.doubleClick (rig.onBody());
    EXPECT_TRUE (rig.log.empty());

    // Its frequency still follows the hand.
    rig.press (rig.onLine());
    EXPECT_THAT (rig.log, ElementsAre ("begin 0"));
}

TEST (SolvaneControlMouseTest, aBandThatIsNotHeardIgnoresHands)
{
    using Setter = void (SolvaneControl::*) (bool);

    for (const Setter silence : { static_cast<Setter> (&SolvaneControl::setBypass),
                                  static_cast<Setter> (&SolvaneControl::setMainBypass),
                                  static_cast<Setter> (&SolvaneControl::setDimmed) })
    {
        BandRig rig;
        rig.place (3910, 3.0f);
        (rig.control.get()->*silence) (true);

        for (const auto point : { rig.onBody(), rig.onLine(), rig.onTopEdge() })
        {
            rig.press (point);
            rig.dragToRow (rig.control->getY() + 100);
            rig.releaseAtRow (rig.control->getY() + 100);
            rig.doubleClick (point);
        }

        rig.turnWheel (0.5f, 0.0);
        rig.control->keyPressed (juce::KeyPress (juce::KeyPress::rightKey));
        EXPECT_TRUE (rig.log.empty());
        EXPECT_FALSE (rig.control->panel().isTyping());
    }
}

TEST (SolvaneControlMouseTest, aBandBypassedUnderTheHandStillEndsItsGesture)
{
    BandRig rig;
    rig.place (3910, 3.0f);
    const auto row = rig.control->getY() + rig.onBody().y;
    rig.press (rig.onBody());
    rig.control->setBypass (true);
    rig.dragToRow (row + 50);
    rig.releaseAtRow (row + 50);
    EXPECT_THAT (rig.log, ElementsAre ("begin 1", "end 1"));
}

TEST (SolvaneControlMouseTest, aBandThatGoesAwayUnderTheHandEndsItsGesture)
{
    BandRig rig;
    rig.place (3910, 3.0f);
    rig.press (rig.onTopEdge());
    rig.control.reset();
    EXPECT_THAT (rig.log, ElementsAre ("begin 2", "end 2"));
}

TEST (SolvaneControlMouseTest, outOfScaleOnlyTheDotsAnswer)
{
    BandRig rig;
    rig.room.scaleDb = 4.0f;
    rig.place (1000, 8.0f);
    const auto dot = rig.layout().leftDot.getCentre();
    EXPECT_TRUE (rig.control->hitTest (dot.x, dot.y));
    EXPECT_FALSE (rig.control->hitTest (100, dot.y));

    rig.press (rig.layout().bounds.withZeroOrigin().getCentre());
    EXPECT_TRUE (rig.log.empty());
    EXPECT_FALSE (rig.control->panel().isVisible());

    rig.press (dot);
    rig.control->mouseUp (rig.event (dot));
    EXPECT_THAT (rig.log, ElementsAre ("collapse -1"));
}

TEST (SolvaneControlMouseTest, theReadoutSpeaksOfWhatIsUnderTheMouse)
{
    BandRig rig;
    rig.place (3910, 3.0f, 1.2f);
    EXPECT_EQ (rig.text(), "+3.0dB");
    rig.hover (rig.onTopEdge());
    EXPECT_EQ (rig.text(), "1.2Q");
    rig.hover (rig.onLine());
    EXPECT_EQ (rig.text(), "3910Hz");
    rig.hover (rig.onBody());
    EXPECT_EQ (rig.text(), "+3.0dB");

    const auto point = rig.onBody() + rig.control->getPosition();
    EXPECT_EQ (rig.log.back(), "move " + std::to_string (point.x) + " " + std::to_string (point.y));

    rig.hover (rig.onBottomEdge());
    rig.control->mouseExit (rig.event (rig.onBody()));
    EXPECT_EQ (rig.text(), "+3.0dB");
    EXPECT_EQ (rig.leftCount, 1);
}

TEST (SolvaneControlMouseTest, overTheEdgeOfAShelfTheReadoutKeepsTheGain)
{
    BandRig rig;
    rig.place (3910, 3.0f, 1.0f, true);
    rig.hover (rig.onBottomEdge());
    EXPECT_EQ (rig.text(), "+3.0dB");
}

TEST (SolvaneControlMouseTest, withCtrlTheMouseOnlyTellsWhereItIs)
{
    BandRig rig;
    rig.place (3910, 3.0f);
    rig.hover (rig.onLine(), ctrl);
    EXPECT_EQ (rig.text(), "+3.0dB");
    EXPECT_THAT (rig.log, ElementsAre (testing::StartsWith ("move ")));
}

TEST (SolvaneControlMouseTest, theBandUnderTheMouseShowsItsPanelAndBrightens)
{
    BandRig rig;
    rig.place (3910, 3.0f);
    EXPECT_FALSE (rig.control->panel().isVisible());
    rig.control->mouseEnter (rig.event (rig.onBody()));
    EXPECT_TRUE (rig.control->isSelected());
    rig.tick (5);
    EXPECT_TRUE (rig.control->panel().isVisible());
    EXPECT_FLOAT_EQ (rig.control->panel().getAlpha(), 1.0f);

    rig.control->mouseExit (rig.event (rig.onBody()));
    rig.tick (5);
    EXPECT_FALSE (rig.control->panel().isVisible());
}

TEST (SolvaneControlMouseTest, bandsThatAreAlwaysShownKeepTheirPanels)
{
    BandRig rig;
    rig.alwaysShown = true;
    rig.place (3910, 3.0f);
    rig.tick (5);
    EXPECT_TRUE (rig.control->panel().isVisible());
    rig.control->collapse();
    rig.tick (5);
    EXPECT_TRUE (rig.control->panel().isVisible());

    rig.alwaysShown = false;
    rig.control->refreshVisibility();
    rig.tick (5);
    EXPECT_FALSE (rig.control->panel().isVisible());
}
