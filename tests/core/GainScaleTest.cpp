#include "support/DesignedFilter.h"
#include "support/SessionRig.h"

#include <gtest/gtest.h>

namespace
{
using Kind = Settings::Parameter;
using Mode = BlockProcessorMode;

enum class Updates
{
    live,
    offline
};

constexpr float mix = 1.0f, master = 0.0f;

class GainScaleTest : public testing::TestWithParam<Updates>
{
protected:
    void prepare (PluginRig& tested, float mode)
    {
        if (GetParam() == Updates::offline)
            tested.renderOffline();

        tested.set (ParameterIds::mode, mode);
        tested.prepare (48000.0, 64);
        tested.waitForWorkers();
    }

    /** The filter of a band at 8 kHz that is set to this gain without any scale. */
    std::vector<double> plainFilter (float gainDb, float mode)
    {
        PluginRig plain;
        prepare (plain, mode);
        plain.setBand (0, 8000.0f, gainDb);
        return designedFilter::high (plain);
    }

    PluginRig rig;
    PluginModel& model = rig.processor.model;
};

TEST_P (GainScaleTest, masterAppliesItsLimitAndIsRefusedFromThenOn)
{
    prepare (rig, master);
    rig.setBand (0, 8000.0f, 3.0f);
    rig.waitForWorkers();
    EXPECT_TRUE (model.canUseMasterMode());

    rig.set (ParameterIds::gainScale, 150.0f);
    EXPECT_EQ (designedFilter::high (rig), plainFilter (4.0f, master));
    EXPECT_FALSE (model.canUseMasterMode()) << "4.5 dB, tested before the clamp";
    EXPECT_EQ (model.getBandValue (0, Kind::gain), 3.0f) << "the parameter is not written";

    rig.set (ParameterIds::gainScale, 120.0f);
    rig.waitForWorkers();
    EXPECT_TRUE (model.canUseMasterMode());
}

TEST_P (GainScaleTest, mixAppliesNoMoreThanTwelveDecibels)
{
    prepare (rig, mix);
    rig.setBand (0, 8000.0f, 12.0f);
    rig.set (ParameterIds::gainScale, 200.0f);
    EXPECT_EQ (designedFilter::high (rig), plainFilter (12.0f, mix));
    EXPECT_FALSE (model.canUseMasterMode());

    rig.set (ParameterIds::gainScale, 50.0f);
    EXPECT_EQ (designedFilter::high (rig), plainFilter (6.0f, mix));
    rig.set (ParameterIds::gainScale, 0.0f);
    EXPECT_NEAR (designedFilter::highLevelDb (rig, 8000.0), 0.0, 1.0e-6);
}

TEST_P (GainScaleTest, scalesEveryActiveBandExactlyOnceInEveryMode)
{
    prepare (rig, mix);
    rig.setBand (0, 3000.0f, 8.0f, 5.0f);
    rig.setBand (4, 8000.0f, -8.0f, 5.0f);
    rig.setBand (9, 16000.0f, 4.0f, 5.0f);
    rig.set (9, Kind::midSide, 0.0f);
    rig.set (ParameterIds::gainScale, 50.0f);

    PluginRig halved;
    prepare (halved, mix);
    halved.setBand (0, 3000.0f, 4.0f, 5.0f);
    halved.setBand (4, 8000.0f, -4.0f, 5.0f);
    halved.setBand (9, 16000.0f, 2.0f, 5.0f);
    halved.set (9, Kind::midSide, 0.0f);

    for (const auto mode : { Mode::stereo, Mode::mid, Mode::side })
        EXPECT_EQ (designedFilter::high (rig, mode), designedFilter::high (halved, mode)) << static_cast<int> (mode);
}

TEST_P (GainScaleTest, aGainChangedLaterIsScaledOnceToo)
{
    prepare (rig, mix);
    rig.setBand (0, 8000.0f, 2.0f);
    rig.set (ParameterIds::gainScale, 50.0f);
    rig.set (0, Kind::gain, 8.0f);
    EXPECT_EQ (designedFilter::high (rig), plainFilter (4.0f, mix));
}

TEST_P (GainScaleTest, masterClampsAGainChangeBeforeItIsScaled)
{
    prepare (rig, master);
    rig.setBand (0, 8000.0f, 1.0f);
    rig.set (ParameterIds::gainScale, 150.0f);
    rig.set (0, Kind::gain, 5.0f);
    EXPECT_NEAR (designedFilter::highLevelDb (rig, 8000.0), 6.0, 0.15);
}

TEST_P (GainScaleTest, leavesInactiveBandsAlone)
{
    prepare (rig, mix);
    rig.set (0, Kind::frequency, 8000.0f);
    rig.set (0, Kind::gain, 8.0f);
    rig.waitForWorkers();
    rig.set (ParameterIds::gainScale, 50.0f);
    EXPECT_EQ (designedFilter::high (rig), plainFilter (8.0f, mix));
    EXPECT_TRUE (model.canUseMasterMode()) << "only active bands are looked at";
}

TEST_P (GainScaleTest, worksFromTheSessionsGainsOnceASessionWasLoaded)
{
    prepare (rig, mix);
    rig.setBand (0, 8000.0f, 6.0f);
    sessions::load (rig.processor, sessions::save (rig.processor));

    rig.set (0, Kind::gain, 4.0f);
    rig.set (ParameterIds::gainScale, 50.0f);
    EXPECT_EQ (designedFilter::high (rig), plainFilter (3.0f, mix));
}

TEST_P (GainScaleTest, aReplayChangesNothingThatIsHeard)
{
    // After a load the scale works from the session's gains, and a gain that is moved later is heard as it is moved.
    // The end of a solo sends all bands anew.
    prepare (rig, mix);
    rig.setBand (0, 8000.0f, 6.0f);
    const auto session = sessions::save (rig.processor);
    sessions::load (rig.processor, session);
    const auto endSolo = [this]
    {
        rig.set (3, Kind::solo, 1.0f);
        rig.set (3, Kind::solo, 0.0f);
        rig.waitForWorkers();
    };

    rig.set (ParameterIds::gainScale, 50.0f);
    rig.set (0, Kind::gain, -6.0f);
    EXPECT_EQ (designedFilter::high (rig), plainFilter (-3.0f, mix));
    endSolo();
    EXPECT_EQ (designedFilter::high (rig), plainFilter (-3.0f, mix));

    rig.set (ParameterIds::gainScale, 100.0f);
    EXPECT_EQ (designedFilter::high (rig), plainFilter (6.0f, mix));
    endSolo();
    EXPECT_EQ (designedFilter::high (rig), plainFilter (6.0f, mix));

    // Another session brings its own.
    sessions::load (rig.processor, session);
    rig.set (0, Kind::gain, 2.0f);
    sessions::load (rig.processor, session);
    EXPECT_EQ (designedFilter::high (rig), plainFilter (6.0f, mix));
}

TEST_P (GainScaleTest, aMidSideChangeIsScaledAndNotClamped)
{
    prepare (rig, mix);
    rig.setBand (0, 8000.0f, 12.0f);
    rig.set (ParameterIds::gainScale, 200.0f);
    rig.set (0, Kind::midSide, 0.0f);

    // The fit's error at a peak of this height, in 101 taps.
    EXPECT_NEAR (designedFilter::highLevelDb (rig, 8000.0, Mode::mid), 24.0, 0.3);
    EXPECT_NEAR (designedFilter::highLevelDb (rig, 8000.0, Mode::stereo), 0.0, 0.01);
}

TEST_P (GainScaleTest, aMidSideChangeInMasterIsHeldAtItsLimit)
{
    prepare (rig, master);
    rig.setBand (0, 8000.0f, 3.0f);
    rig.set (ParameterIds::gainScale, 200.0f);
    rig.set (0, Kind::midSide, 0.0f);
    EXPECT_NEAR (designedFilter::highLevelDb (rig, 8000.0, Mode::mid), 4.0, 0.15);
}

TEST_P (GainScaleTest, isAppliedByTheFirstPrepareToo)
{
    if (GetParam() == Updates::offline)
        rig.renderOffline();

    rig.set (ParameterIds::mode, mix);
    rig.setBand (0, 8000.0f, 12.0f);
    rig.set (ParameterIds::gainScale, 50.0f);
    rig.prepare (48000.0, 64);
    EXPECT_EQ (designedFilter::high (rig), plainFilter (6.0f, mix));
    rig.waitForWorkers();
    EXPECT_FALSE (rig.processor.model.canUseMasterMode()) << "6 dB are too many for Master";
}

TEST_P (GainScaleTest, tellsWhetherMasterCanBeUsedEachTime)
{
    prepare (rig, master);
    auto told = 0;
    model.channels.add ([&] { ++told; }, Channels::canUseMasterMode);
    rig.set (ParameterIds::gainScale, 150.0f);
    rig.set (ParameterIds::gainScale, 90.0f);
    EXPECT_EQ (told, 2) << "also without any band";
}

INSTANTIATE_TEST_SUITE_P (Rendering,
                          GainScaleTest,
                          testing::Values (Updates::live, Updates::offline),
                          [] (const auto& tested) { return tested.param == Updates::live ? "live" : "offline"; });
} // namespace
