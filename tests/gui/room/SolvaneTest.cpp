#include "gui/room/Solvane.h"

#include "gui/band/BandPanels.h"
#include "gui/room/BandColours.h"
#include "gui/room/RoomCases.h"
#include "gui/room/RoomMouse.h"
#include "support/Pictures.h"
#include "support/PluginRig.h"
#include "support/RepaintCounter.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

using Kind = Settings::Parameter;

namespace
{
/** Where the room stands in the window, and how much smaller it is. */
constexpr juce::Point<int> roomPosition { 25, 42 };
constexpr int marginX = 50;
constexpr int marginY = 90;

void serveMessages()
{
    auto arrived = std::make_shared<bool> (false);
    juce::MessageManager::callAsync ([arrived] { *arrived = true; });
    PluginRig::serveMessagesUntil ([&] { return *arrived; });
}
} // namespace

class SolvaneTest : public testing::Test
{
protected:
    SolvaneTest()
    {
        solvane.setSize (630, 622);
        solvane.setVisible (true);
        solvane.pretendToShow();
        solvane.onBandsOutOfScale = [this] { ++outOfScaleCount; };
    }

    [[nodiscard]] float value (int band, Kind kind) const { return model.getBandValue (band, kind); }

    [[nodiscard]] int bandsInUse() const
    {
        auto count = 0;

        for (int band = 0; band < bandCount; ++band)
            count += value (band, Kind::active) != 0.0f ? 1 : 0;

        return count;
    }

    void doubleClick (juce::Point<float> position)
    {
        solvane.mouseDoubleClick (roomMouse::eventAt (solvane, position, position, {}, 2));
    }

    void setBand (int band, float gainDb)
    {
        rig.setBand (band, 1000.0f, gainDb);
        serveMessages();
    }

    /** The room without what hangs in it. */
    [[nodiscard]] juce::Image walls()
    {
        juce::Image picture (
            juce::Image::RGB, solvane.getWidth(), solvane.getHeight(), true, juce::SoftwareImageType());
        juce::Graphics graphics (picture);
        solvane.paint (graphics);
        return picture;
    }

    [[nodiscard]] juce::Component& child (const char* id) const { return *solvane.findChildWithID (id); }
    [[nodiscard]] juce::String scaleText() const { return dynamic_cast<juce::Label&> (child ("scaleLabel")).getText(); }

    PluginRig rig;
    PluginModel& model = rig.processor.model;
    InterfaceState& state = model.interfaceState;
    Solvane solvane { rig.processor };
    int outOfScaleCount = 0;
};

TEST_F (SolvaneTest, whatStandsInTheRoomStandsWhereTheIndependentComputationPutsIt)
{
    for (const auto& [id, bounds] : roomCases::byId ("room-default")["expected"].items())
        EXPECT_EQ (child (id.c_str()).getBounds(), juce::Rectangle<int> (bounds[0], bounds[1], bounds[2], bounds[3]))
            << id;

    EXPECT_EQ (state.roomWidth, 630);
    EXPECT_EQ (state.roomHeight, 622);
}

TEST_F (SolvaneTest, aDoubleClickHangsTheBandOfTheIndependentComputation)
{
    for (const auto* id :
         { "double-click-middle", "double-click-shelf", "double-click-bottom-edge", "double-click-large-low" })
    {
        const auto& inputs = roomCases::byId (id)["inputs"];
        const auto& expected = roomCases::byId (id)["expected"];
        solvane.setSize (inputs["editor"][0].get<int>() - marginX, inputs["editor"][1].get<int>() - marginY);
        const juce::Point<int> inWindow (inputs["x"], inputs["y"]);
        doubleClick ((inWindow - roomPosition).toFloat());
        EXPECT_EQ (bandsInUse(), 1) << id;
        EXPECT_NEAR (value (0, Kind::frequency), expected["frequency"].get<float>(), 0.01f) << id;
        EXPECT_EQ (value (0, Kind::gain), 0.0f) << id;
        EXPECT_EQ (value (0, Kind::q), 1.0f) << id;
        EXPECT_EQ (value (0, Kind::highShelf), expected["highshelf"].get<float>()) << id;
        solvane.deleteBand (0, false);
    }
}

