#include "dsp/path/BlockProcessor.h"

#include "support/RealTimeGuard.h"
#include "support/TestSignals.h"

#include <gtest/gtest.h>

#include <memory>

namespace
{
class FixedSettings final : public IDesignSource
{
public:
    void readDesignSettings (DesignSettings& settings) const noexcept override
    {
        const auto mark = settings.gainScaleApplied;
        settings = current;
        settings.gainScaleApplied = mark;
    }

    DesignSettings current;
};

std::vector<double> copyOf (std::span<const double> taps)
{
    return { taps.begin(), taps.end() };
}

std::vector<double> centredImpulse (int count)
{
    std::vector<double> taps (static_cast<std::size_t> (count), 0.0);
    taps[static_cast<std::size_t> ((count - 1) / 2)] = 1.0;
    return taps;
}

class BlockProcessorTest : public testing::Test
{
protected:
    BlockProcessorTest() { source.current.filterMode = FilterMode::mix; }

    std::unique_ptr<BlockProcessor> makeBlock (BlockProcessorMode mode)
    {
        auto block = std::make_unique<BlockProcessor> (source, mode);
        block->prepare (48000.0);
        return block;
    }

    /** Sets a band's gain and sends its message. */
    void send (BlockProcessor& block, int band, float frequencyHz, float gainDb)
    {
        auto& settings = source.current.bands[static_cast<std::size_t> (band)];
        settings.frequencyHz = frequencyHz;
        settings.gainDb = gainDb;
        block.update (gainDb, "band_gain_" + std::to_string (band), false);
    }

