#include "gui/band/BandRig.h"
#include "gui/look/VelmoraLookandFeel.h"
#include "support/Pictures.h"
#include "support/PluginRig.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using Box = juce::Rectangle<int>;
using testing::ElementsAre;

TEST (SolvaneControlPanelTest, layoutOfAShortAndALongText)
{
    SolvaneControlPanel panel;
    EXPECT_EQ (panel.getLocalBounds(), Box (0, 0, 186, 34));
    EXPECT_EQ (panel.readout.getBounds(), Box (63, 7, 60, 20));
    EXPECT_EQ (panel.bypassButton.getBounds(), Box (41, 10, 14, 14));
    EXPECT_EQ (panel.soloButton.getBounds(), Box (131, 9, 14, 14));
    EXPECT_EQ (panel.filterTypeButton.getBounds(), Box (21, 14, 16, 12));
    EXPECT_EQ (panel.closeArea(), Box (155, 11, 12, 12));

    panel.showText ("100% MID 9% SIDE", true);
    EXPECT_EQ (panel.readout.getBounds(), Box (43, 7, 100, 20));
    EXPECT_EQ (panel.bypassButton.getBounds(), Box (23, 10, 14, 14));
    EXPECT_EQ (panel.soloButton.getBounds(), Box (147, 9, 14, 14));
    EXPECT_EQ (panel.filterTypeButton.getBounds(), Box (3, 14, 16, 12));
    EXPECT_EQ (panel.closeArea(), Box (171, 11, 12, 12));
}

TEST (SolvaneControlPanelTest, fadesInFiveSteps)
{
    SolvaneControlPanel panel;
    EXPECT_FALSE (panel.isVisible());
    panel.setShown (true);
    EXPECT_TRUE (panel.isVisible());

    for (int step = 1; step <= 5; ++step)
    {
        EXPECT_TRUE (panel.tick());
        EXPECT_NEAR (panel.getAlpha(), static_cast<float> (step) / 5.0f, 0.01f);
    }

    EXPECT_FALSE (panel.tick());
    panel.setShown (false);

    for (int step = 0; step < 5; ++step)
        EXPECT_TRUE (panel.tick());

    EXPECT_FALSE (panel.isVisible());
}

TEST (SolvaneControlPanelTest, theCrossDeletesTheBand)
{
    BandRig rig;
    rig.place (3910, 2.0f);
    auto& panel = rig.control->panel();
    const auto at = [&] (juce::Point<int> point)
    {
        auto event = rig.event (point);
        return juce::MouseEvent (event.source,
                                 point.toFloat(),
                                 event.mods,
                                 event.pressure,
                                 event.orientation,
                                 event.rotation,
                                 event.tiltX,
                                 event.tiltY,
                                 &panel,
                                 &panel,
                                 event.eventTime,
                                 point.toFloat(),
                                 event.eventTime,
                                 1,
                                 false);
    };

    panel.mouseUp (at ({ 100, 17 }));
    EXPECT_TRUE (rig.log.empty());
    panel.mouseUp (at (panel.closeArea().getCentre()));
    EXPECT_THAT (rig.log, ElementsAre ("close"));

    // Not while the band is silent.
    rig.control->setDimmed (true);
    panel.mouseUp (at (panel.closeArea().getCentre()));
    EXPECT_EQ (rig.log.size(), 1u);
}

TEST (SolvaneControlPanelTest, aClickOnAButtonReachesTheBand)
{
    BandRig rig;
    rig.place (3910, 2.0f);
    auto& panel = rig.control->panel();

    for (auto* button : { &panel.bypassButton, &panel.filterTypeButton, &panel.soloButton })
        static_cast<juce::Button*> (button)->triggerClick();

    PluginRig::serveMessagesUntil ([&] { return rig.log.size() == 3; });
    EXPECT_THAT (rig.log, ElementsAre ("bypass on", "shelf on", "solo on"));
}

TEST (SolvaneControlPanelTest, aSoloedBandIsNotBypassedAndABypassedOneNotSoloed)
{
    BandRig rig;
    rig.place (3910, 2.0f);
    const auto press = [&] (int letter)
    { rig.control->keyPressed (juce::KeyPress (letter, juce::ModifierKeys (juce::ModifierKeys::altModifier), 0)); };

    rig.control->setSolo (true);
    press ('B');
    EXPECT_TRUE (rig.log.empty());
    press ('S');
    EXPECT_THAT (rig.log, ElementsAre ("solo off"));

    rig.log.clear();
    rig.control->setSolo (false);
    rig.control->setBypass (true);
    press ('S');
    EXPECT_TRUE (rig.log.empty());
    press ('B');
    EXPECT_THAT (rig.log, ElementsAre ("bypass off"));

    rig.log.clear();
    rig.control->setMainBypass (true);
    press ('B');
    EXPECT_TRUE (rig.log.empty());
}