TEST_F (SolvaneTest, anEleventhBandCannotBeAdded)
{
    for (int band = 0; band < bandCount; ++band)
        EXPECT_EQ (solvane.addBand (1000.0f, -1, false), band);

    EXPECT_EQ (solvane.addBand (1000.0f, -1, false), -1);
    doubleClick ({ 300.0f, 300.0f });
    EXPECT_EQ (bandsInUse(), bandCount);
}

TEST_F (SolvaneTest, theFirstFreeBandIsTaken)
{
    for (int band = 0; band < 4; ++band)
        solvane.addBand (1000.0f, -1, false);

    solvane.deleteBand (2, false);
    EXPECT_EQ (solvane.addBand (2000.0f, -1, false), 2);
    EXPECT_EQ (value (2, Kind::frequency), 2000.0f);
}

TEST_F (SolvaneTest, noBandIsAddedWhereAPanelHangs)
{
    state.upperPanelInUse = true;
    EXPECT_EQ (solvane.addBand (14800.0f, -1, false), -1);
    EXPECT_EQ (solvane.addBand (14790.0f, -1, false), 0);
    state.lowerPanelInUse = true;
    EXPECT_EQ (solvane.addBand (430.0f, -1, false), -1);
    EXPECT_EQ (solvane.addBand (440.0f, -1, false), 1);
}

TEST_F (SolvaneTest, aRoomThatIsNotOnScreenAddsNothing)
{
    Solvane hidden (rig.processor);
    hidden.setSize (630, 622);
    EXPECT_EQ (hidden.addBand (1000.0f, -1, false), -1);
    EXPECT_EQ (bandsInUse(), 0);
}

TEST_F (SolvaneTest, aDeletedBandIsAsIfItHadNeverBeen)
{
    for (const auto& [kind, plain] : { std::pair (Kind::frequency, 5000.0f),
                                       std::pair (Kind::gain, 5.0f),
                                       std::pair (Kind::q, 3.0f),
                                       std::pair (Kind::solo, 1.0f),
                                       std::pair (Kind::bypass, 1.0f),
                                       std::pair (Kind::active, 1.0f),
                                       std::pair (Kind::highShelf, 1.0f),
                                       std::pair (Kind::midSide, 0.8f) })
        rig.set (4, kind, plain);

    model.storedBandGains[4] = 5.0f;
    solvane.deleteBand (4, false);
    EXPECT_EQ (value (4, Kind::gain), 0.0f);
    EXPECT_EQ (value (4, Kind::q), 1.0f);
    EXPECT_EQ (value (4, Kind::solo), 0.0f);
    EXPECT_EQ (value (4, Kind::bypass), 0.0f);
    EXPECT_EQ (value (4, Kind::active), 0.0f);
    EXPECT_EQ (value (4, Kind::highShelf), 0.0f);
    EXPECT_EQ (value (4, Kind::midSide), 0.5f);
    EXPECT_EQ (value (4, Kind::frequency), 5000.0f);
    EXPECT_EQ (model.storedBandGains[4], 0.0f);
}

TEST_F (SolvaneTest, theHintShowsWhileThereIsNoBand)
{
    EXPECT_TRUE (child ("hintLabel").isVisible());
    solvane.addBand (1000.0f, -1, false);
    EXPECT_FALSE (child ("hintLabel").isVisible());
    solvane.deleteBand (0, false);
    EXPECT_TRUE (child ("hintLabel").isVisible());
}

TEST_F (SolvaneTest, aGainNearTheEndOfTheScaleWidensIt)
{
    model.targetScaleDb = 4.0f;
    model.displayScaleDb = 4.0f;
    setBand (0, 3.8f);
    EXPECT_EQ (model.targetScaleDb, 4.0f);
    setBand (0, -4.0f);
    EXPECT_EQ (model.targetScaleDb, 8.0f);
    EXPECT_EQ (scaleText(), "-8dB");
    EXPECT_EQ (outOfScaleCount, 0);
}

