#include "dsp/path/BlockPath.h"

#include "support/SimdLevels.h"
#include "support/TestSignals.h"

#include <gtest/gtest.h>

#include <memory>

namespace
{
struct Stereo
{
    std::vector<double> left;
    std::vector<double> right;

    bool operator== (const Stereo&) const = default;
};

std::vector<double> impulse (int count, int position)
{
    std::vector<double> taps (static_cast<std::size_t> (count), 0.0);

    if (count > 0)
        taps[static_cast<std::size_t> (position)] = 1.0;

    return taps;
}

std::vector<double> symmetricNoise (int count, unsigned seed)
{
    auto taps = noise (count, seed);
    std::copy_n (taps.begin(), count / 2, taps.rbegin());
    return taps;
}

/** A windowed cosine, scaled to a given gain at its frequency, over an impulse: a bell of linear phase. */
std::vector<double> bell (int count, double cyclesPerSample, double gain)
{
    auto taps = impulse (count, (count - 1) / 2);
    std::vector<double> added (taps.size());
    double sum = 0.0;

    for (std::size_t i = 0; i < taps.size(); ++i)
    {
        const auto offset = static_cast<double> (i) - (count - 1) / 2;
        const auto window = 0.5 + 0.5 * std::cos (2.0 * std::numbers::pi * offset / (count + 1));
        added[i] = window * std::cos (2.0 * std::numbers::pi * cyclesPerSample * offset);
        sum += added[i] * std::cos (2.0 * std::numbers::pi * cyclesPerSample * offset);
    }

    for (std::size_t i = 0; i < taps.size(); ++i)
        taps[i] += added[i] * (gain - 1.0) / sum;

    return taps;
}

/** A path with its own decimation of the input, as the audio callback has it. */
class PathUnderTest
{
public:
    PathUnderTest (double sampleRate, FilterMode mode) : lengths (firLengthsFor (sampleRate, mode))
    {
        decimator.setSampleRate (sampleRate);
        decimator.buildFilters();
        path.prepare (sampleRate);
        path.configureLengths (lengths);
        low = impulse (lengths.lowTapCount, lengths.lowDelaySamples());
        linearHigh = impulse (lengths.linearHighTapCount, (lengths.linearHighTapCount - 1) / 2);
        minimum = impulse (lengths.minimumTapCount, 0);
        setTaps();
    }

    void setTaps() { path.setTaps ({ low, linearHigh, minimum, solo }); }

    Stereo run (const std::vector<float>& left, const std::vector<float>& right, const std::vector<Block>& blocks)
    {
        Stereo result;

        for (const auto& block : blocks)
        {
            decimator.decimateStereo (left.data() + block.start, right.data() + block.start, block.count);
            path.processStereo (left.data() + block.start,
                                right.data() + block.start,
                                decimator.outputLeft(),
                                decimator.outputRight(),
                                block.count,
                                soloActive,
                                phase);
            result.left.insert (result.left.end(), path.outputLeft(), path.outputLeft() + block.count);
            result.right.insert (result.right.end(), path.outputRight(), path.outputRight() + block.count);
        }

        return result;
    }

    template <typename Sample>
    std::vector<double> runSingle (const std::vector<Sample>& input, const std::vector<Block>& blocks)
    {
        std::vector<double> result;
        const std::vector<float> floats (input.begin(), input.end());

        for (const auto& block : blocks)
        {
            decimator.decimateSingle (floats.data() + block.start, block.count);
            path.processSingle (input.data() + block.start, decimator.outputLeft(), block.count, soloActive, phase);
            result.insert (result.end(), path.outputLeft(), path.outputLeft() + block.count);
        }

        return result;
    }

