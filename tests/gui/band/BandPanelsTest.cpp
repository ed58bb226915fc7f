#include "gui/band/BandPanels.h"

#include "gui/band/BandSurroundings.h"
#include "support/PluginRig.h"

#include <gtest/gtest.h>

#include <optional>

namespace
{
/** A window with its shared panels. */
struct Window
{
    PluginRig rig;
    juce::Component editor;
    std::optional<BandPanels> panels { std::in_place, editor, rig.processor };
    BandSurroundings surroundings { rig.processor.model, [] { return RoomGeometry(); } };
};
} // namespace

TEST (BandPanelsTest, bandsFindThemThroughTheModelWhileTheWindowIsOpen)
{
    Window window;
    auto* const upper = window.surroundings.freeOverlapPanel (OverlapPanel::upper);
    auto* const lower = window.surroundings.freeOverlapPanel (OverlapPanel::lower);
    ASSERT_NE (upper, nullptr);
    ASSERT_NE (lower, nullptr);
    EXPECT_NE (upper, lower);
    EXPECT_EQ (upper->getParentComponent(), &window.editor);
    EXPECT_NE (window.surroundings.midSidePanel(), nullptr);

    window.panels.reset();
    EXPECT_EQ (window.surroundings.freeOverlapPanel (OverlapPanel::upper), nullptr);
    EXPECT_EQ (window.surroundings.midSidePanel(), nullptr);
}

TEST (BandPanelsTest, aPanelInUseIsNeitherFreeNorMadeAnew)
{
    Window window;
    auto* const upper = window.surroundings.freeOverlapPanel (OverlapPanel::upper);
    window.surroundings.setOverlapPanelInUse (OverlapPanel::upper, true);
    EXPECT_EQ (window.surroundings.freeOverlapPanel (OverlapPanel::upper), nullptr);
    window.panels->rebuild();
    EXPECT_EQ (window.rig.processor.model.interfaceState.upperPanel.getComponent(), upper);

    window.surroundings.setOverlapPanelInUse (OverlapPanel::upper, false);
    window.panels->rebuild();
    EXPECT_NE (window.surroundings.freeOverlapPanel (OverlapPanel::upper), nullptr);
    EXPECT_EQ (window.editor.getNumChildComponents(), 3);
}

TEST (BandPanelsTest, theMidSidePanelWritesItsBandsParameterAsAGesture)
{
    struct Gestures final : juce::AudioProcessorParameter::Listener
    {
        void parameterValueChanged (int, float) override {}
        void parameterGestureChanged (int, bool starting) override { (starting ? begins : ends) += 1; }
        int begins = 0;
        int ends = 0;
    };

    Window window;
    auto* const parameter = window.rig.processor.getAPVTS().getParameter ("band_midside_4");
    Gestures gestures;
    parameter->addListener (&gestures);
    auto* const panel = window.surroundings.midSidePanel();
    panel->showFor (4, 0.5f);
    panel->setTo (0.25f);
    parameter->removeListener (&gestures);
    EXPECT_FLOAT_EQ (window.rig.processor.model.getBandValue (4, Settings::Parameter::midSide), 0.25f);
    EXPECT_EQ (gestures.begins, 1);
    EXPECT_EQ (gestures.ends, 1);
}

TEST (BandPanelsTest, theMidSidePanelComesOverWhatWasAddedAfterIt)
{
    Window window;
    juce::Component mainWindow;
    window.editor.addAndMakeVisible (mainWindow);
    auto* const panel = window.surroundings.midSidePanel();
    panel->showFor (4, 0.5f);
    EXPECT_GT (window.editor.getIndexOfChildComponent (panel), window.editor.getIndexOfChildComponent (&mainWindow));
}

TEST (BandSurroundingsTest, tellWhatTheModelHolds)
{
    PluginRig rig;
    auto& model = rig.processor.model;
    RoomGeometry room;
    room.scaleDb = 8.0f;
    BandSurroundings surroundings (model, [&] { return room; });

    rig.set ("paramGainScale", 50.0f);
    rig.set ("paramMode", 1.0f);
    EXPECT_EQ (surroundings.gainLimits().mode, FilterMode::mix);
    EXPECT_FLOAT_EQ (surroundings.gainLimits().gainScalePercent, 50.0f);
    EXPECT_FLOAT_EQ (surroundings.gainLimits().scaleDb, 8.0f);

    EXPECT_FALSE (surroundings.isActive (3));
    rig.set ("band_active_3", 1.0f);
    EXPECT_TRUE (surroundings.isActive (3));

    model.interfaceState.rebaseDrag = true;
    EXPECT_TRUE (surroundings.takeRebase());
    EXPECT_FALSE (surroundings.takeRebase());

    EXPECT_FALSE (surroundings.overlayOpen());
    model.interfaceState.helpOpen = true;
    EXPECT_TRUE (surroundings.overlayOpen());

    surroundings.setTypedGain (-7.5f);
    EXPECT_FLOAT_EQ (model.interfaceState.typedGainDb, -7.5f);
}

TEST (BandSurroundingsTest, firesTheChannelsOfMasterAndOfTheSparePanels)
{
    PluginRig rig;
    auto& model = rig.processor.model;
    BandSurroundings surroundings (model, [] { return RoomGeometry(); });
    int masters = 0;
    int rebuilds = 0;
    const auto master = model.channels.add ([&] { ++masters; }, Channels::canUseMasterMode);
    const auto rebuild = model.channels.add ([&] { ++rebuilds; }, Channels::createOverlapControls);

    surroundings.masterExceeded();
    EXPECT_EQ (masters, 1);
    EXPECT_FALSE (model.canUseMasterMode());

    surroundings.rebuildOverlapPanels();
    EXPECT_EQ (rebuilds, 1);
    model.interfaceState.closingEditor = true;
    surroundings.rebuildOverlapPanels();
    EXPECT_EQ (rebuilds, 1);

    model.channels.remove (master);
    model.channels.remove (rebuild);
}