TEST_F (SolvaneTest, theLargestScaleStays)
{
    setBand (0, 12.0f);
    EXPECT_EQ (model.targetScaleDb, 12.0f);
}

TEST_F (SolvaneTest, theGainOfABandThatIsNotThereWidensNothing)
{
    model.targetScaleDb = 2.0f;
    model.displayScaleDb = 2.0f;
    rig.set (0, Kind::gain, 9.0f);
    serveMessages();
    EXPECT_EQ (model.targetScaleDb, 2.0f);
}

TEST_F (SolvaneTest, theAutomaticScaleCountsOnlyBandsInUse)
{
    setBand (0, 3.0f);
    rig.set (1, Kind::gain, 11.0f);
    solvane.setScale (-1.0f);
    EXPECT_EQ (model.targetScaleDb, 4.0f);
    EXPECT_TRUE (state.scaleAnimating);
}

TEST_F (SolvaneTest, aTwelveDecibelBandTakesTheNeedItselfAndTheLabelItsWholePart)
{
    setBand (0, 12.0f);
    solvane.setScale (-1.0f);
    EXPECT_FLOAT_EQ (model.targetScaleDb, 12.1f);
    EXPECT_EQ (scaleText(), "-12dB");
}

TEST_F (SolvaneTest, aScaleChosenByHandSaysWhenItLeavesABandBeyond)
{
    setBand (0, 8.0f);
    solvane.setScale (8.0f);
    EXPECT_EQ (outOfScaleCount, 0);
    solvane.setScale (2.0f);
    EXPECT_EQ (outOfScaleCount, 1);
    EXPECT_EQ (model.targetScaleDb, 2.0f);
}

TEST_F (SolvaneTest, theScaleCanBeReachedUnderThePanelOfABandOnTheFloor)
{
    juce::Component window;
    BandPanels panels (window, rig.processor);
    panels.rebuild();
    auto& lower = *state.lowerPanel;
    rig.set ("paramMode", 1.0f);
    setBand (0, 11.0f);
    rig.set (0, Kind::frequency, 320.0f);
    serveMessages();
    solvane.layOutControls();
    ASSERT_TRUE (lower.isVisible());

    auto& selector = child ("scaleSelector");
    selector.mouseEnter (roomMouse::eventAt (selector, { 5.0f, 5.0f }));
    EXPECT_FALSE (lower.isVisible());
    selector.mouseExit (roomMouse::eventAt (selector, { -5.0f, 5.0f }));
    EXPECT_TRUE (lower.isVisible());
}

TEST_F (SolvaneTest, mixShowsTheQThatMasterHeldBack)
{
    solvane.addBand (1000.0f, -1, false);
    rig.set (0, Kind::q, 3.0f);
    serveMessages();
    const auto& band = *solvane.roomBands().find (0);
    EXPECT_EQ (band.bandState().q, 1.5f);
    rig.set ("paramMode", 1.0f);
    serveMessages();
    EXPECT_EQ (band.bandState().q, 3.0f);
    rig.set ("paramMode", 0.0f);
    serveMessages();
    EXPECT_EQ (band.bandState().q, 1.5f);
}

TEST_F (SolvaneTest, theEmptyRoomTellsWhereABandWouldHang)
{
    std::optional<float> frequency;
    juce::Colour colour;
    solvane.onHover = [&] (float hz, bool on, juce::Colour bandColour)
    {
        frequency = on ? std::optional (hz) : std::nullopt;
        colour = bandColour;
    };
    solvane.addBand (1000.0f, -1, false);
    solvane.mouseMove (roomMouse::eventAt (solvane, { 300.0f, 258.0f }));
    ASSERT_TRUE (frequency.has_value());
    EXPECT_NEAR (*frequency, 3914.67f, 0.05f);
    EXPECT_EQ (colour, bandColours()[1]);
    EXPECT_TRUE (child ("addBandMarker").isVisible());
    solvane.mouseExit (roomMouse::eventAt (solvane, { -1.0f, 258.0f }));
    EXPECT_FALSE (frequency.has_value());
    EXPECT_FALSE (child ("addBandMarker").isVisible());
}

