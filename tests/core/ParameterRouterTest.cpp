#include "core/ParameterRouter.h"

#include "support/DesignedFilter.h"
#include "support/PluginRig.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{
using Kind = Settings::Parameter;
using Mode = BlockProcessorMode;
using testing::ElementsAre;

class ParameterRouterTest : public testing::Test
{
protected:
    ParameterRouterTest() { rig.prepare (48000.0, 64); }

    [[nodiscard]] std::pair<bool, bool> pathFlags() const
    {
        return { model.stereoPathActive(), model.midSidePathActive() };
    }

    /** How many messages `change` posts to each worker. The workers are kept from their messages meanwhile. */
    template <typename Change>
    std::vector<int> postsOf (Change&& change)
    {
        auto& engine = rig.processor.bandEngine();
        constexpr std::array modes { Mode::stereo, Mode::mid, Mode::side, Mode::display };
        rig.waitForWorkers();

        for (const auto mode : modes)
            engine.block (mode).own();

        change();
        std::vector<int> counts;

        for (const auto mode : modes)
        {
            counts.push_back (engine.worker (mode).postedCount());
            engine.block (mode).disown();
        }

        return counts;
    }

    PluginRig rig;
    PluginModel& model = rig.processor.model;
};

TEST_F (ParameterRouterTest, withoutActiveBandsTheStereoPathRunsAlone)
{
    rig.set (3, Kind::midSide, 0.1f);
    rig.set (3, Kind::gain, 2.0f);
    EXPECT_EQ (pathFlags(), std::pair (true, false));
}

TEST_F (ParameterRouterTest, pathsFollowTheActiveBandsMidSideValues)
{
    rig.setBand (0, 4000.0f, 1.0f);
    EXPECT_EQ (pathFlags(), std::pair (true, false));

    rig.set (0, Kind::midSide, 0.49f);
    EXPECT_EQ (pathFlags(), std::pair (false, true));

    rig.setBand (1, 4000.0f, 1.0f);
    EXPECT_EQ (pathFlags(), std::pair (true, true));

    rig.set (1, Kind::midSide, 1.0f);
    EXPECT_EQ (pathFlags(), std::pair (false, true));

    rig.set (0, Kind::midSide, 0.5f);
    rig.set (1, Kind::midSide, 0.5f);
    EXPECT_EQ (pathFlags(), std::pair (true, false));
}

TEST_F (ParameterRouterTest, theActiveSwitchAloneChangesNothingUntilAGainOrMidSideFollows)
{
    rig.set (0, Kind::midSide, 0.0f);
    EXPECT_EQ (pathFlags(), std::pair (true, false));
    EXPECT_THAT (postsOf ([this] { rig.set (0, Kind::active, 1.0f); }), ElementsAre (0, 0, 0, 0));
    EXPECT_EQ (pathFlags(), std::pair (true, false));

    rig.set (0, Kind::gain, 1.0f);
    EXPECT_EQ (pathFlags(), std::pair (false, true));
}

TEST_F (ParameterRouterTest, theOutputGainPostsNothing)
{
    EXPECT_THAT (postsOf ([this] { rig.set (ParameterIds::outputGain, -3.0f); }), ElementsAre (0, 0, 0, 0));
}

TEST_F (ParameterRouterTest, aBandsChangeGoesToAllFourModes)
{
    for (const auto kind : { Kind::frequency, Kind::gain, Kind::q, Kind::bypass, Kind::highShelf })
        EXPECT_THAT (
            postsOf ([&] { rig.set (5, kind, kind == Kind::frequency ? 5000.0f : 1.0f + 0.5f * (kind == Kind::q)); }),
            ElementsAre (1, 1, 1, 1))
            << static_cast<int> (kind);
}