TEST (SolvaneControlPanelTest, theShelfIsOfferedFrom1600Hertz)
{
    BandRig rig;
    rig.place (1590, 2.0f);
    EXPECT_FALSE (rig.control->panel().filterTypeButton.isEnabled());
    rig.control->setFrequency (1600.0f);
    EXPECT_TRUE (rig.control->panel().filterTypeButton.isEnabled());

    // Going below keeps the shelf, but no longer offers to change it.
    rig.control->setHighShelf (true);
    rig.control->setFrequency (1000.0f);
    EXPECT_TRUE (rig.control->bandState().highShelf);
    EXPECT_FALSE (rig.control->panel().filterTypeButton.isEnabled());
}

//======================================================================================================================
TEST (OverlapPanelUseTest, aBandAtTheCeilingTakesTheUpperPanelAndGivesItBack)
{
    BandRig rig;
    rig.makeOverlapPanels();
    rig.place (19500, 10.7f);
    EXPECT_TRUE (rig.upperInUse);
    EXPECT_EQ (&rig.control->panel(), rig.upperPanel.get());
    EXPECT_TRUE (rig.upperPanel->isVisible());
    EXPECT_EQ (rig.upperPanel->getBounds(), Box (248, 35, 186, 34));
    EXPECT_EQ (rig.upperPanel->readout.getText(), "+10.7dB");

    rig.control->setGain (0.0f);
    EXPECT_FALSE (rig.upperInUse);
    EXPECT_NE (&rig.control->panel(), rig.upperPanel.get());
    EXPECT_FALSE (rig.upperPanel->isVisible());
}

TEST (OverlapPanelUseTest, aBandAtTheFloorTakesTheLowerPanel)
{
    BandRig rig;
    rig.makeOverlapPanels();
    rig.place (320, 11.0f);
    EXPECT_TRUE (rig.lowerInUse);
    EXPECT_FALSE (rig.upperInUse);
    EXPECT_TRUE (rig.lowerPanel->isVisible());
}

TEST (OverlapPanelUseTest, aPanelThatAnotherBandHasIsLeftToIt)
{
    BandRig rig;
    rig.makeOverlapPanels();
    rig.upperInUse = true;
    rig.place (19500, 10.7f);
    EXPECT_NE (&rig.control->panel(), rig.upperPanel.get());
    rig.control.reset();
    EXPECT_TRUE (rig.upperInUse);
}

TEST (OverlapPanelUseTest, aBandThatGoesGivesItsPanelBack)
{
    BandRig rig;
    rig.makeOverlapPanels();
    rig.place (19500, 10.7f);
    const auto before = rig.overlapRebuilds;
    rig.control.reset();
    EXPECT_FALSE (rig.upperInUse);
    EXPECT_FALSE (rig.upperPanel->isVisible());
    EXPECT_EQ (rig.overlapRebuilds, before + 1);
}

TEST (OverlapPanelUseTest, aPanelThatTheEditorTookAwayIsNotTouchedAgain)
{
    BandRig rig;
    rig.makeOverlapPanels();
    rig.place (19500, 10.7f);
    rig.upperPanel.reset();
    rig.control->setGain (10.8f);
    EXPECT_TRUE (rig.control->panel().getParentComponent() == rig.control.get());

    // A new one is taken as soon as it is there.
    rig.makeOverlapPanels();
    rig.control->updateBounds();
    EXPECT_EQ (&rig.control->panel(), rig.upperPanel.get());
}

TEST (OverlapPanelUseTest, leavesItsPlaceToWhatLiesUnderIt)
{
    BandRig rig;
    rig.makeOverlapPanels();
    rig.place (320, 11.0f);
    rig.control->setPanelHidden (true);
    EXPECT_FALSE (rig.lowerPanel->isVisible());
    rig.control->setPanelHidden (false);
    EXPECT_TRUE (rig.lowerPanel->isVisible());
}

TEST (OverlapPanelUseTest, hidesUnderAnOpenWindow)
{
    BandRig rig;
    rig.makeOverlapPanels();
    rig.place (19500, 10.7f);
    rig.overlay = true;
    rig.control->refreshVisibility();
    EXPECT_FALSE (rig.upperPanel->isVisible());
}