TEST_F (SolvaneTest, onceEveryBandIsUsedTheFirstOnesColourIsShown)
{
    juce::Colour colour;
    solvane.onHover = [&] (float, bool, juce::Colour bandColour) { colour = bandColour; };

    for (int band = 0; band < bandCount; ++band)
        solvane.addBand (1000.0f, -1, false);

    solvane.mouseMove (roomMouse::eventAt (solvane, { 300.0f, 258.0f }));
    EXPECT_EQ (colour, bandColours()[0]);
}

TEST_F (SolvaneTest, comingIntoTheRoomClosesAnOpenMenu)
{
    auto closed = 0;
    solvane.onCloseMenu = [&closed] { ++closed; };
    solvane.mouseEnter (roomMouse::eventAt (solvane, { 300.0f, 258.0f }));
    EXPECT_EQ (closed, 0);
    state.bandsPanelOpen = true;
    solvane.mouseEnter (roomMouse::eventAt (solvane, { 300.0f, 258.0f }));
    EXPECT_EQ (closed, 1);
    state.analysisOpen = true;
    solvane.mouseEnter (roomMouse::eventAt (solvane, { 300.0f, 258.0f }));
    EXPECT_EQ (closed, 1);
}

TEST_F (SolvaneTest, marksStandOnTheWallsInTheirBandsColour)
{
    rig.set ("paramMode", 1.0f);
    setBand (0, 6.0f);
    const auto picture = walls();
    const auto row = juce::roundToInt (RoomGeometry {}.wallRow (1000.0f, 6.0f));
    EXPECT_EQ (picture.getPixelAt (31, row), bandColours()[0]);
    EXPECT_EQ (picture.getPixelAt (630 - 31, row), bandColours()[0]);
}

TEST_F (SolvaneTest, theMarkOfABypassedBandIsGrey)
{
    rig.set ("paramMode", 1.0f);
    setBand (0, 6.0f);
    rig.set (0, Kind::bypass, 1.0f);
    serveMessages();
    const auto row = juce::roundToInt (RoomGeometry {}.wallRow (1000.0f, 6.0f));
    EXPECT_EQ (walls().getPixelAt (31, row), juce::Colour (0xff555555));
}

TEST_F (SolvaneTest, aSoloedBandHasNoMarkButRedLinesAlongItsEdges)
{
    rig.set ("paramMode", 1.0f);
    solvane.addBand (1000.0f, -1, false);
    rig.set (0, Kind::solo, 1.0f);
    serveMessages();
    const auto picture = walls();
    EXPECT_EQ (Pictures::count (picture, picture.getBounds(), bandColours()[0]), 0);

    auto red = 0;

    for (int y = 0; y < picture.getHeight(); ++y)
        for (int x = 0; x < 120; ++x)
            red += picture.getPixelAt (x, y).getRed() > picture.getPixelAt (x, y).getGreen() + 60 ? 1 : 0;

    // Half of each of two lines of some 120 pixels.
    EXPECT_GT (red, 80);
}

TEST_F (SolvaneTest, theBandNearestToTheFrontLiesOnTop)
{
    const auto& item = roomCases::byId ("stack-1");

    for (const auto& [slot, gain] : item["inputs"]["gains"].items())
        rig.setBand (std::stoi (slot), 1000.0f, gain);

    serveMessages();
    EXPECT_EQ (solvane.roomBands().stackingOrder(), item["expected"].get<std::vector<int>>());

    rig.set (0, Kind::gain, 9.0f);
    serveMessages();
    EXPECT_EQ (solvane.roomBands().stackingOrder().back(), 0);
}

TEST_F (SolvaneTest, aPressGetsToTheBandOfTheIndependentComputation)
{
    const auto& item = roomCases::byId ("hit-1");

    for (const auto& band : item["inputs"]["bands"])
        rig.setBand (band["slot"], band["frequency"], band["gain"]);

    serveMessages();
    const juce::Point<int> inWindow (item["inputs"]["x"], item["inputs"]["y"]);
    EXPECT_EQ (solvane.getComponentAt (inWindow - roomPosition),
               solvane.roomBands().find (item["expected"][1].get<int>()));
}