TEST_F (ParameterRouterTest, aMidSideChangeGoesToThreeModesAsAGain)
{
    rig.setBand (0, 8000.0f, 3.0f);
    EXPECT_THAT (postsOf ([this] { rig.set (0, Kind::midSide, 0.0f); }), ElementsAre (1, 1, 1, 0));
    EXPECT_NEAR (designedFilter::highLevelDb (rig, 8000.0, Mode::stereo), 0.0, 0.01);
    EXPECT_NEAR (designedFilter::highLevelDb (rig, 8000.0, Mode::mid), 3.0, 0.1);
    EXPECT_NEAR (designedFilter::highLevelDb (rig, 8000.0, Mode::side), 0.0, 0.01);

    rig.set (0, Kind::midSide, 0.75f);
    EXPECT_NEAR (designedFilter::highLevelDb (rig, 8000.0, Mode::mid), 1.5, 0.1);
    EXPECT_NEAR (designedFilter::highLevelDb (rig, 8000.0, Mode::side), 3.0, 0.1);

    rig.set (0, Kind::midSide, 0.5f);
    EXPECT_NEAR (designedFilter::highLevelDb (rig, 8000.0, Mode::stereo), 3.0, 0.1);
    EXPECT_NEAR (designedFilter::highLevelDb (rig, 8000.0, Mode::mid), 0.0, 0.01);
}

TEST_F (ParameterRouterTest, aMonoLayoutIgnoresMidSide)
{
    rig.prepare (48000.0, 64, 1);
    rig.setBand (3, 8000.0f, 3.0f);
    const auto before = designedFilter::high (rig);
    EXPECT_THAT (postsOf ([this] { rig.set (3, Kind::midSide, 0.0f); }), ElementsAre (0, 0, 0, 0));
    EXPECT_EQ (pathFlags(), std::pair (true, false));
    EXPECT_EQ (designedFilter::high (rig), before);
}

TEST_F (ParameterRouterTest, releasingAnySoloEndsAllSolo)
{
    rig.set (3, Kind::solo, 1.0f);
    EXPECT_TRUE (model.soloActive());
    EXPECT_EQ (model.soloBand(), 3);

    rig.set (7, Kind::solo, 1.0f);
    EXPECT_EQ (model.soloBand(), 7);

    rig.set (3, Kind::solo, 0.0f);
    EXPECT_FALSE (model.soloActive()) << "band 8 is still switched to solo, but the last message rules";
    EXPECT_EQ (model.soloBand(), -1);
}

TEST_F (ParameterRouterTest, theEndOfASoloSendsTheTenCurrentSettings)
{
    EXPECT_THAT (postsOf ([this] { rig.set (3, Kind::solo, 1.0f); }), ElementsAre (1, 1, 1, 1));
    EXPECT_THAT (postsOf ([this] { rig.set (3, Kind::solo, 0.0f); }), ElementsAre (11, 11, 11, 11));
}

TEST_F (ParameterRouterTest, modeAndPhaseMarkEveryModeForARebuildAndPostNothing)
{
    auto& engine = rig.processor.bandEngine();

    for (const auto* id : { ParameterIds::mode, ParameterIds::phase })
    {
        rig.settle();
        const auto other = std::string (id) == ParameterIds::mode ? 1.0f : 0.0f;
        EXPECT_THAT (postsOf ([&] { rig.set (id, other); }), ElementsAre (0, 0, 0, 0)) << id;

        for (const auto mode : { Mode::stereo, Mode::mid, Mode::side, Mode::display })
            EXPECT_TRUE (engine.block (mode).needsRebuild) << id;
    }
}

TEST_F (ParameterRouterTest, handsTheTruncatedPresetAndTheLengthsToItsOwner)
{
    std::vector<int> presets;
    auto lengthChanges = 0;
    ParameterRouter router (model,
                            rig.processor.bandEngine(),
                            { [&] { ++lengthChanges; }, [&] (int preset) { presets.push_back (preset); } });
    router.parameterChanged (ParameterIds::currentPreset, 17.9f);
    router.parameterChanged (ParameterIds::currentPreset, 0.0f);
    router.parameterChanged (ParameterIds::phase, 0.0f);
    router.parameterChanged (ParameterIds::mode, 1.0f);
    router.parameterChanged ("somethingElse", 1.0f);
    EXPECT_THAT (presets, ElementsAre (17, 0));
    EXPECT_EQ (lengthChanges, 2);
}

