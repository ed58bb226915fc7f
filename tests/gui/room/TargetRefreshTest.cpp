#include "gui/room/TargetRefresh.h"

#include "support/LiveRig.h"
#include "targets/DisplayCurve.h"

#include <gtest/gtest.h>

class TargetRefreshTest : public testing::Test
{
protected:
    TargetRefreshTest() { state.roomHeight = 610; }

    static void serveMessages()
    {
        auto arrived = std::make_shared<bool> (false);
        juce::MessageManager::callAsync ([arrived] { *arrived = true; });
        PluginRig::serveMessagesUntil ([&] { return *arrived; });
    }

    PluginRig rig;
    PluginModel& model = rig.processor.model;
    InterfaceState& state = model.interfaceState;
    TargetRefresh refresh { rig.processor };
};

TEST_F (TargetRefreshTest, aNewHeightMakesTheCurveOfThatManyRows)
{
    state.rowsChanged = true;
    refresh.refresh();
    EXPECT_EQ (state.curveFrequencies, DisplayCurve::frequencies (610));
    EXPECT_EQ (state.targetCurve.size(), 153u);
    EXPECT_FALSE (state.rowsChanged);
}

TEST_F (TargetRefreshTest, withoutATargetTheRowsWait)
{
    rig.set ("paramCurrentZVQPreset", 1.0f);
    rig.processor.presets.select (1);
    state.rowsChanged = true;
    refresh.refresh();
    EXPECT_TRUE (state.targetCurve.empty());
    EXPECT_TRUE (state.rowsChanged);
}

TEST_F (TargetRefreshTest, whatIsMeasuredBecomesTheCurveAndThenReady)
{
    rig.prepare (48000.0, 512);
    state.rowsChanged = true;
    refresh.refresh();

    // Long enough that a pass moves the targets by less than the quarter decibel that smart bands ask for.
    const auto noise = signals::noise (2, 512, 1, 0.3f);

    for (int block = 0; block < 3000 && ! model.smartBandsReady(); ++block)
    {
        std::ignore = rig.run (noise, 512);

        if (block % 4 == 3)
        {
            rig.processor.liveAnalysis().runPass();
            serveMessages();
        }

        EXPECT_TRUE (model.targetsReady() || ! model.smartBandsReady());
    }

    EXPECT_TRUE (model.smartBandsReady());
    std::array<float, analysisBandCount> targets;
    std::ranges::copy (rig.processor.liveAnalysis().gainTargets().gainTarget, targets.begin());
    const auto expected = DisplayCurve::valuesAt (DisplayCurve::frequencies (610), targets);
    ASSERT_EQ (state.targetCurve.size(), expected.size());

    // Moves of a twentieth of a decibel are not followed.
    for (std::size_t i = 0; i < expected.size(); i += 10)
        EXPECT_NEAR (state.targetCurve[i], expected[i], 0.5);

    EXPECT_GT (std::ranges::max (state.targetCurve) - std::ranges::min (state.targetCurve), 1.0);
}

TEST_F (TargetRefreshTest, aSilentInstanceIsNeverReady)
{
    rig.prepare (48000.0, 512);
    state.rowsChanged = true;
    refresh.refresh();

    for (int i = 0; i < 20; ++i)
    {
        rig.runSilence (4096, 512);
        rig.processor.liveAnalysis().runPass();
        serveMessages();
    }

    EXPECT_FALSE (model.targetsReady());
    EXPECT_FALSE (model.smartBandsReady());
}