TEST_F (SolvaneTest, theSelectorLiesAboveEveryBand)
{
    solvane.addBand (330.0f, -1, false);
    solvane.addBand (340.0f, -1, false);
    EXPECT_EQ (solvane.getChildren().getLast(), &child ("scaleSelector"));
}

TEST_F (SolvaneTest, theTabulatorWalksFromLowToHigh)
{
    for (const auto frequency : { 5000.0f, 500.0f, 12000.0f })
        solvane.addBand (frequency, -1, false);

    rig.set (2, Kind::frequency, 1000.0f);
    serveMessages();
    const auto placeOf = [this] (int band) { return solvane.roomBands().find (band)->getExplicitFocusOrder(); };
    EXPECT_LT (placeOf (1), placeOf (2));
    EXPECT_LT (placeOf (2), placeOf (0));
}

TEST_F (SolvaneTest, aControlsGainReachesTheParameterAndTheBaseOfTheScale)
{
    solvane.addBand (1000.0f, -1, false);
    solvane.roomBands().find (0)->onGain (0, 0.25f);
    EXPECT_NEAR (value (0, Kind::gain), 6.0f, 0.001f);
    EXPECT_EQ (model.storedBandGains[0], value (0, Kind::gain));
    EXPECT_TRUE (state.bandChangedByUser);
}

TEST_F (SolvaneTest, aGainTypedBeyondTheScaleOpensItAndIsTakenAsTyped)
{
    solvane.addBand (1000.0f, -1, false);
    model.targetScaleDb = 4.0f;
    model.displayScaleDb = 4.0f;
    state.typedGainDb = 7.0f;
    solvane.roomBands().find (0)->onCollapse (-1, false);
    EXPECT_EQ (model.targetScaleDb, 8.0f);
    solvane.roomBands().find (0)->onGain (0, 0.0f);
    EXPECT_NEAR (value (0, Kind::gain), 7.0f, 0.001f);
    EXPECT_EQ (state.typedGainDb, 0.0f);
}

TEST_F (SolvaneTest, aControlsFrequencyStaysInTheRoomAndOutOfAnothersPanel)
{
    solvane.addBand (1000.0f, -1, false);
    auto* control = solvane.roomBands().find (0);
    control->onFrequency (0, 30000.0f, false);
    EXPECT_EQ (value (0, Kind::frequency), 20000.0f);
    control->onFrequency (0, 1000.0f, false);
    state.upperPanelInUse = true;
    control->onFrequency (0, 14800.0f, false);
    EXPECT_EQ (value (0, Kind::frequency), 1000.0f);
    control->onFrequency (0, 14700.0f, false);
    EXPECT_NEAR (value (0, Kind::frequency), 14700.0f, 0.01f);
}

TEST_F (SolvaneTest, aControlsQIsMappedAndLimited)
{
    solvane.addBand (1000.0f, -1, false);
    solvane.roomBands().find (0)->onQ (0, 0.5f);
    EXPECT_NEAR (value (0, Kind::q), 2.8f, 0.06f);
    solvane.roomBands().find (0)->onQ (0, 1.7f);
    EXPECT_NEAR (value (0, Kind::q), 5.0f, 0.001f);
}

TEST_F (SolvaneTest, aSoloDimsTheOthersUntilItEnds)
{
    solvane.addBand (1000.0f, -1, false);
    solvane.addBand (5000.0f, -1, false);
    const auto dimmed = [this] (int band) { return solvane.roomBands().find (band)->bandState().dimmed; };
    solvane.roomBands().find (0)->onSolo (0, true);
    serveMessages();
    EXPECT_FALSE (dimmed (0));
    EXPECT_TRUE (dimmed (1));
    solvane.deleteBand (0, false);
    EXPECT_FALSE (dimmed (1));
}

