#include "support/BiQuadResponse.h"
#include "support/Fixture.h"
#include "support/LiveRig.h"
#include "support/RealTimeGuard.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <limits>
#include <thread>

namespace
{
using testing::Each;

constexpr double rate = 48000.0;
constexpr auto nothing = -std::numeric_limits<float>::infinity();

/** The mixture of the reference figures, which were computed from its formula by an independent program. */
PluginRig::Signal referenceMixture (int length)
{
    return signals::tones (
        { { 330, 0.1 }, { 1000, 0.2 }, { 3000, 0.05 }, { 6000, 0.04 }, { 10500, 0.02 }, { 15000, 0.01 } },
        length,
        rate,
        2,
        0.5);
}

PluginRig::Signal sine (double frequencyHz, int length, double sampleRate = rate, int channelCount = 2)
{
    return signals::tones ({ { frequencyHz, 0.1 } }, length, sampleRate, channelCount);
}

class LiveAnalysisTest : public testing::Test
{
protected:
    void prepare (int blockSize = 512, double sampleRate = rate, int channelCount = 2)
    {
        live.rig.prepare (sampleRate, blockSize, channelCount);
    }

    LiveRig live;
    VelmoraAudioProcessor& processor = live.processor;
    LiveAnalysis& analysis = processor.liveAnalysis();
};

//======================================================================================================================
// Levels and targets

TEST_F (LiveAnalysisTest, theReferenceMixtureGivesTheIndependentFigures)
{
    const auto reference = readFixture ("band_levels.json");
    const auto wanted = reference["targetValues"].get<std::vector<float>>();
    constexpr auto tolerance = 0.02f;
    prepare();
    processor.target.set (reference["targetLufs"], wanted, std::nullopt);

    live.feed (referenceMixture (562 * 512), 512);

    EXPECT_NEAR (live.inputLoudness(), reference["inputLoudness"].get<float>(), tolerance);

    for (std::size_t band = 0; band < analysisBandCount; ++band)
    {
        EXPECT_NEAR (live.levels()[band], reference["bandLevels"][band].get<float>(), tolerance) << band;
        EXPECT_NEAR (live.gainTargets()[band], reference["gainTarget"][band].get<float>(), tolerance) << band;
    }
}

TEST_F (LiveAnalysisTest, aGainTargetIsTheDistanceToTheTargetWithoutTheOverallOne)
{
    prepare();
    const std::vector<float> wanted { -20, -21, -22, -23, -24, -25, -26, -28, -32, -38 };
    processor.target.set (-14.0f, wanted, std::nullopt);
    live.feed (referenceMixture (150 * 1024), 512);

    for (std::size_t band = 0; band < analysisBandCount; ++band)
        EXPECT_FLOAT_EQ (live.gainTargets()[band],
                         (wanted[band] - live.levels()[band]) - (-14.0f - live.inputLoudness()));
}

TEST_F (LiveAnalysisTest, everyBlockSizeGivesTheSameLevels)
{
    const auto signal = referenceMixture (72 * 1024);
    std::vector<float> expected;

    for (const auto blockSize : { 512, 1, 7, 64, 8192 })
    {
        LiveRig other;
        other.rig.prepare (rate, blockSize);
        other.feed (signal, blockSize);

        if (expected.empty())
            expected = other.levels();

        EXPECT_EQ (other.levels(), expected) << blockSize;
        EXPECT_GT (other.levels()[2], -30.0f);
    }
}

TEST_F (LiveAnalysisTest, levelsStayAtTheirStartUntilTheFirstGate)
{
    prepare();
    EXPECT_THAT (live.levels(), Each (resetLevelDb));
    live.feed (referenceMixture (46 * 1024), 512);
    EXPECT_THAT (live.levels(), Each (resetLevelDb)) << "47104 samples are less than a second";
    EXPECT_EQ (live.inputLoudness(), nothing);
    EXPECT_THAT (live.gainTargets(), Each (0.0f)) << "not finite without a reading of the input";

    live.feed (referenceMixture (2 * 1024), 512);
    EXPECT_GT (live.levels()[0], resetLevelDb);
}

TEST_F (LiveAnalysisTest, silenceLeavesLevelsWhereTheyStart)
{
    prepare();
    live.feed (signals::constant (0.0f, 100 * 1024), 512);
    EXPECT_THAT (live.levels(), Each (resetLevelDb));
    EXPECT_THAT (live.gainTargets(), Each (0.0f));
}

TEST_F (LiveAnalysisTest, theNewestLevelStaysThroughSilence)
{
    prepare();
    live.feed (referenceMixture (60 * 1024), 512);
    live.feed (signals::constant (0.0f, 100 * 1024), 512);
    EXPECT_GT (live.levels()[2], -35.0f);
}

struct SineCase
{
    double sampleRate;
    int channels;
};

class SineLevelTest : public testing::TestWithParam<SineCase>
{
};

TEST_P (SineLevelTest, aSineAtOneKilohertzRaisesItsOwnBand)
{
    const auto [sampleRate, channels] = GetParam();
    LiveRig live;
    live.rig.prepare (sampleRate, 512, channels);
    const auto chunks = static_cast<int> (5.0 * sampleRate) / 1024;
    live.feed (sine (1000.0, chunks * 1024, sampleRate, channels), 512);

    // Amplitude 0.1 in each channel, through a low-pass and a high-pass of fourth order on the band's centre, which the
    // factor 2 brings back to 0 dB there.
    const auto levels = live.levels();
    const auto lowRate = sampleRate / live.processor.model.decimationFactor;

    for (std::size_t band = 0; band < 9; ++band)
    {
        const auto ratio =
            prototypeFrequency (1000.0, analysisCentresHz[band], band < lowBandCount ? lowRate : sampleRate);
        const auto eighth = std::pow (ratio, 8.0);
        const auto lossDb = 10.0 * std::log10 ((1.0 + eighth) * (1.0 + 1.0 / eighth) / 4.0);
        const auto expected = 10.0 * std::log10 (channels * 0.005) - 0.691 - lossDb;

        // The first windows hold the reset level, and far from the tone the onset is louder than the tone.
        if (lossDb < 20.0)
            EXPECT_NEAR (levels[band], expected, 0.35) << band;
        else
            EXPECT_LT (levels[band], levels[2] - 18.0f) << band;
    }

    EXPECT_EQ (std::max_element (levels.begin(), levels.end() - 1) - levels.begin(), 2);
}

INSTANTIATE_TEST_SUITE_P (Rates,
                          SineLevelTest,
                          testing::Values (SineCase { 44100.0, 2 },
                                           SineCase { 48000.0, 2 },
                                           SineCase { 48000.0, 1 },
                                           SineCase { 96000.0, 2 },
                                           SineCase { 192000.0, 1 }),
                          [] (const auto& tested)
                          {
                              return std::to_string (static_cast<int> (tested.param.sampleRate))
                                     + (tested.param.channels == 1 ? "Mono" : "Stereo");
                          });

//======================================================================================================================
// What a pass tells

TEST_F (LiveAnalysisTest, everyPassTellsItsListeners)
{
    prepare();
    const auto before = live.passes.load();
    live.waitForAnalysis();
    EXPECT_GE (live.passes, before + 2);
    EXPECT_TRUE (processor.model.integratedLUFSAnalysisChanged());
}

class AnalysisWakingTest : public LiveAnalysisTest
{
protected:
    AnalysisWakingTest() { prepare (1024); }

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

TEST_F (LiveAnalysisTest, movesOfTheTargetsAreToldOnce)
{
    prepare();
    processor.target.set (-10.0f, std::vector<float> (10, -25.0f), std::nullopt);
    live.feed (referenceMixture (60 * 1024), 512);
    EXPECT_TRUE (live.takeMoves().any);
    live.waitForAnalysis();
    std::ignore = live.takeMoves();
    live.waitForAnalysis();
    const auto still = live.takeMoves();
    EXPECT_FALSE (still.any);
    EXPECT_EQ (still.largest, 0.0f);

    processor.target.set (-10.0f, std::vector<float> (10, -23.5f), std::nullopt);
    live.waitForAnalysis();
    const auto moved = live.takeMoves();
    EXPECT_TRUE (moved.any);
    EXPECT_FLOAT_EQ (moved.largest, 1.5f);

    processor.target.set (-10.0f, std::vector<float> (10, -23.46f), std::nullopt);
    live.waitForAnalysis();
    EXPECT_FALSE (live.takeMoves().any) << "0.04 dB is no move";
}

TEST_F (LiveAnalysisTest, noLargestMoveIsToldOnceBothListsAreReady)
{
    prepare();
    live.feed (referenceMixture (60 * 1024), 512);
    processor.model.setSmartBandsReady (true, false);
    processor.model.setTargetsReady (true, false);
    live.waitForAnalysis();
    std::ignore = live.takeMoves();
    processor.target.set (-10.0f, std::vector<float> (10, -11.0f), std::nullopt);
    live.waitForAnalysis();
    const auto moved = live.takeMoves();
    EXPECT_TRUE (moved.any);
    EXPECT_EQ (moved.largest, 0.0f);
}

TEST_F (LiveAnalysisTest, aPrepareTakesBothReadyFlagsBack)
{
    processor.model.setSmartBandsReady (true, false);
    processor.model.setTargetsReady (true, false);
    prepare();
    EXPECT_FALSE (processor.model.smartBandsReady());
    EXPECT_FALSE (processor.model.targetsReady());
}

//======================================================================================================================
// Spectrum

class SpectrumTest : public LiveAnalysisTest
{
protected:
    SpectrumTest()
    {
        prepare();
        processor.model.setShowHeatmap (true);
    }

