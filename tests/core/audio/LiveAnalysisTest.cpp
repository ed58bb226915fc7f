#include "core/audio/LiveAnalysisFixture.h"
#include "support/BiQuadResponse.h"
#include "support/Fixture.h"

#include <gmock/gmock.h>

namespace
{
using namespace liveSignals;
using testing::Each;

class LiveAnalysisTest : public LiveAnalysisFixture
{
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

TEST_F (LiveAnalysisTest, threeEqualLevelsLeaveTheTopBandItsOwn)
{
    // Too soft for the gate of the bands below it, which all stay at the start.
    prepare();
    live.feed (signals::tones ({ { 18000.0, 0.0011 } }, 200 * 1024, rate), 512);
    const auto levels = live.levels();
    EXPECT_EQ (levels[6], resetLevelDb);
    EXPECT_EQ (levels[7], resetLevelDb);
    EXPECT_EQ (levels[8], resetLevelDb);
    EXPECT_NEAR (levels[9], -59.9, 0.5);
}

//======================================================================================================================
// What a pass tells

TEST_F (LiveAnalysisTest, everyPassTellsItsListeners)
{
    prepare();
    const auto before = live.passes.load();
    live.waitForAnalysis();
    EXPECT_GT (live.passes, before);
    EXPECT_TRUE (processor.model.integratedLUFSAnalysisChanged());
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
} // namespace
