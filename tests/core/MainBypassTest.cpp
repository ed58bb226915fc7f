#include "support/DesignedFilter.h"
#include "support/PluginRig.h"

#include <gtest/gtest.h>

namespace
{
using Kind = Settings::Parameter;

/** A flat curve is fitted, and the path is in double precision. */
constexpr float toleranceOfFlatFilters = 1.0e-6f;

enum class Updates
{
    live,
    offline
};

class MainBypassTest : public testing::TestWithParam<Updates>
{
protected:
    MainBypassTest()
    {
        if (GetParam() == Updates::offline)
            rig.renderOffline();

        rig.set (ParameterIds::mode, 1.0f);
        rig.prepare (48000.0, 64);
        rig.setBand (0, 8000.0f, 6.0f);
        rig.setBand (1, 500.0f, -6.0f);
        rig.setBand (2, 4000.0f, 9.0f);
        rig.set (2, Kind::midSide, 0.0f);
        rig.settle();
    }

    void bypass (bool on)
    {
        rig.set (ParameterIds::bypass, on ? 1.0f : 0.0f);
        rig.settle();
    }

    std::string differenceFromTheDelayedInput()
    {
        rig.runSilence (2048, 64);
        const auto input = signals::noise (2, 4096, 21);
        return signals::firstDifference (
            rig.run (input, 64), signals::delayedBy (input, rig.trueLatency()), toleranceOfFlatFilters);
    }

    PluginRig::Signal responseToNoise (PluginRig& tested)
    {
        tested.runSilence (2048, 64);
        return tested.run (signals::noise (2, 4096, 21), 64);
    }

    PluginRig rig;
};

TEST_P (MainBypassTest, givesTheInputBackWithTheSameLatency)
{
    EXPECT_NE (differenceFromTheDelayedInput(), "");
    bypass (true);
    EXPECT_EQ (differenceFromTheDelayedInput(), "");
    EXPECT_EQ (rig.trueLatency(), 274 + 4);
}

TEST_P (MainBypassTest, leavesTheBandsOwnSwitchesAlone)
{
    rig.set (1, Kind::bypass, 1.0f);
    bypass (true);
    EXPECT_EQ (rig.processor.model.getBandValue (0, Kind::bypass), 0.0f);
    EXPECT_EQ (rig.processor.model.getBandValue (1, Kind::bypass), 1.0f);
    EXPECT_TRUE (rig.processor.model.mainBypass());
}

TEST_P (MainBypassTest, switchesTheOutputGainOff)
{
    rig.set (ParameterIds::outputGain, -6.0f);
    bypass (true);
    EXPECT_EQ (differenceFromTheDelayedInput(), "");
    bypass (false);
    EXPECT_NE (differenceFromTheDelayedInput(), "");
}

TEST_P (MainBypassTest, holdsAgainstAutomation)
{
    bypass (true);
    rig.set (0, Kind::gain, -9.0f);
    rig.set (0, Kind::frequency, 6000.0f);
    rig.set (0, Kind::q, 3.0f);
    rig.set (1, Kind::bypass, 1.0f);
    rig.set (1, Kind::bypass, 0.0f);
    rig.set (1, Kind::highShelf, 1.0f);
    rig.set (2, Kind::midSide, 1.0f);
    rig.set (ParameterIds::gainScale, 150.0f);
    rig.setBand (7, 3000.0f, 12.0f);
    rig.settle();
    EXPECT_EQ (differenceFromTheDelayedInput(), "");

    rig.set (ParameterIds::mode, 0.0f);
    rig.settle();
    EXPECT_EQ (differenceFromTheDelayedInput(), "") << "a rebuild is flat as well";
}

TEST_P (MainBypassTest, comesBackWithTheCurrentSettings)
{
    bypass (true);
    rig.set (0, Kind::gain, -9.0f);
    rig.set (0, Kind::frequency, 6000.0f);
    rig.set (1, Kind::gain, 3.0f);
    rig.set (2, Kind::midSide, 1.0f);
    bypass (false);

    PluginRig never;

    if (GetParam() == Updates::offline)
        never.renderOffline();

    never.set (ParameterIds::mode, 1.0f);
    never.prepare (48000.0, 64);
    never.setBand (0, 6000.0f, -9.0f);
    never.setBand (1, 500.0f, 3.0f);
    never.setBand (2, 4000.0f, 9.0f);
    never.set (2, Kind::midSide, 1.0f);
    never.settle();
    EXPECT_EQ (signals::firstDifference (responseToNoise (rig), responseToNoise (never)), "");
}

TEST_P (MainBypassTest, survivesANewRate)
{
    bypass (true);
    rig.prepare (96000.0, 64);
    rig.settle();
    EXPECT_EQ (differenceFromTheDelayedInput(), "");
    bypass (false);
    EXPECT_NE (differenceFromTheDelayedInput(), "");
}

TEST_P (MainBypassTest, asksNothingOfInactiveBands)
{
    PluginRig empty;
    empty.prepare (48000.0, 64);
    empty.waitForWorkers();
    empty.set (ParameterIds::bypass, 1.0f);
    EXPECT_TRUE (empty.processor.model.mainBypass());
    EXPECT_EQ (empty.processor.bandEngine().worker (BlockProcessorMode::stereo).postedCount(), 0);
}

// The main bypass acts out of a notification, during which nothing else may be fired by the same thread.
TEST (MainBypassOfABounceTest, comesThroughWhileGainsOfLivePlayingStillWait)
{
    PluginRig rig;
    rig.prepare (48000.0, 64);

    for (int round = 0; round < 100; ++round)
    {
        rig.processor.setNonRealtime (false);
        rig.setBand (0, 8000.0f, static_cast<float> (round % 7) - 3.0f);
        rig.renderOffline();
        rig.set (ParameterIds::bypass, static_cast<float> (round % 2));
        ASSERT_EQ (rig.processor.model.mainBypass(), round % 2 == 1);
    }
}

INSTANTIATE_TEST_SUITE_P (Rendering,
                          MainBypassTest,
                          testing::Values (Updates::live, Updates::offline),
                          [] (const auto& tested) { return tested.param == Updates::live ? "live" : "offline"; });
} // namespace
