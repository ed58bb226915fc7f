#include "core/audio/BandEngine.h"

#include "support/DesignedFilter.h"
#include "support/PluginRig.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{
using Kind = Settings::Parameter;
using Mode = BlockProcessorMode;
using testing::ElementsAre;

constexpr std::array allModes { Mode::stereo, Mode::mid, Mode::side, Mode::display };

class BandEngineTest : public testing::Test
{
protected:
    BandEngineTest()
    {
        rig.set (ParameterIds::mode, 1.0f);
        rig.prepare (48000.0, 64);
        rig.settle();
    }

    /** One flag of each mode. */
    template <typename Flag>
    std::vector<bool> flags (Flag flag)
    {
        std::vector<bool> values;

        for (const auto mode : allModes)
            values.push_back (engine.block (mode).*flag);

        return values;
    }

    void runBlock() { rig.runSilence (64, 64); }

    std::vector<double> filterWith (float gainDb)
    {
        PluginRig plain;
        plain.set (ParameterIds::mode, 1.0f);
        plain.prepare (48000.0, 64);
        plain.setBand (0, 8000.0f, gainDb);
        return designedFilter::high (plain);
    }

    PluginRig rig;
    BandEngine& engine = rig.processor.bandEngine();
};

TEST_F (BandEngineTest, handsTapsOverOneModeABlockInTurn)
{
    rig.setBand (0, 8000.0f, 6.0f);
    rig.waitForWorkers();
    EXPECT_THAT (flags (&BlockProcessor::tapsReady), ElementsAre (true, true, true, false)) << "the display has none";

    // settle() has run a multiple of four blocks.
    runBlock();
    EXPECT_THAT (flags (&BlockProcessor::tapsReady), ElementsAre (false, true, true, false));
    runBlock();
    EXPECT_THAT (flags (&BlockProcessor::tapsReady), ElementsAre (false, false, true, false));
    runBlock();
    EXPECT_THAT (flags (&BlockProcessor::tapsReady), ElementsAre (false, false, false, false));
}

TEST_F (BandEngineTest, rebuildsOneModeABlockInTurn)
{
    rig.set (ParameterIds::mode, 0.0f);

    for (std::size_t served = 0; served < allModes.size(); ++served)
    {
        rig.waitForWorkers();
        runBlock();
        auto expected = std::vector<bool> (allModes.size(), true);
        std::fill_n (expected.begin(), served + 1, false);
        EXPECT_EQ (flags (&BlockProcessor::needsRebuild), expected);
    }
}

TEST_F (BandEngineTest, aRebuildGoesFlatUntilItsNewTapsArrive)
{
    rig.setBand (3, 8000.0f, 6.0f);
    rig.settle();
    rig.set (ParameterIds::mode, 0.0f);

    auto& stereo = engine.block (Mode::stereo);
    runBlock();
    EXPECT_FALSE (stereo.needsRebuild);
    EXPECT_EQ (rig.designedTaps (Mode::stereo).linearHigh.count(), 61);

    // The message for the first band brings all bands back, at the latest when its own turn comes again.
    rig.settle();
    EXPECT_NEAR (designedFilter::highLevelDb (rig, 8000.0), 6.0, 0.3);
}

TEST_F (BandEngineTest, leavesAModeAloneWhileItIsBeingDesigned)
{
    rig.setBand (0, 8000.0f, 6.0f);
    rig.waitForWorkers();
    engine.block (Mode::stereo).own();
    runBlock();
    EXPECT_TRUE (engine.block (Mode::stereo).tapsReady) << "its turn passed";
    engine.block (Mode::stereo).disown();

    for (int block = 0; block < 4; ++block)
        runBlock();

    EXPECT_FALSE (engine.block (Mode::stereo).tapsReady);
}

TEST_F (BandEngineTest, leavesAModeAloneOfflineToo)
{
    // A bounce of which the host tells with its first block may so begin with the filters of before.
    rig.setBand (0, 8000.0f, 6.0f);
    rig.waitForWorkers();
    auto& stereo = engine.block (Mode::stereo);
    constexpr auto offline = false;

    stereo.own();
    engine.serviceNext (offline);
    EXPECT_TRUE (stereo.tapsReady) << "its turn passed";
    stereo.disown();

    for (std::size_t turn = 0; turn < allModes.size(); ++turn)
        engine.serviceNext (offline);

    EXPECT_FALSE (stereo.tapsReady);
}

TEST (BandEngineReplayTest, whatChangesWhileValuesAreReadIsSentAgainBehindThem)
{
    PluginModel model;
    BandEngine* engine = nullptr;
    const std::string gain = "band_gain_0";
    auto current = 1.0f;
    auto readings = 0;
    BandEngine replaying (
        model,
        [] { return false; },
        [&] (BandEngine::CurrentUpdates& updates)
        {
            for (auto& update : updates)
                update = { &gain, { current, current, current, current }, 1, false };

            if (++readings == 1)
            {
                // Another thread moves the gain now, and its message overtakes what was read before.
                current = 2.0f;
                engine->dispatch ({ &gain, { current, current, current, current }, 1, false });
            }
        });
    engine = &replaying;
    replaying.sendCurrentUpdates();
    EXPECT_EQ (readings, 2);
}