    FirLengths lengths;
    RateConverter decimator;
    BlockPath path;
    std::vector<double> low;
    std::vector<double> linearHigh;
    std::vector<double> minimum;
    std::vector<double> solo = std::vector<double> (soloTapCount, 0.0);
    FilterPhase phase = FilterPhase::linear;
    bool soloActive = false;
};

struct Setting
{
    double sampleRate;
    FilterMode mode;
    FilterPhase phase;
};

std::vector<Setting> allSettings()
{
    std::vector<Setting> settings;

    for (const auto rate : { 44100.0, 48000.0, 88200.0, 96000.0, 176400.0, 192000.0 })
        for (const auto mode : { FilterMode::mix, FilterMode::master })
            for (const auto phase : { FilterPhase::linear, FilterPhase::minimum })
                settings.push_back ({ rate, mode, phase });

    return settings;
}

TEST (BlockPathTest, flatTapsDelayByTheLatencyToTheBitInEverySetting)
{
    const auto left = toFloats (noise (6400, 1));
    const auto right = toFloats (noise (6400, 2));

    for (const auto& setting : allSettings())
    {
        PathUnderTest tested (setting.sampleRate, setting.mode);
        tested.phase = setting.phase;
        const auto latency = *baseLatencyFor (setting.sampleRate, setting.mode, setting.phase);
        const auto output = tested.run (left, right, randomBlocks (6400, 8, 900, 3));
        EXPECT_EQ (output.left, delayedBy (toDoubles (left), latency)) << setting.sampleRate;
        EXPECT_EQ (output.right, delayedBy (toDoubles (right), latency)) << setting.sampleRate;
    }
}

class BlockPathLevelTest : public testing::TestWithParam<SimdLevel>
{
protected:
    ScopedSimdLevel level { GetParam() };
};

INSTANTIATE_TEST_SUITE_P (Levels, BlockPathLevelTest, testing::ValuesIn (availableSimdLevels()), simdLevelName);

TEST_P (BlockPathLevelTest, outputDoesNotDependOnThePartitionToTheLastBit)
{
    const auto left = toFloats (noise (8192, 4));
    const auto right = toFloats (noise (8192, 5));

    for (const auto& setting : { Setting { 48000.0, FilterMode::mix, FilterPhase::linear },
                                 Setting { 96000.0, FilterMode::master, FilterPhase::minimum },
                                 Setting { 192000.0, FilterMode::mix, FilterPhase::linear } })
    {
        std::vector<Stereo> outputs;

        for (const auto largest : { 8192, 8, 64, 1000 })
        {
            PathUnderTest tested (setting.sampleRate, setting.mode);
            tested.phase = setting.phase;
            tested.low = symmetricNoise (tested.lengths.lowTapCount, 6);
            tested.linearHigh = symmetricNoise (tested.lengths.linearHighTapCount, 7);
            tested.minimum = noise (tested.lengths.minimumTapCount, 8);
            tested.setTaps();
            outputs.push_back (
                tested.run (left,
                            right,
                            largest == 8192 ? std::vector<Block> { { 0, 8192 } } : randomBlocks (8192, 8, largest, 9)));
            EXPECT_EQ (outputs.back(), outputs.front()) << setting.sampleRate << " " << largest;
        }
    }
}

TEST_P (BlockPathLevelTest, aSingleChannelEqualsTheLeftOfAStereoBlock)
{
    const auto left = toFloats (noise (4096, 10));
    const auto right = toFloats (noise (4096, 11));
    const auto blocks = randomBlocks (4096, 4, 500, 12);

    for (const auto phase : { FilterPhase::linear, FilterPhase::minimum })
    {
        const auto makePath = [&]
        {
            auto tested = std::make_unique<PathUnderTest> (48000.0, FilterMode::mix);
            tested->phase = phase;
            tested->low = symmetricNoise (101, 13);
            tested->linearHigh = symmetricNoise (101, 14);
            tested->minimum = noise (50, 15);
            tested->setTaps();
            return tested;
        };

        const auto stereo = makePath()->run (left, right, blocks);
        EXPECT_EQ (makePath()->runSingle (left, blocks), stereo.left);
        EXPECT_EQ (makePath()->runSingle (right, blocks), stereo.right);
        EXPECT_EQ (makePath()->runSingle (toDoubles (left), blocks), stereo.left);
    }
}

TEST (BlockPathTest, aLowBellActsThroughTheCorrectionAndLeavesTheTopAlone)
{
    PathUnderTest tested (48000.0, FilterMode::mix);
    tested.low = bell (101, 1000.0 / 12000.0, 2.0);
    tested.setTaps();

    const auto atBell = toFloats (sine (8192, 1000.0 / 48000.0));
    const auto boosted = tested.run (atBell, atBell, { { 0, 8192 } }).left;
    EXPECT_NEAR (*std::max_element (boosted.end() - 4800, boosted.end()), 2.0, 0.02);

    PathUnderTest top (48000.0, FilterMode::mix);
    top.low = tested.low;
    top.setTaps();
    const auto aboveReducedBand = toFloats (sine (8192, 0.2));
    const auto passed = top.run (aboveReducedBand, aboveReducedBand, { { 0, 8192 } }).left;
    const auto expected = delayedBy (toDoubles (aboveReducedBand), 274);
    double largest = 0.0;

    for (std::size_t i = 4096; i < 8192; ++i)
        largest = std::max (largest, std::abs (passed[i] - expected[i]));

    EXPECT_LT (largest, 2e-6);
}

TEST (BlockPathTest, theHighFilterRunsOnTheDelayedSum)
{
    const auto input = toFloats (noise (2048, 16));

    for (const auto phase : { FilterPhase::linear, FilterPhase::minimum })
    {
        PathUnderTest tested (48000.0, FilterMode::master);
        tested.phase = phase;
        tested.linearHigh = symmetricNoise (61, 17);
        tested.minimum = noise (30, 18);
        tested.setTaps();
        const auto& taps = phase == FilterPhase::linear ? tested.linearHigh : tested.minimum;
        const auto delayed = delayedBy (toDoubles (input), 144);
        const auto output = tested.run (input, input, randomBlocks (2048, 4, 300, 19)).left;

        for (std::size_t i = 0; i < output.size(); ++i)
        {
            double expected = 0.0;

            for (std::size_t k = 0; k < std::min (taps.size(), i + 1); ++k)
                expected += taps[k] * delayed[i - k];

            ASSERT_NEAR (output[i], expected, 1e-12);
        }
    }
}

TEST (BlockPathTest, above96KilohertzTheLinearFilterRunsWhateverThePhase)
{
    const auto input = toFloats (noise (4096, 20));
    std::vector<Stereo> outputs;

    for (const auto phase : { FilterPhase::linear, FilterPhase::minimum })
    {
        PathUnderTest tested (192000.0, FilterMode::mix);
        tested.phase = phase;
        tested.linearHigh = symmetricNoise (301, 21);
        tested.setTaps();
        outputs.push_back (tested.run (input, input, { { 0, 4096 } }));
    }

    EXPECT_EQ (outputs[0], outputs[1]);
}

TEST (BlockPathTest, soloRunsTheSoloFilterAloneWith128SamplesOfDelay)
{
    const auto left = toFloats (noise (4096, 22));
    const auto right = toFloats (noise (4096, 23));

    for (const auto rate : { 48000.0, 192000.0 })
    {
        PathUnderTest tested (rate, FilterMode::mix);
        tested.low = symmetricNoise (tested.lengths.lowTapCount, 24);
        tested.linearHigh = symmetricNoise (tested.lengths.linearHighTapCount, 25);
        tested.solo = impulse (soloTapCount, soloDelaySamples);
        tested.setTaps();
        tested.soloActive = true;
        const auto output = tested.run (left, right, randomBlocks (4096, 8, 700, 26));
        EXPECT_EQ (output.left, delayedBy (toDoubles (left), 128));
        EXPECT_EQ (output.right, delayedBy (toDoubles (right), 128));
    }
}

TEST (BlockPathTest, theFirstSoloIsSilentUntilItsTapsArrive)
{
    PathUnderTest tested (48000.0, FilterMode::mix);
    tested.soloActive = true;
    const auto input = toFloats (noise (512, 27));
    EXPECT_EQ (tested.run (input, input, { { 0, 512 } }).left, std::vector<double> (512, 0.0));
}

TEST (BlockPathTest, resettingSoloSilencesItsPastAndKeepsItsTaps)
{
    PathUnderTest tested (48000.0, FilterMode::mix);
    tested.solo = impulse (soloTapCount, soloDelaySamples);
    tested.setTaps();
    tested.soloActive = true;
    const auto input = toFloats (noise (512, 28));
    tested.run (input, input, { { 0, 512 } });
    tested.path.resetSolo();
    EXPECT_EQ (tested.run (input, input, { { 0, 512 } }).left, delayedBy (toDoubles (input), 128));
}

TEST (BlockPathTest, thePathStandsStillWhileSoloed)
{
    const auto input = toFloats (noise (2048, 29));
    PathUnderTest interrupted (48000.0, FilterMode::mix);
    PathUnderTest straight (48000.0, FilterMode::mix);
    const std::vector<Block> first { { 0, 512 } };
    const std::vector<Block> second { { 512, 512 } };
    interrupted.run (input, input, first);
    straight.run (input, input, first);
    const auto afterSolo = [&]
    {
        interrupted.path.processStereo (input.data() + 1024,
                                        input.data() + 1024,
                                        interrupted.decimator.outputLeft(),
                                        interrupted.decimator.outputRight(),
                                        512,
                                        true,
                                        FilterPhase::linear);
        return interrupted.run (input, input, second);
    }();
    EXPECT_EQ (afterSolo, straight.run (input, input, second));
}

TEST (BlockPathTest, thePhaseActsOnTheBlockThatItIsGivenTo)
{
    const auto input = toFloats (noise (1024, 30));
    PathUnderTest tested (48000.0, FilterMode::mix);
    tested.minimum.assign (50, 0.0);
    tested.minimum[0] = 0.5;
    tested.setTaps();
    tested.run (input, input, { { 0, 512 } });
    tested.phase = FilterPhase::minimum;
    const auto output = tested.run (input, input, { { 512, 512 } });

    for (std::size_t i = 0; i < 512; ++i)
        ASSERT_EQ (output.left[i], 0.5 * static_cast<double> (input[512 + i - 224]));
}

TEST (BlockPathTest, oldTapsRingOutOverTheBlockAfterTheHandOver)
{
    std::vector<float> input (512, 0.0f);
    input[255] = 1.0f;
    PathUnderTest tested (48000.0, FilterMode::mix);
    tested.low.assign (101, 0.0);
    tested.low[50] = 1.0;
    tested.minimum = noise (50, 31);
    tested.phase = FilterPhase::minimum;
    tested.setTaps();
    const auto oldTaps = tested.minimum;
    tested.run (input, input, { { 0, 480 } });
    tested.minimum = noise (50, 32);
    tested.setTaps();
    const auto output = tested.run (input, input, { { 480, 32 } });

    // The impulse entered the high filter at 255 + 224 = 479, the last sample before the change.
    for (std::size_t i = 0; i < 32; ++i)
        ASSERT_NEAR (output.left[i], oldTaps[i + 1], 1e-15);
}

TEST (BlockPathTest, configuringLengthsSilencesEverythingButTheSoloFilter)
{
    const auto input = toFloats (noise (2048, 33));
    PathUnderTest tested (48000.0, FilterMode::mix);
    tested.solo = impulse (soloTapCount, soloDelaySamples);
    tested.setTaps();
    tested.run (input, input, { { 0, 2048 } });
    tested.path.configureLengths (firLengthsFor (48000.0, FilterMode::master));
    EXPECT_EQ (tested.run (input, input, { { 0, 1024 } }).left, std::vector<double> (1024, 0.0));
    tested.soloActive = true;
    EXPECT_EQ (tested.run (input, input, { { 0, 1024 } }).left,
               delayedBy ({ input.begin(), input.begin() + 1024 }, 128));
}

TEST (BlockPathTest, anEmptyBlockChangesNothing)
{
    const auto input = toFloats (noise (1024, 34));
    PathUnderTest cut (48000.0, FilterMode::mix);
    PathUnderTest whole (48000.0, FilterMode::mix);
    EXPECT_EQ (cut.run (input, input, { { 0, 512 }, { 512, 0 }, { 512, 512 } }),
               whole.run (input, input, { { 0, 1024 } }));
}

TEST (BlockPathTest, takesTheLargestBlock)
{
    const auto input = toFloats (noise (8192, 35));

    for (const auto rate : { 48000.0, 192000.0 })
    {
        PathUnderTest tested (rate, FilterMode::mix);
        const auto latency = *baseLatencyFor (rate, FilterMode::mix, FilterPhase::linear);
        EXPECT_EQ (tested.run (input, input, { { 0, 8192 } }).left, delayedBy (toDoubles (input), latency));
    }
}

TEST (BlockPathTest, withoutRateFiltersTheDelayAndTheHighFilterRemain)
{
    const auto input = toFloats (noise (2048, 36));
    PathUnderTest tested (32000.0, FilterMode::mix);
    tested.low = symmetricNoise (101, 37);
    tested.setTaps();
    EXPECT_EQ (tested.run (input, input, { { 0, 2048 } }).left, delayedBy (toDoubles (input), 274));
}

TEST (BlockPathTest, isSilentBeforeItHasLengths)
{
    BlockPath path;
    const auto input = toFloats (noise (64, 38));
    const std::vector<double> low (64, 0.0);
    path.processStereo (input.data(), input.data(), low.data(), low.data(), 64, false, FilterPhase::linear);
    EXPECT_EQ (std::vector<double> (path.outputLeft(), path.outputLeft() + 64), std::vector<double> (64, 0.0));
}
} // namespace