TEST_F (SolvaneTest, aBandThatIsClosedIsGone)
{
    solvane.addBand (1000.0f, -1, false);
    solvane.roomBands().find (0)->onClose (0);
    EXPECT_EQ (solvane.roomBands().find (0), nullptr);
    EXPECT_EQ (bandsInUse(), 0);
}

TEST_F (SolvaneTest, oneBandHasTheFocusUntilTheMouseLeaves)
{
    solvane.addBand (1000.0f, -1, false);
    solvane.addBand (5000.0f, -1, false);
    auto* control = solvane.roomBands().find (0);
    control->onClicked (0);
    EXPECT_TRUE (control->isSelected());
    EXPECT_FALSE (solvane.roomBands().find (1)->isSelected());
    EXPECT_EQ (solvane.roomBands().focusBand(), 0);
    control->onLeft();
    EXPECT_FALSE (control->isSelected());
    EXPECT_EQ (solvane.roomBands().focusBand(), -1);
}

TEST_F (SolvaneTest, comingIntoTheRoomEndsTheHoverButNotTheTyping)
{
    solvane.addBand (1000.0f, -1, false);
    auto* control = solvane.roomBands().find (0);
    const auto enter = [this] { solvane.mouseEnter (roomMouse::eventAt (solvane, { 300.0f, 30.0f })); };
    control->panel().openEditor();
    ASSERT_TRUE (control->panel().isTyping());
    enter();
    EXPECT_TRUE (control->panel().isTyping());
    control->panel().closeEditor();
    enter();
    EXPECT_FALSE (control->isSelected());
}

TEST_F (SolvaneTest, gesturesReachTheHost)
{
    struct Listener final : juce::AudioProcessorParameter::Listener
    {
        void parameterValueChanged (int, float) override {}
        void parameterGestureChanged (int, bool starting) override { heard.push_back (starting); }
        std::vector<bool> heard;
    } listener;

    solvane.addBand (1000.0f, -1, false);
    auto* parameter = rig.processor.getAPVTS().getParameter ("band_Q_0");
    parameter->addListener (&listener);
    solvane.roomBands().find (0)->onGestureBegin (0, Kind::q);
    solvane.roomBands().find (0)->onGestureEnd (0, Kind::q);
    parameter->removeListener (&listener);
    EXPECT_THAT (listener.heard, testing::ElementsAre (true, false));
}

TEST_F (SolvaneTest, bandsThatTheHostSwitchesOnAndOffComeAndGo)
{
    rig.set (5, Kind::active, 1.0f);
    serveMessages();
    EXPECT_NE (solvane.roomBands().find (5), nullptr);
    rig.set (5, Kind::active, 0.0f);
    serveMessages();
    EXPECT_EQ (solvane.roomBands().find (5), nullptr);
}

TEST_F (SolvaneTest, tenBandsAreDrawnWithoutADisplay)
{
    rig.prepare (48000.0, 512);
    rig.set ("paramMode", 1.0f);

    for (int band = 0; band < bandCount; ++band)
        rig.setBand (
            band, 400.0f * std::pow (1.45f, static_cast<float> (band)), static_cast<float> (band * 5 % 17 - 8), 2.0f);

    rig.waitForWorkers();
    const auto end = solvane.wallWorker().tickCount() + 5;
    PluginRig::serveMessagesUntil ([&] { return solvane.wallWorker().tickCount() >= end; });
    serveMessages();
    const auto picture = Pictures::of (solvane, "room-ten-bands");
    std::ignore = Pictures::of (solvane, "room-ten-bands-2x", 2.0f);

    EXPECT_EQ (picture.getBounds(), solvane.getLocalBounds());
    const auto marks = walls();

    for (int band = 0; band < bandCount; ++band)
        EXPECT_GT (Pictures::count (marks, marks.getBounds(), bandColours()[static_cast<std::size_t> (band)], 40), 4)
            << band;
}