TEST_F (ParameterRouterTest, masterDesignsAGainAtItsLimitWhileTheParameterKeepsIt)
{
    rig.setBand (0, 8000.0f, 4.0f);
    const auto limit = designedFilter::high (rig);
    EXPECT_TRUE (model.canUseMasterMode());

    rig.set (0, Kind::gain, 6.0f);
    EXPECT_EQ (designedFilter::high (rig), limit);
    EXPECT_EQ (model.getBandValue (0, Kind::gain), 6.0f);
    EXPECT_FALSE (model.canUseMasterMode());

    rig.set (0, Kind::gain, -3.0f);
    rig.waitForWorkers();
    EXPECT_TRUE (model.canUseMasterMode());
}

TEST_F (ParameterRouterTest, masterDesignsAQAtItsLimitWhileTheParameterKeepsIt)
{
    rig.setBand (0, 8000.0f, 3.0f, 1.5f);
    rig.set (0, Kind::q, 1.4f);
    rig.set (0, Kind::q, 1.5f);
    const auto limit = designedFilter::high (rig);

    rig.set (0, Kind::q, 4.0f);
    EXPECT_EQ (designedFilter::high (rig), limit);
    EXPECT_EQ (model.getBandValue (0, Kind::q), 4.0f);
    EXPECT_FALSE (model.canUseMasterMode());

    rig.set (0, Kind::frequency, 8010.0f);
    rig.set (0, Kind::frequency, 8000.0f);
    EXPECT_NE (designedFilter::high (rig), limit) << "another parameter's redesign reads the stored Q as it is";
}

TEST_F (ParameterRouterTest, mixDesignsBothAsTheyAre)
{
    rig.set (ParameterIds::mode, 1.0f);
    rig.settle();
    rig.setBand (0, 8000.0f, 9.0f, 2.0f);
    EXPECT_NEAR (designedFilter::highLevelDb (rig, 8000.0), 9.0, 0.1);
}

class DisplayTest : public ParameterRouterTest
{
protected:
    /** The drawn response at a frequency of the 48 kHz grid. */
    float drawnDb (double frequencyHz)
    {
        rig.waitForWorkers();
        const auto point = static_cast<std::size_t> (std::lround (frequencyHz / 24000.0 * 1023.0));
        const std::lock_guard lock (model.responseLock);
        return model.responseCurveDb[point];
    }
};

TEST_F (DisplayTest, drawsTheScaledGainWhateverTheMidSideValue)
{
    rig.set (ParameterIds::mode, 1.0f);
    rig.setBand (0, 8000.0f, 6.0f);
    EXPECT_NEAR (drawnDb (8000.0), 6.0f, 0.05f);
    rig.set (0, Kind::midSide, 0.2f);
    EXPECT_NEAR (drawnDb (8000.0), 6.0f, 0.05f);
    rig.set (ParameterIds::gainScale, 50.0f);
    EXPECT_NEAR (drawnDb (8000.0), 3.0f, 0.05f);
    EXPECT_TRUE (model.responseCurveChanged);
}

TEST_F (DisplayTest, drawsLowBandsWhereTheyAre)
{
    rig.setBand (0, 1000.0f, -3.0f);
    EXPECT_NEAR (drawnDb (1000.0), -3.0f, 0.05f);
    EXPECT_NEAR (drawnDb (15000.0), 0.0f, 0.05f);
}

TEST_F (DisplayTest, standsStillWhileABandIsSoloedOrTheMainBypassIsOn)
{
    rig.setBand (0, 8000.0f, 3.0f);
    EXPECT_NEAR (drawnDb (8000.0), 3.0f, 0.05f);
    model.responseCurveChanged = false;

    rig.set (0, Kind::solo, 1.0f);
    rig.set (0, Kind::gain, -3.0f);
    EXPECT_NEAR (drawnDb (8000.0), 3.0f, 0.05f);
    EXPECT_FALSE (model.responseCurveChanged);
    rig.set (0, Kind::solo, 0.0f);
    EXPECT_NEAR (drawnDb (8000.0), -3.0f, 0.05f);
    model.responseCurveChanged = false;

    rig.set (ParameterIds::bypass, 1.0f);
    rig.set (0, Kind::gain, 2.0f);
    EXPECT_NEAR (drawnDb (8000.0), -3.0f, 0.05f);
    EXPECT_FALSE (model.responseCurveChanged);
    rig.set (ParameterIds::bypass, 0.0f);
    EXPECT_NEAR (drawnDb (8000.0), 2.0f, 0.05f);
}
} // namespace