    FixedSettings source;
};

TEST_F (BlockProcessorTest, startsFlatAfterPrepare)
{
    const auto block = makeBlock (BlockProcessorMode::stereo);
    EXPECT_EQ (copyOf (block->taps().linearHigh.taps()), centredImpulse (101));
    EXPECT_EQ (copyOf (block->taps().low.taps()), centredImpulse (101));
    EXPECT_FALSE (block->tapsReady);
    EXPECT_FALSE (block->needsRebuild);
}

TEST_F (BlockProcessorTest, makesTapsOnceAtTheEndOfItsUpdates)
{
    const auto block = makeBlock (BlockProcessorMode::stereo);
    send (*block, 0, 8000.0f, 6.0f);
    send (*block, 1, 500.0f, -6.0f);
    EXPECT_FALSE (block->tapsReady);
    EXPECT_EQ (copyOf (block->taps().linearHigh.taps()), centredImpulse (101)) << "not before finishUpdates";

    block->finishUpdates();
    EXPECT_TRUE (block->tapsReady);
    EXPECT_NE (copyOf (block->taps().linearHigh.taps()), centredImpulse (101));
    EXPECT_NE (copyOf (block->taps().low.taps()), centredImpulse (101));
}

TEST_F (BlockProcessorTest, finishingWithoutAnUpdateMakesNothing)
{
    const auto block = makeBlock (BlockProcessorMode::stereo);
    block->finishUpdates();
    EXPECT_FALSE (block->tapsReady);

    block->update (1.0f, "paramOutputGainDb", false);
    block->update (1.0f, "band_gain_12", false);
    block->finishUpdates();
    EXPECT_FALSE (block->tapsReady) << "names without a band's number are ignored";
}

TEST_F (BlockProcessorTest, theDisplayDrawsAndMakesNoTaps)
{
    const auto block = makeBlock (BlockProcessorMode::display);
    send (*block, 0, 8000.0f, 6.0f);
    const auto curve = block->displayCurve();
    EXPECT_NEAR (*std::max_element (curve.begin(), curve.end()), std::pow (10.0, 6.0 / 20.0), 0.01);

    block->finishUpdates();
    EXPECT_FALSE (block->tapsReady);
    EXPECT_EQ (copyOf (block->taps().linearHigh.taps()), centredImpulse (101));
}

TEST_F (BlockProcessorTest, copyingHandsTheTapsToTheAudioAndClearsTheFlag)
{
    const auto block = makeBlock (BlockProcessorMode::stereo);
    send (*block, 0, 8000.0f, 6.0f);
    block->finishUpdates();

    const auto impulseThrough = [&block]
    {
        std::vector<float> input (1024, 0.0f);
        input[0] = 1.0f;
        const std::vector<double> low (256, 0.0);
        block->processSingle (input.data(), low.data(), 1024, false, FilterPhase::linear);
        return std::vector<double> (block->outputLeft(), block->outputLeft() + 1024);
    };

    const auto before = impulseThrough();
    EXPECT_EQ (before[274], 1.0) << "still flat: the old taps run";
    block->copyTaps();
    EXPECT_FALSE (block->tapsReady);
    EXPECT_NE (impulseThrough()[274], 1.0);
}

TEST_F (BlockProcessorTest, soloDesignsTheSoloTapsAndLeavesTheOthers)
{
    const auto block = makeBlock (BlockProcessorMode::stereo);
    source.current.soloActive = true;
    source.current.bands[2].solo = 1.0f;
    source.current.bands[2].frequencyHz = 3000.0f;
    block->update (1.0f, "band_solo_2", false);
    block->finishUpdates();

    EXPECT_TRUE (block->tapsReady);
    EXPECT_EQ (copyOf (block->taps().linearHigh.taps()), centredImpulse (101));
    const auto solo = copyOf (block->taps().solo.taps());
    EXPECT_GT (*std::max_element (solo.begin(), solo.end()), 0.0);
}

TEST_F (BlockProcessorTest, aRebuildTakesTheModesLengthsAndKeepsTheSoloTaps)
{
    const auto block = makeBlock (BlockProcessorMode::stereo);
    send (*block, 0, 8000.0f, 6.0f);
    block->finishUpdates();
    source.current.soloActive = true;
    source.current.bands[0].solo = 1.0f;
    block->update (1.0f, "band_solo_0", false);
    block->finishUpdates();
    const auto solo = copyOf (block->taps().solo.taps());

    source.current.filterMode = FilterMode::master;
    block->rebuild();
    EXPECT_EQ (copyOf (block->taps().linearHigh.taps()), centredImpulse (61));
    EXPECT_EQ (copyOf (block->taps().low.taps()), centredImpulse (61));
    EXPECT_EQ (copyOf (block->taps().solo.taps()), solo);
    EXPECT_FALSE (block->tapsReady) << "a rebuild hands its taps over itself";
}

TEST_F (BlockProcessorTest, aRebuildKeepsTheCurvesSoThatOneUpdateBringsEveryBandBack)
{
    const auto block = makeBlock (BlockProcessorMode::stereo);
    send (*block, 0, 8000.0f, 6.0f);
    send (*block, 5, 3000.0f, -4.0f);
    block->finishUpdates();
    const auto wanted = copyOf (block->taps().linearHigh.taps());

    block->rebuild();
    block->update (6.0f, "band_gain_0", false);
    block->finishUpdates();
    EXPECT_EQ (copyOf (block->taps().linearHigh.taps()), wanted);
}

TEST_F (BlockProcessorTest, theMarkOfAScaledGainActsOnItsOwnUpdateAlone)
{
    source.current.gainScalePercent = 50.0f;
    const auto marked = makeBlock (BlockProcessorMode::display);
    source.current.bands[0].frequencyHz = 8000.0f;
    source.current.bands[0].gainDb = 8.0f;

    const auto peakAfter = [&marked] (bool mark)
    {
        marked->update (8.0f, "band_gain_0", mark);
        const auto curve = marked->displayCurve();
        return 20.0 * std::log10 (*std::max_element (curve.begin(), curve.end()));
    };

    EXPECT_NEAR (peakAfter (true), 8.0, 0.01);
    EXPECT_NEAR (peakAfter (false), 4.0, 0.01);
}

TEST_F (BlockProcessorTest, hasOneOwnerAtATime)
{
    const auto block = makeBlock (BlockProcessorMode::stereo);
    EXPECT_TRUE (block->tryOwn());
    EXPECT_FALSE (block->tryOwn());
    block->disown();
    block->own();
    EXPECT_FALSE (block->tryOwn());
    block->disown();
}

TEST_F (BlockProcessorTest, designsRebuildsAndHandOversNeitherAllocateNorLock)
{
    for (const auto phase : { FilterPhase::linear, FilterPhase::minimum })
    {
        const auto block = makeBlock (BlockProcessorMode::stereo);
        source.current.filterPhase = phase;
        source.current.bands[0] = { .frequencyHz = 8000.0f, .gainDb = 3.0f };
        source.current.bands[1] = { .frequencyHz = 400.0f, .gainDb = 3.0f };
        const std::string high = "band_frequency_0";
        const std::string low = "band_frequency_1";
        const RealTimeGuard guard;

        for (const auto mode : { FilterMode::master, FilterMode::mix })
        {
            source.current.filterMode = mode;
            block->rebuild();
            block->update (8000.0f, high, false);
            block->update (400.0f, low, false);
            block->finishUpdates();
            block->copyTaps();
        }

        EXPECT_EQ (guard.allocations(), 0);
        EXPECT_EQ (guard.locks(), 0);
    }
}
} // namespace