//======================================================================================================================
TEST (MidSideControlPanelTest, layout)
{
    MidSideControlPanel panel;
    EXPECT_EQ (panel.getLocalBounds(), Box (0, 0, 120, 16));
    EXPECT_EQ (panel.slider.getBounds(), Box (15, 1, 90, 14));
    EXPECT_EQ (panel.midButton.getBounds(), Box (8, 3, 8, 8));
    EXPECT_EQ (panel.sideButton.getBounds(), Box (107, 3, 8, 8));
}

TEST (MidSideControlPanelTest, touchesTheLowerEdgeOfTheFocusedBandsPanel)
{
    BandRig rig;
    rig.makeMidSidePanel();
    rig.place (3910, 0.0f);
    rig.control->setMidSide (0.3f);
    rig.control->setSelected (true);
    EXPECT_EQ (rig.midSide->servedBand(), 0);
    EXPECT_TRUE (rig.midSide->isVisible());
    EXPECT_FLOAT_EQ (static_cast<float> (rig.midSide->slider.getValue()), 0.3f);

    const auto panel = rig.editor.getLocalArea (rig.control.get(), rig.control->panel().getBounds());
    EXPECT_EQ (rig.midSide->getBounds(), Box (panel.getCentreX() - 60, panel.getBottom(), 120, 16));
}

TEST (MidSideControlPanelTest, isNotForAMonoBus)
{
    BandRig rig;
    rig.makeMidSidePanel();
    rig.stereoBus = false;
    rig.place (3910, 0.0f);
    rig.control->setSelected (true);
    EXPECT_FALSE (rig.midSide->isVisible());
}

TEST (MidSideControlPanelTest, fadesInAndGoesAfterAWhile)
{
    MidSideControlPanel panel;
    panel.showFor (3, 0.5f);

    for (int tick = 0; tick < 10; ++tick)
        panel.timerCallback();

    EXPECT_FLOAT_EQ (panel.getAlpha(), 1.0f);
    panel.hideSoon();

    for (int tick = 0; tick < 10; ++tick)
        panel.timerCallback();

    EXPECT_FLOAT_EQ (panel.getAlpha(), 1.0f);

    for (int tick = 0; tick < 10; ++tick)
        panel.timerCallback();

    EXPECT_FALSE (panel.isVisible());
}

TEST (MidSideControlPanelTest, writesAValueAsAGesture)
{
    MidSideControlPanel panel;
    std::vector<std::string> log;
    panel.onGestureBegin = [&] (int band) { log.push_back ("begin " + std::to_string (band)); };
    panel.onGestureEnd = [&] (int band) { log.push_back ("end " + std::to_string (band)); };
    panel.onValue = [&] (int, float value) { log.push_back ("value " + juce::String (value, 2).toStdString()); };

    // Nobody is served yet.
    panel.setTo (0.2f);
    EXPECT_TRUE (log.empty());

    panel.showFor (4, 0.5f);
    EXPECT_TRUE (log.empty());
    panel.setTo (1.0f);
    EXPECT_THAT (log, ElementsAre ("begin 4", "value 1.00", "end 4"));

    // A value that comes from the parameter is not written back.
    log.clear();
    panel.setValue (0.25f);
    EXPECT_TRUE (log.empty());
    panel.slider.setValue (0.75, juce::sendNotificationSync);
    EXPECT_THAT (log, ElementsAre ("value 0.75"));
}

TEST (SolvaneControlPanelTest, everyTextFitsItsReadout)
{
    const std::atomic<float> levelMatch { 1.0f };
    VelmoraLookandFeel look (levelMatch);
    BandRig rig;
    rig.editor.setLookAndFeel (&look);
    rig.place (19990, -10.5f);
    auto& panel = rig.control->panel();
    const auto widthOf = [&] (const juce::String& text)
    { return look.getLabelFont (panel.readout).getStringWidthFloat (text); };

    for (const auto* text : { "+12.0dB", "-12.0dB", "19990Hz", "5.0Q", "SOLOD" })
        EXPECT_LE (widthOf (text), 60.0f) << text;

    panel.showText ("100% SIDE 98% MID", true);
    EXPECT_LE (widthOf ("100% SIDE 98% MID"), 100.0f);
    EXPECT_LE (widthOf ("100% MID 98% SIDE"), 100.0f);

    rig.makeMidSidePanel();
    rig.control->setMidSide (0.9f);
    rig.control->setSelected (true);
    rig.tick (8);

    for (int tick = 0; tick < 12; ++tick)
        rig.midSide->timerCallback();

    (void) Pictures::of (rig.editor, "editor");
    rig.midSide->onUse (true);
    (void) Pictures::of (rig.editor, "editor-midside", 2.0f);
    rig.editor.setLookAndFeel (nullptr);
}
