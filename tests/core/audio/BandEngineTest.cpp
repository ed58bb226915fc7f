#include "core/audio/BandEngine.h"

#include "support/DesignedFilter.h"
#include "support/PluginRig.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

namespace
{
using Kind = Settings::Parameter;
using Mode = BlockProcessorMode;
using Service = BandEngine::Service;
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

TEST_F (BandEngineTest, whereAThreadsPriorityAloneSaysOfflineAModeIsLeftAloneToo)
{
    rig.setBand (0, 8000.0f, 6.0f);
    rig.waitForWorkers();
    auto& stereo = engine.block (Mode::stereo);

    stereo.own();
    engine.serviceNext (Service::offline);
    EXPECT_TRUE (stereo.tapsReady) << "its turn passed";
    stereo.disown();

    for (std::size_t turn = 0; turn < allModes.size(); ++turn)
        engine.serviceNext (Service::offline);

    EXPECT_FALSE (stereo.tapsReady);
}

TEST_F (BandEngineTest, offlineAModeThatIsBeingDesignedIsWaitedFor)
{
    rig.setBand (0, 8000.0f, 6.0f);
    rig.waitForWorkers();
    auto& side = engine.block (Mode::side);
    std::atomic<bool> served { false };

    side.own();
    std::thread audio (
        [&]
        {
            engine.serviceNext (Service::offlineAndWait);
            served = true;
        });

    // Far longer than a service takes that does not wait.
    for (int turn = 0; turn < 20000 && ! served; ++turn)
        std::this_thread::yield();

    EXPECT_FALSE (served);
    side.disown();
    audio.join();
    EXPECT_THAT (flags (&BlockProcessor::tapsReady), ElementsAre (false, false, false, false))
        << "the first block of a bounce has all filters";
}

TEST_F (BandEngineTest, offlineWhatStillWaitsInAQueueIsDrawnAtOnce)
{
    rig.setBand (0, 8000.0f, 1.0f);
    rig.settle();
    auto& stereo = engine.block (Mode::stereo);
    stereo.own();
    rig.set (0, Kind::gain, 5.0f);

    // The worker has nothing but this, and may or may not have begun.
    std::thread audio ([&] { engine.serviceNext (Service::offlineAndWait); });
    stereo.disown();
    audio.join();
    EXPECT_EQ (designedFilter::high (rig), filterWith (5.0f));
    EXPECT_FALSE (stereo.tapsReady) << "and handed over";
}

TEST_F (BandEngineTest, offlineModesTakeTurnsFromTheFirst)
{
    engine.serviceNext (Service::realTime);
    engine.serviceNext (Service::offlineAndWait);
    rig.renderOffline();
    rig.setBand (0, 8000.0f, 6.0f);

    for (std::size_t served = 0; served < 3; ++served)
    {
        auto expected = std::vector<bool> { true, true, true, false };
        std::fill_n (expected.begin(), served, false);
        EXPECT_EQ (flags (&BlockProcessor::tapsReady), expected);
        engine.serviceNext (Service::offlineAndWait);
    }
}

TEST_F (BandEngineTest, aBounceIsTheSameHoweverFarTheWorkersHaveCome)
{
    const auto bounceAfter = [] (int blocks, bool workersMayFinish)
    {
        PluginRig bounced;
        bounced.set (ParameterIds::mode, 1.0f);
        bounced.prepare (48000.0, 64);
        bounced.settle();

        for (int band = 0; band < 10; ++band)
            bounced.setBand (band, 2000.0f + 1500.0f * static_cast<float> (band), 3.0f);

        if (workersMayFinish)
            bounced.waitForWorkers();

        bounced.runSilence (64 * blocks, 64);
        bounced.renderOffline();
        return bounced.run (signals::noise (2, 64 * 20, 8), 64);
    };

    const auto wanted = bounceAfter (0, true);

    for (int blocks = 0; blocks < 6; ++blocks)
        EXPECT_EQ (signals::firstDifference (bounceAfter (blocks, blocks % 2 == 1), wanted), "") << blocks;
}

TEST_F (BandEngineTest, currentSettingsAreReadOnceForEachModeWhateverOthersDo)
{
    std::atomic<bool> stop { false };
    std::thread automation (
        [&]
        {
            for (int step = 0; ! stop; ++step)
                rig.set (0, Kind::gain, 0.1f * static_cast<float> (step % 50));
        });
    const std::string gain = "band_gain_0";
    auto readings = 0;

    for (int round = 0; round < 50; ++round)
        engine.dispatchAsRead (
            [&] (BandEngine::Updates& updates)
            {
                ++readings;
                const auto current = rig.processor.model.getBandValue (0, Kind::gain);
                updates[0] = { &gain, { current, current, current, current }, 4, false };
                return 1;
            });

    EXPECT_EQ (readings, 50 * BandEngine::modeCount);
    stop = true;
    automation.join();
    rig.set (0, Kind::gain, 0.1f);
    rig.set (0, Kind::gain, 5.0f);

    for (int turn = 0; turn < 3; ++turn)
    {
        rig.waitForWorkers();
        engine.maintainQueues();
    }

    rig.set (0, Kind::frequency, 8000.0f);
    EXPECT_EQ (designedFilter::high (rig), filterWith (5.0f));
}

TEST_F (BandEngineTest, whatIsReadBeforeAChangeIsSentBeforeIt)
{
    // A change on another thread comes while settings are being read: it waits for the queue and is drawn last.
    const std::string gain = "band_gain_0";
    rig.set (0, Kind::frequency, 8000.0f);
    rig.set (0, Kind::gain, 1.0f);
    std::atomic<bool> started { false };
    std::thread other;

    engine.dispatchAsRead (
        [&] (BandEngine::Updates& updates)
        {
            const auto current = rig.processor.model.getBandValue (0, Kind::gain);
            updates[0] = { &gain, { current, current, current, current }, 4, false };

            if (! other.joinable())
            {
                other = std::thread (
                    [&]
                    {
                        started = true;
                        rig.set (0, Kind::gain, 2.0f);
                    });

                while (! started || rig.processor.model.getBandValue (0, Kind::gain) != 2.0f)
                    std::this_thread::yield();
            }

            return 1;
        });

    other.join();
    EXPECT_EQ (designedFilter::high (rig), filterWith (2.0f));
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
