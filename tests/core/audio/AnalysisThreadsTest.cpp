#include "core/audio/LiveAnalysisFixture.h"
#include "support/RealTimeGuard.h"

#include <gmock/gmock.h>

#include <chrono>
#include <future>
#include <thread>

namespace
{
using namespace liveSignals;
using testing::Each;

class AnalysisThreadsTest : public LiveAnalysisFixture
{
};

//======================================================================================================================
// Waking

class AnalysisWakingTest : public LiveAnalysisFixture
{
protected:
    /** Lets the threads fall asleep: one that is still awake takes what is pending without being woken. */
    AnalysisWakingTest()
    {
        prepare (1024);
        std::ignore = passesSoon();
    }

    void play (int length, int blockSize) { std::ignore = live.rig.run (signals::noise (2, length, 3), blockSize); }

    /** Passes within a time in which a thread that was woken would have come round. */
    [[nodiscard]] int passesSoon()
    {
        const auto before = live.passes.load();
        std::this_thread::sleep_for (std::chrono::milliseconds (40));
        return live.passes - before;
    }

    /** Waits for a pass, which a thread that sleeps on never makes. */
    [[nodiscard]] bool passComes (int before)
    {
        const auto patience = std::chrono::steady_clock::now() + std::chrono::seconds (20);

        while (live.passes == before && std::chrono::steady_clock::now() < patience)
            std::this_thread::yield();

        return live.passes > before && passesSoon() == 0;
    }
};

TEST_F (AnalysisWakingTest, aPassIsWokenForAWholeChunkAndNotBefore)
{
    for (const auto blockSize : { 256, 341, 1023 })
    {
        const auto before = live.passes.load();
        play (1023, blockSize);
        EXPECT_EQ (passesSoon(), 0) << blockSize;
        play (1, 1);
        EXPECT_TRUE (passComes (before)) << blockSize;
    }
}

TEST_F (AnalysisWakingTest, passesComeEquallyOftenInASecondAtEveryRate)
{
    const std::pair<double, int> chunksAtRates[] {
        { 44100.0, 1 }, { 88200.0, 2 }, { 96000.0, 2 }, { 176400.0, 4 }, { 192000.0, 4 }
    };

    for (const auto& [sampleRate, chunks] : chunksAtRates)
    {
        prepare (1024, sampleRate);
        processor.model.setShowHeatmap (true);
        std::ignore = passesSoon();
        const auto before = live.passes.load();
        const auto spectraBefore = live.spectra.load();
        play (chunks * 1024 - 8, 512);
        EXPECT_EQ (passesSoon(), 0) << sampleRate;
        play (8, 8);
        EXPECT_TRUE (passComes (before)) << sampleRate;
        EXPECT_EQ (live.spectra - spectraBefore, chunks) << sampleRate << ": the pass takes all that has come in";
    }
}

TEST_F (AnalysisWakingTest, aPassIsWokenByTheBlockAfterAReset)
{
    const auto before = live.passes.load();
    processor.resetAnalysis();
    EXPECT_EQ (passesSoon(), 0);
    play (64, 64);
    EXPECT_TRUE (passComes (before));
    play (64, 64);
    EXPECT_EQ (passesSoon(), 0);
}

TEST_F (AnalysisWakingTest, aBlockThatGivesNothingToProcessWakesNobody)
{
    processor.resetAnalysis();
    play (3, 1);
    EXPECT_EQ (processor.model.samplesToProcess, 0);
    EXPECT_EQ (passesSoon(), 0) << "the reset waits for a fourth sample, with which there is one at the reduced rate";

    const auto before = live.passes.load();
    play (1, 1);
    EXPECT_TRUE (passComes (before));
}

TEST_F (AnalysisWakingTest, aPassThatIsAskedForEndsWhateverIsLeftPendingBehindIt)
{
    // As it ends, blocks come that wake nobody, and then none: the audio has stopped.
    std::atomic<bool> stop { false };
    std::thread audio (
        [&]
        {
            for (auto seen = live.passes.load(); ! stop;)
                if (const auto now = live.passes.load(); now != seen)
                {
                    seen = now;

                    for (int pause = 0; pause < 50 * (now % 40); ++pause)
                        std::atomic_signal_fence (std::memory_order_seq_cst);

                    play (8, 8);
                }
        });
    auto passesMade = std::async (std::launch::async,
                                  [this]
                                  {
                                      for (int round = 0; round < 4000; ++round)
                                          live.waitForAnalysis();
                                  });
    const auto ended = passesMade.wait_for (std::chrono::seconds (60)) == std::future_status::ready;
    EXPECT_TRUE (ended) << "one waits for ever";
    stop = true;
    audio.join();

    if (! ended)
        play (2048, 1024);
}

//======================================================================================================================
// Reset, prepare and the end, while the threads are at work

TEST_F (AnalysisThreadsTest, aResetPutsEverythingBackAtOnce)
{
    prepare();
    live.feed (referenceMixture (100 * 1024), 512);
    ASSERT_GT (live.levels()[2], -30.0f);

    processor.resetAnalysis();
    EXPECT_THAT (live.levels(), Each (resetLevelDb));
    EXPECT_THAT (live.gainTargets(), Each (0.0f));
    EXPECT_EQ (analysis.gainTargets().maxChange, 0.0f);
    EXPECT_EQ (live.inputLoudness(), nothing);

    live.feed (referenceMixture (40 * 1024), 512);
    EXPECT_THAT (live.levels(), Each (resetLevelDb)) << "the meters start anew: no gate before a second has gone";
    EXPECT_EQ (live.inputLoudness(), nothing);

    live.feed (referenceMixture (200 * 1024), 512);
    EXPECT_NEAR (live.levels()[2], -16.842, 0.3);
}

TEST_F (AnalysisThreadsTest, aResetLosesWhatWaitsInTheFifos)
{
    processor.model.setShowHeatmap (true);
    prepare();
    std::ignore = live.rig.run (signals::noise (2, 1000, 3), 500);
    live.waitForAnalysis();
    processor.resetAnalysis();
    live.waitForAnalysis();
    std::ignore = live.rig.run (signals::noise (2, 1000, 3), 500);
    live.waitForAnalysis();
    EXPECT_EQ (live.spectra, 0) << "2000 samples came, but no 1024 since the reset";
}

TEST_F (AnalysisThreadsTest, resetsDuringTheWorkOfThreeThreadsLeaveNothingBehind)
{
    prepare (256);
    const auto signal = referenceMixture (256 * 200);
    std::atomic<bool> stop { false };
    std::thread audio (
        [&]
        {
            while (! stop)
                std::ignore = live.rig.run (signal, 256);
        });

    for (int round = 0; round < 300; ++round)
    {
        const auto before = live.passes.load();
        processor.resetAnalysis();

        while (live.passes < before + round % 4)
            std::this_thread::yield();
    }

    stop = true;
    audio.join();
    processor.resetAnalysis();
    live.waitForAnalysis();
    EXPECT_THAT (live.levels(), Each (resetLevelDb));
    EXPECT_THAT (live.gainTargets(), Each (0.0f));

    live.feed (signals::constant (0.0f, 512), 256);
    EXPECT_EQ (live.inputLoudness(), nothing);
}

TEST_F (AnalysisThreadsTest, prepareMayComeWhileThreadsAreInAPass)
{
    const std::array<std::pair<double, int>, 4> formats {
        { { 44100.0, 2 }, { 192000.0, 1 }, { 48000.0, 1 }, { 96000.0, 2 } }
    };

    for (int round = 0; round < 40; ++round)
    {
        const auto [sampleRate, channels] = formats[static_cast<std::size_t> (round) % formats.size()];
        prepare (1024, sampleRate, channels);
        EXPECT_THAT (live.levels(), Each (resetLevelDb));
        std::ignore = live.rig.run (signals::noise (channels, 12 * 1024, 1), 1024);
    }

    prepare();
    live.feed (referenceMixture (562 * 512), 512);
    EXPECT_NEAR (live.levels()[2], -16.842, 0.02);
    EXPECT_NEAR (live.levels()[4], -28.815, 0.02);
}

TEST_F (AnalysisThreadsTest, threadsEndAtOnceWhateverTheyDo)
{
    const auto signal = signals::noise (2, 15 * 1024, 1);

    for (int round = 0; round < 60; ++round)
    {
        PluginRig rig;
        rig.prepare (rate, 1024);
        std::ignore = rig.run (signal, round % 2 == 0 ? 1024 : 37);
    }
}

TEST (AnalysisThreadsEndTest, oneMayEndWhileTheOtherWaitsForIt)
{
    PluginModel model;
    model.sampleRate = rate;
    model.decimationFactor = 4;
    TargetSet target;
    const std::vector<double> low (1024, 0.1);
    const std::vector<float> full (4096, 0.1f);

    for (int round = 0; round < 200; ++round)
    {
        LiveAnalysis analysis (model, target, [] { return nothing; });
        analysis.prepare();
        analysis.startThreads();

        for (int block = 0; block < round % 4; ++block)
            analysis.feedAnalysis (low.data(), nullptr, 1024, full.data(), nullptr, 4096);
    }
}

TEST (AnalysisThreadsEndTest, manyInstancesEndUnderLoad)
{
    std::vector<std::unique_ptr<PluginRig>> rigs;

    for (int instance = 0; instance < 8; ++instance)
    {
        rigs.push_back (std::make_unique<PluginRig>());
        rigs.back()->prepare (rate, 512);
    }

    const auto signal = signals::noise (2, 8 * 1024, 1);
    std::vector<std::thread> threads;

    for (auto& rig : rigs)
        threads.emplace_back (
            [&rig, &signal]
            {
                std::ignore = rig->run (signal, 512);
                rig.reset();
            });

    for (auto& thread : threads)
        thread.join();
}

//======================================================================================================================
TEST_F (AnalysisThreadsTest, theAudioThreadAllocatesNothingAndTakesTheNotifyLockAlone)
{
    prepare (256);
    processor.model.editorClosed = false;
    processor.model.setShowHeatmap (true);
    live.rig.settle();
    const auto signal = referenceMixture (256);
    juce::AudioBuffer<float> buffer (2, 256);
    juce::MidiBuffer noMidi;
    constexpr int blockCount = 600;
    auto allocations = 0;
    auto locks = 0;

    for (int block = 0; block < blockCount; ++block)
    {
        for (int channel = 0; channel < 2; ++channel)
            buffer.copyFrom (channel, 0, signal[static_cast<std::size_t> (channel)].data(), 256);

        const RealTimeGuard guard;
        processor.processBlock (buffer, noMidi);
        allocations += guard.allocations();
        locks += guard.locks();
    }

    EXPECT_EQ (allocations, 0);
    EXPECT_EQ (locks, RealTimeGuard::countsLocks() ? blockCount : 0);
}

TEST_F (AnalysisThreadsTest, theAudioThreadNeverWaitsForAPass)
{
    // A pass may take as long as it likes: while a listener holds the analysis thread, blocks are fed on and on.
    PluginModel model;
    model.sampleRate = rate;
    model.decimationFactor = 4;
    TargetSet target;
    std::atomic<bool> release { false };
    std::atomic<bool> held { false };
    LiveAnalysis slow (model,
                       target,
                       [&]
                       {
                           held = true;

                           while (! release)
                               std::this_thread::yield();

                           return nothing;
                       });
    slow.prepare();
    slow.startThreads();
    const std::vector<double> low (256, 0.1);
    const std::vector<float> full (1024, 0.1f);

    while (! held)
        slow.feedAnalysis (low.data(), nullptr, 256, full.data(), nullptr, 1024);

    for (int block = 0; block < 1000; ++block)
        slow.feedAnalysis (low.data(), nullptr, 256, full.data(), nullptr, 1024);

    EXPECT_TRUE (held);
    release = true;
}
} // namespace