TEST_F (BandEngineTest, aDroppedQueueIsFollowedByTheLastValues)
{
    rig.setBand (0, 8000.0f, 1.0f);
    rig.waitForWorkers();
    auto& worker = engine.worker (Mode::stereo);
    engine.block (Mode::stereo).own();

    for (int step = 0; step < 30; ++step)
        rig.set (0, Kind::gain, 0.1f * static_cast<float> (step) - 3.0f);

    rig.set (0, Kind::gain, 5.0f);
    EXPECT_GT (worker.postedCount() - worker.processedCount(), 20);
    engine.maintainQueues();
    EXPECT_LE (worker.postedCount(), 10) << "dropped; a worker that had not begun gets the current values at once";

    engine.block (Mode::stereo).disown();
    rig.waitForWorkers();
    engine.maintainQueues();
    EXPECT_EQ (designedFilter::high (rig), filterWith (5.0f));
}

TEST_F (BandEngineTest, theTimerDoesThisByItself)
{
    rig.setBand (0, 8000.0f, 1.0f);
    rig.waitForWorkers();
    engine.block (Mode::stereo).own();

    for (int step = 0; step < 30; ++step)
        rig.set (0, Kind::gain, 0.1f * static_cast<float> (step) - 3.0f);

    rig.set (0, Kind::gain, 5.0f);
    PluginRig::serveMessagesUntil ([this] { return engine.worker (Mode::stereo).postedCount() == 0; });
    engine.block (Mode::stereo).disown();

    const auto wanted = filterWith (5.0f);
    PluginRig::serveMessagesUntil ([&] { return designedFilter::high (rig) == wanted; });
    EXPECT_EQ (designedFilter::high (rig), wanted) << "the last value arrived";
}

TEST_F (BandEngineTest, keepsAQueueOfTwenty)
{
    engine.block (Mode::stereo).own();

    for (int step = 1; step <= 20; ++step)
        rig.set (0, Kind::gain, 0.5f * static_cast<float> (step));

    engine.maintainQueues();
    EXPECT_EQ (engine.worker (Mode::stereo).postedCount(), 20);
    engine.block (Mode::stereo).disown();
}

TEST_F (BandEngineTest, aDroppedQueueComesBackWithGainScaleAndMainBypass)
{
    const auto dropAndReplay = [this]
    {
        engine.block (Mode::stereo).own();

        for (int step = 0; step < 25; ++step)
            rig.set (0, Kind::q, 1.0f + 0.1f * static_cast<float> (step));

        rig.set (0, Kind::q, 1.0f);
        engine.maintainQueues();
        engine.block (Mode::stereo).disown();
        rig.waitForWorkers();
        engine.maintainQueues();
    };

    rig.setBand (0, 8000.0f, 8.0f);
    rig.set (ParameterIds::gainScale, 50.0f);
    dropAndReplay();
    EXPECT_EQ (designedFilter::high (rig), filterWith (4.0f));

    rig.set (ParameterIds::bypass, 1.0f);
    dropAndReplay();
    EXPECT_NEAR (designedFilter::highLevelDb (rig, 8000.0), 0.0, 1.0e-6);
}

TEST_F (BandEngineTest, offlineAnUpdateActsBeforeItsSetterReturnsAndTakesWhatWaitedWithIt)
{
    rig.setBand (0, 8000.0f, 1.0f);
    rig.waitForWorkers();
    engine.block (Mode::stereo).own();
    rig.set (0, Kind::gain, 3.0f);
    rig.set (0, Kind::frequency, 6000.0f);
    engine.block (Mode::stereo).disown();

    rig.renderOffline();
    rig.set (0, Kind::gain, 5.0f);
    EXPECT_EQ (engine.worker (Mode::stereo).postedCount(), 0);

    PluginRig plain;
    plain.set (ParameterIds::mode, 1.0f);
    plain.prepare (48000.0, 64);
    plain.setBand (0, 6000.0f, 5.0f);
    EXPECT_EQ (designedFilter::high (rig), designedFilter::high (plain));
}

TEST_F (BandEngineTest, offlineARebuildBringsItsTapsInTheSameTurn)
{
    rig.setBand (0, 8000.0f, 3.0f);
    rig.settle();
    rig.renderOffline();
    rig.set (ParameterIds::mode, 0.0f);
    runBlock();
    EXPECT_FALSE (engine.block (Mode::stereo).needsRebuild);
    EXPECT_FALSE (engine.block (Mode::stereo).tapsReady) << "designed and handed over";
    EXPECT_EQ (engine.worker (Mode::stereo).postedCount(), 0);
    EXPECT_NEAR (designedFilter::highLevelDb (rig, 8000.0), 3.0, 0.2);
}
} // namespace