TEST_F (SolvaneTest, nothingAsksToBePaintedWhileNothingChanges)
{
    rig.prepare (48000.0, 512);
    setBand (0, 6.0f);
    rig.waitForWorkers();
    auto repaints = 0;

    const auto waitForTicks = [this] (int count)
    {
        const auto end = solvane.wallWorker().tickCount() + count;
        PluginRig::serveMessagesUntil ([&] { return solvane.wallWorker().tickCount() >= end; });
        serveMessages();
    };

    solvane.setCachedComponentImage (new RepaintCounter (solvane, repaints));

    // What has just been set may still be on its way to the walls.
    for (int attempt = 0; attempt < 10; ++attempt)
    {
        repaints = 0;
        waitForTicks (25);

        if (repaints == 0)
            break;
    }

    EXPECT_EQ (repaints, 0);

    rig.set (0, Kind::gain, 3.0f);
    waitForTicks (5);
    EXPECT_GT (repaints, 0);
}

TEST_F (SolvaneTest, aStoppedTransportFreezesTheSpectrumAndEmptiesIt)
{
    const auto play = [this] (bool playing)
    {
        // A host is believed once its position has moved.
        for (const juce::int64 time : { 0, 512 })
        {
            juce::AudioPlayHead::PositionInfo position;
            position.setIsPlaying (playing);
            position.setTimeInSamples (time);
            model.transport.update (position, false);
        }

        model.channels.fire (Channels::transportPlaying);
    };

    auto& spectrum = rig.processor.liveAnalysis().spectrum();
    auto& frozen = spectrum.frozen;
    const auto loudest = [&spectrum]
    {
        LiveSpectrum::Magnitudes magnitudes;
        spectrum.copy (magnitudes);
        return *std::ranges::max_element (magnitudes);
    };
    play (true);
    solvane.serveTransport();
    EXPECT_FALSE (frozen);

    LiveSpectrum::Magnitudes heard;
    heard.fill (2.0f);
    ASSERT_TRUE (spectrum.publish (heard));
    solvane.serveTransport();
    EXPECT_EQ (loudest(), 2.0f);
    play (false);
    EXPECT_TRUE (frozen);
    solvane.serveTransport();
    EXPECT_EQ (loudest(), 0.0f);
    play (true);
    EXPECT_FALSE (frozen);

    // A change alone counts.
    frozen = true;
    play (true);
    EXPECT_TRUE (frozen);
}

TEST_F (SolvaneTest, aRoomThatOpensWhileTheTransportRunsHears)
{
    auto& frozen = rig.processor.liveAnalysis().spectrum().frozen;
    frozen = true;

    for (const juce::int64 time : { 0, 512 })
    {
        juce::AudioPlayHead::PositionInfo position;
        position.setIsPlaying (true);
        position.setTimeInSamples (time);
        model.transport.update (position, false);
    }

    Solvane another (rig.processor);
    EXPECT_FALSE (frozen);
}

TEST_F (SolvaneTest, theScaleIsWholeInTheSmallestWindow)
{
    solvane.setSize (520, 516);
    auto& label = child ("scaleLabel");
    const auto picture = Pictures::of (label);

    for (const auto column : { 0, label.getWidth() - 1 })
        EXPECT_EQ (Pictures::countDrawn (picture, { column, 0, 1, label.getHeight() }), 0) << column;

    EXPECT_GT (Pictures::countDrawn (picture, label.getLocalBounds()), 20);
}

TEST_F (SolvaneTest, aLoadedStateBringsItsScaleWithoutAnAnimation)
{
    model.targetScaleDb = 4.0f;
    model.displayScaleDb = 4.0f;
    model.setStateInformationSet (true, true);
    serveMessages();
    EXPECT_EQ (scaleText(), "-4dB");
    EXPECT_FALSE (state.scaleAnimating);
}

TEST_F (SolvaneTest, roomsComeAndGoWhileParametersMove)
{
    rig.prepare (48000.0, 512);
    std::atomic<bool> ended { false };
    std::thread host (
        [&]
        {
            for (int i = 0; ! ended; ++i)
                rig.set (i % bandCount, Kind::gain, static_cast<float> (i % 23 - 11));
        });

    for (int i = 0; i < 50; ++i)
    {
        Solvane another (rig.processor);
        another.setSize (520 + i, 516);
        serveMessages();
    }

    ended = true;
    host.join();
}