    using Spectrum = std::array<float, SpectrumAnalyser::binCount>;

    /** @returns the spectrum where there is a new one */
    [[nodiscard]] std::optional<Spectrum> newSpectrum()
    {
        Spectrum copy {};
        return analysis.copySpectrum (copy) ? std::optional (copy) : std::nullopt;
    }
};

TEST_F (SpectrumTest, theLastChunkOfTheInputIsCopied)
{
    const auto signal = signals::noise (2, 4 * 1024, 9);
    EXPECT_FALSE (newSpectrum().has_value());
    live.feed (signal, 512);

    Spectrum expected;
    SpectrumAnalyser().analyseSpectrum (signal[0].data() + 3 * 1024, signal[1].data() + 3 * 1024, expected.data());
    const auto spectrum = newSpectrum();
    ASSERT_TRUE (spectrum.has_value());
    EXPECT_EQ (*spectrum, expected);
    EXPECT_EQ (live.spectra, 4);
    EXPECT_FALSE (newSpectrum().has_value()) << "taken once";
}

TEST_F (SpectrumTest, aMonoBusIsTransformedAsItIs)
{
    prepare (512, rate, 1);
    const auto signal = signals::noise (1, 2 * 1024, 9);
    live.feed (signal, 512);
    Spectrum expected;
    SpectrumAnalyser().analyseSpectrum (signal[0].data() + 1024, nullptr, expected.data());
    EXPECT_EQ (newSpectrum(), expected);
}

TEST_F (SpectrumTest, nothingIsTransformedWithoutAHeatMap)
{
    processor.model.setShowHeatmap (false);
    live.feed (signals::noise (2, 2 * 1024, 9), 512);
    EXPECT_FALSE (newSpectrum().has_value());
    EXPECT_EQ (live.spectra, 0);
}

TEST_F (SpectrumTest, aFrozenSpectrumStays)
{
    live.feed (signals::noise (2, 2 * 1024, 9), 512);
    const auto before = newSpectrum();
    analysis.spectrumFrozen = true;
    live.feed (signals::noise (2, 2 * 1024, 10), 512);
    EXPECT_FALSE (newSpectrum().has_value());
    Spectrum still;
    EXPECT_FALSE (analysis.copySpectrum (still));
    EXPECT_EQ (before, still);

    analysis.spectrumFrozen = false;
    live.feed (signals::noise (2, 2 * 1024, 10), 512);
    EXPECT_TRUE (newSpectrum().has_value());
}

TEST_F (SpectrumTest, silentAndNegativeChunksLeaveTheLastSpectrumStanding)
{
    live.feed (signals::constant (0.0f, 2 * 1024), 512);
    live.feed (signals::constant (-0.5f, 2 * 1024), 512);
    EXPECT_FALSE (newSpectrum().has_value());
    live.feed (signals::constant (0.5f, 1024), 512);
    EXPECT_TRUE (newSpectrum().has_value());
}

TEST_F (SpectrumTest, aClearedSpectrumIsZero)
{
    live.feed (signals::noise (2, 2 * 1024, 9), 512);
    analysis.clearSpectrum();
    Spectrum spectrum;
    analysis.copySpectrum (spectrum);
    EXPECT_THAT (spectrum, Each (0.0f));
}

TEST_F (SpectrumTest, whatIsLessThanAChunkWaitsForTheRest)
{
    live.feed (signals::noise (2, 1023, 9), 1023);
    EXPECT_FALSE (newSpectrum().has_value());
    live.feed (signals::noise (2, 5, 9), 5);
    EXPECT_TRUE (newSpectrum().has_value());
}

TEST (FullAnalysisFifoTest, losesWhatComesLateAndNothingElse)
{
    PluginModel model;
    model.sampleRate = rate;
    model.decimationFactor = 4;
    model.isStereo = true;
    model.setShowHeatmap (true);
    TargetSet target;
    LiveAnalysis analysis (model, target, [] { return nothing; });
    analysis.prepare();
    std::atomic<int> spectra { 0 };
    const auto token = model.channels.add ([&] { ++spectra; }, Channels::dftAnalysisChanged);

    const auto feed = [&analysis] (const PluginRig::Signal& signal)
    {
        const std::vector<double> low (256, 0.25);

        for (std::size_t start = 0; start < signal[0].size(); start += 1024)
            analysis.feedAnalysis (
                low.data(), low.data(), 256, signal[0].data() + start, signal[1].data() + start, 1024);
    };
    const auto peakBin = [&analysis]
    {
        std::array<float, SpectrumAnalyser::binCount> spectrum;
        analysis.copySpectrum (spectrum);
        return std::max_element (spectrum.begin() + 1, spectrum.end() - 1) - spectrum.begin();
    };

    // Nobody reads yet: 15 chunks fit, since one place stays free, and the late ones find no room.
    feed (sine (46.875 * 20, 15 * 1024));
    feed (sine (46.875 * 200, 30 * 1024));
    analysis.startThreads();
    const auto waitForSpectra = [&] (int wanted)
    {
        while (spectra < wanted)
        {
            analysis.wake();
            std::this_thread::yield();
        }
    };

    waitForSpectra (15);

    EXPECT_EQ (spectra, 15);
    EXPECT_EQ (peakBin(), 20);

    feed (sine (46.875 * 100, 1024));

    waitForSpectra (16);

    EXPECT_EQ (peakBin(), 100) << "there is room again";
    analysis.requestStop();
    analysis.joinThreads();
    model.channels.remove (token);
}

//======================================================================================================================
// Reset, prepare and the end, while the threads are at work

TEST_F (LiveAnalysisTest, aResetPutsEverythingBackAtOnce)
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

TEST_F (LiveAnalysisTest, aResetLosesWhatWaitsInTheFifos)
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

TEST_F (LiveAnalysisTest, resetsDuringTheWorkOfThreeThreadsLeaveNothingBehind)
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

TEST_F (LiveAnalysisTest, prepareMayComeWhileThreadsAreInAPass)
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

TEST_F (LiveAnalysisTest, threadsEndAtOnceWhateverTheyDo)
{
    const auto signal = signals::noise (2, 15 * 1024, 1);

    for (int round = 0; round < 60; ++round)
    {
        PluginRig rig;
        rig.prepare (rate, 1024);
        std::ignore = rig.run (signal, round % 2 == 0 ? 1024 : 37);
    }
}

TEST (AnalysisThreadsTest, oneMayEndWhileTheOtherWaitsForIt)
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

TEST (AnalysisThreadsTest, manyInstancesEndUnderLoad)
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
TEST_F (LiveAnalysisTest, theAudioThreadAllocatesNothingAndTakesTheNotifyLockAlone)
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

TEST_F (LiveAnalysisTest, theAudioThreadNeverWaitsForAPass)
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
