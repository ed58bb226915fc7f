#include "gui/band/BandRig.h"
#include "support/PluginRig.h"

#include <gtest/gtest.h>

#include <thread>

TEST (SolvaneControlParametersTest, changesFromAnyThreadArriveOnTheMessageThread)
{
    BandRig rig;
    rig.place (3910, 0.0f);
    std::thread host (
        [&]
        {
            for (int step = 1; step <= 100; ++step)
                rig.control->parameterChanged ("band_gain_0", static_cast<float> (step) * 0.1f);

            rig.control->parameterChanged ("band_Q_0", 2.0f);
            rig.control->parameterChanged ("band_solo_0", 1.0f);
            rig.control->parameterChanged ("band_bypass_0", 1.0f);
            rig.control->parameterChanged ("band_highshelf_0", 1.0f);
            rig.control->parameterChanged ("band_midside_0", 0.25f);
        });
    host.join();
    EXPECT_FLOAT_EQ (rig.control->bandState().gainDb, 0.0f);

    const auto& state = rig.control->bandState();
    PluginRig::serveMessagesUntil ([&] { return state.gainDb > 9.9f; });
    EXPECT_FLOAT_EQ (state.gainDb, 10.0f);
    EXPECT_FLOAT_EQ (state.q, 2.0f);
    EXPECT_TRUE (state.solo && state.bypassed && state.highShelf);
    EXPECT_FLOAT_EQ (state.midSide, 0.25f);
}

TEST (SolvaneControlParametersTest, aBandThatIsNotInUseHearsNothing)
{
    BandRig rig;
    rig.place (3910, 0.0f);
    rig.active = false;
    rig.control->parameterChanged ("band_gain_0", 6.0f);
    rig.active = true;
    rig.control->parameterChanged ("band_Q_0", 2.0f);
    PluginRig::serveMessagesUntil ([&] { return rig.control->bandState().q > 1.9f; });
    EXPECT_FLOAT_EQ (rig.control->bandState().gainDb, 0.0f);
}

TEST (SolvaneControlParametersTest, otherBandsAreNotItsConcern)
{
    BandRig rig (1);
    rig.place (3910, 0.0f);
    rig.control->parameterChanged ("band_gain_0", 6.0f);
    rig.control->parameterChanged ("band_gain_1", 3.0f);
    PluginRig::serveMessagesUntil ([&] { return rig.control->bandState().gainDb > 0.0f; });
    EXPECT_FLOAT_EQ (rig.control->bandState().gainDb, 3.0f);
}

TEST (SolvaneControlParametersTest, aChangeThatComesLateFindsNobody)
{
    BandRig rig;
    rig.place (3910, 0.0f);
    rig.control->parameterChanged ("band_gain_0", 6.0f);
    rig.control.reset();
    auto served = false;
    juce::MessageManager::callAsync ([&] { served = true; });
    PluginRig::serveMessagesUntil ([&] { return served; });
}

TEST (SolvaneControlParametersTest, whatItWritesItselfIsThereAtOnce)
{
    BandRig rig;
    rig.place (3910, 0.0f);
    rig.press (rig.onBody());
    rig.dragToRow (rig.control->getY() + rig.onBody().y + 20);
    EXPECT_FLOAT_EQ (rig.control->bandState().gainDb, -0.8f);
}
