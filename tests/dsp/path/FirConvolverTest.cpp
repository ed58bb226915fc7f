#include "dsp/path/FirConvolver.h"

#include "support/SimdLevels.h"
#include "support/TestSignals.h"

#include <gtest/gtest.h>

namespace
{
constexpr int maxTaps = 301;
constexpr int maxBlock = 8192;

/** Block convolution by its definition: every block is convolved with the taps of that block alone, and what goes
    beyond the block is added to what follows. */
class OverlapAdd
{
public:
    explicit OverlapAdd (std::vector<double> firstTaps) : taps (std::move (firstTaps)), tail (taps.size() - 1, 0.0) {}

    void setTaps (const std::vector<double>& newTaps) { taps = newTaps; }

    std::vector<double> run (const double* input, int count)
    {
        std::vector<double> full (static_cast<std::size_t> (count) + tail.size(), 0.0);

        for (std::size_t i = 0; i < static_cast<std::size_t> (count); ++i)
            for (std::size_t k = 0; k < taps.size(); ++k)
                full[i + k] += input[i] * taps[k];

        for (std::size_t i = 0; i < tail.size(); ++i)
            full[i] += tail[i];

        tail.assign (full.begin() + count, full.end());
        full.resize (static_cast<std::size_t> (count));
        return full;
    }

private:
    std::vector<double> taps;
    std::vector<double> tail;
};

std::vector<double> symmetricTaps (int count, unsigned seed)
{
    auto taps = noise (count, seed);
    std::copy_n (taps.begin(), count / 2, taps.rbegin());
    return taps;
}

std::vector<double> runInBlocks (FirConvolver& fir, const std::vector<double>& input, const std::vector<Block>& blocks)
{
    std::vector<double> output (input.size());

    for (const auto& block : blocks)
    {
        const double* const in[] { input.data() + block.start };
        double* const out[] { output.data() + block.start };
        fir.run (in, out, 1, block.count);
    }

    return output;
}

class FirConvolverLevelTest : public testing::TestWithParam<SimdLevel>
{
protected:
    ScopedSimdLevel level { GetParam() };
};

INSTANTIATE_TEST_SUITE_P (Levels, FirConvolverLevelTest, testing::ValuesIn (availableSimdLevels()), simdLevelName);

TEST_P (FirConvolverLevelTest, equalsOverlapAddThroughTapChangesAtAnyBlock)
{
    for (const auto tapCount : { 1, 2, 8, 29, 50, 61, 101, 201, 301 })
    {
        const auto left = noise (12000, 1);
        const auto right = noise (12000, 2);
        FirConvolver fir (2, maxTaps, maxBlock);
        fir.setTapCount (tapCount);
        auto taps = noise (tapCount, 3);
        fir.setTaps (taps);
        OverlapAdd expectedLeft (taps);
        OverlapAdd expectedRight (taps);
        std::mt19937 random (static_cast<unsigned> (tapCount));
        double largest = 0.0;

        for (const auto& block : randomBlocks (12000, 1, 400, 4))
        {
            const auto chance = random() % 3;

            if (chance == 0)
            {
                const auto seed = static_cast<unsigned> (random());
                taps = random() % 2 == 0 ? noise (tapCount, seed) : symmetricTaps (tapCount, seed);
                fir.setTaps (taps);
                expectedLeft.setTaps (taps);
                expectedRight.setTaps (taps);
            }

            const auto wantedLeft = expectedLeft.run (left.data() + block.start, block.count);
            const auto wantedRight = expectedRight.run (right.data() + block.start, block.count);
            std::vector<double> outLeft (wantedLeft.size());
            std::vector<double> outRight (wantedLeft.size());
            const double* const in[] { left.data() + block.start, right.data() + block.start };
            double* const out[] { outLeft.data(), outRight.data() };
            fir.run (in, out, 2, block.count);
            largest = std::max (largest, largestDifference (outLeft, wantedLeft));
            largest = std::max (largest, largestDifference (outRight, wantedRight));
        }

        EXPECT_LT (largest, 1e-12) << tapCount;
    }
}

TEST_P (FirConvolverLevelTest, outputDoesNotDependOnThePartitionToTheLastBit)
{
    const auto input = noise (9000, 5);

    for (const auto tapCount : { 7, 30, 50, 101, 301 })
    {
        for (const auto& taps : { noise (tapCount, 6), symmetricTaps (tapCount, 6) })
        {
            FirConvolver whole (1, maxTaps, 9000);
            whole.setTapCount (tapCount);
            whole.setTaps (taps);
            const auto expected = runInBlocks (whole, input, { { 0, 9000 } });

            for (const auto largestBlock : { 1, 5, 64, 700 })
            {
                FirConvolver cut (1, maxTaps, maxBlock);
                cut.setTapCount (tapCount);
                cut.setTaps (taps);
                EXPECT_EQ (runInBlocks (cut, input, randomBlocks (9000, 1, largestBlock, 7)), expected) << tapCount;
            }
        }
    }
}

TEST_P (FirConvolverLevelTest, stereoEqualsTwoSinglesToTheLastBit)
{
    const auto left = noise (3000, 8);
    const auto right = noise (3000, 9);

    for (const auto& taps : { noise (101, 10), symmetricTaps (101, 10) })
    {
        FirConvolver stereo (2, maxTaps, maxBlock);
        FirConvolver single (1, maxTaps, maxBlock);
        std::vector<double> outLeft (left.size());
        std::vector<double> outRight (left.size());
        stereo.setTapCount (101);
        stereo.setTaps (taps);

        for (const auto& block : randomBlocks (3000, 1, 90, 11))
        {
            const double* const in[] { left.data() + block.start, right.data() + block.start };
            double* const out[] { outLeft.data() + block.start, outRight.data() + block.start };
            stereo.run (in, out, 2, block.count);
        }

        for (const auto& [input, output] : { std::pair { &left, &outLeft }, std::pair { &right, &outRight } })
        {
            single.setTapCount (101);
            single.setTaps (taps);
            EXPECT_EQ (runInBlocks (single, *input, { { 0, 3000 } }), *output);
        }
    }
}

TEST_P (FirConvolverLevelTest, aUnitImpulseDelaysToTheLastBit)
{
    const auto input = noise (4000, 12);

    for (const auto& [tapCount, position] : { std::pair { 101, 50 }, std::pair { 301, 150 }, std::pair { 50, 0 } })
    {
        FirConvolver fir (1, maxTaps, maxBlock);
        std::vector<double> taps (static_cast<std::size_t> (tapCount), 0.0);
        taps[static_cast<std::size_t> (position)] = 1.0;
        fir.setTapCount (tapCount);
        fir.setTaps (taps);
        EXPECT_EQ (runInBlocks (fir, input, randomBlocks (4000, 1, 300, 13)), delayedBy (input, position));
    }
}

TEST_P (FirConvolverLevelTest, writesNothingBehindTheBlock)
{
    FirConvolver fir (2, maxTaps, maxBlock);
    fir.setTapCount (61);
    fir.setTaps (symmetricTaps (61, 14));
    const auto input = noise (100, 15);

    for (int count = 1; count <= 100; ++count)
    {
        std::vector<double> left (110, -7.0);
        std::vector<double> right (110, -7.0);
        const double* const in[] { input.data(), input.data() };
        double* const out[] { left.data(), right.data() };
        fir.run (in, out, 2, count);

        for (auto i = static_cast<std::size_t> (count); i < left.size(); ++i)
        {
            ASSERT_EQ (left[i], -7.0);
            ASSERT_EQ (right[i], -7.0);
        }
    }
}

TEST (FirConvolverTest, equalTapsChangeNothing)
{
    const auto input = noise (2000, 16);
    const auto taps = noise (61, 17);
    FirConvolver once (1, maxTaps, maxBlock);
    FirConvolver often (1, maxTaps, maxBlock);
    once.setTapCount (61);
    often.setTapCount (61);
    once.setTaps (taps);
    std::vector<double> output (input.size());

    for (const auto& block : randomBlocks (2000, 1, 100, 18))
    {
        often.setTaps (taps);
        const double* const in[] { input.data() + block.start };
        double* const out[] { output.data() + block.start };
        often.run (in, out, 1, block.count);
    }

    EXPECT_EQ (output, runInBlocks (once, input, { { 0, 2000 } }));
}

TEST (FirConvolverTest, oldTapsRingOutOverWhatCameBefore)
{
    FirConvolver fir (1, maxTaps, maxBlock);
    fir.setTapCount (3);
    fir.setTaps (std::vector<double> { 1.0, 2.0, 4.0 });
    EXPECT_EQ (runInBlocks (fir, { 1.0 }, { { 0, 1 } }), (std::vector<double> { 1.0 }));

    fir.setTaps (std::vector<double> { 10.0, 20.0, 40.0 });
    EXPECT_EQ (runInBlocks (fir, { 1.0, 0.0, 0.0, 0.0 }, { { 0, 1 }, { 1, 3 } }),
               (std::vector<double> { 12.0, 24.0, 40.0, 0.0 }));
}

TEST (FirConvolverTest, changingTheLengthSilencesPastTailAndTaps)
{
    FirConvolver fir (1, maxTaps, maxBlock);
    fir.setTapCount (3);
    fir.setTaps (std::vector<double> { 1.0, 1.0, 1.0 });
    runInBlocks (fir, { 5.0, 5.0 }, { { 0, 2 } });
    fir.setTaps (std::vector<double> { 2.0, 2.0, 2.0 });
    fir.setTapCount (5);
    EXPECT_EQ (runInBlocks (fir, { 1.0, 1.0 }, { { 0, 2 } }), (std::vector<double> { 0.0, 0.0 }));
    fir.setTaps (std::vector<double> { 1.0, 0.0, 0.0, 0.0, 0.0 });
    EXPECT_EQ (runInBlocks (fir, { 3.0, 4.0 }, { { 0, 2 } }), (std::vector<double> { 3.0, 4.0 }));
}

TEST (FirConvolverTest, resetKeepsTheTaps)
{
    FirConvolver fir (1, maxTaps, maxBlock);
    fir.setTapCount (2);
    fir.setTaps (std::vector<double> { 1.0, 1.0 });
    runInBlocks (fir, { 5.0 }, { { 0, 1 } });
    fir.reset();
    EXPECT_EQ (runInBlocks (fir, { 1.0, 2.0 }, { { 0, 2 } }), (std::vector<double> { 1.0, 3.0 }));
}

TEST (FirConvolverTest, ignoresTapsOfAnotherLength)
{
    FirConvolver fir (1, maxTaps, maxBlock);
    fir.setTapCount (2);
    fir.setTaps (std::vector<double> { 1.0, 1.0 });
    fir.setTaps (std::vector<double> { 3.0 });
    fir.setTaps (std::vector<double> { 3.0, 3.0, 3.0 });
    EXPECT_EQ (runInBlocks (fir, { 1.0, 2.0 }, { { 0, 2 } }), (std::vector<double> { 1.0, 3.0 }));
}

TEST (FirConvolverTest, aRunOfOneChannelLeavesTheOthersPastAlone)
{
    FirConvolver fir (2, maxTaps, maxBlock);
    fir.setTapCount (2);
    fir.setTaps (std::vector<double> { 1.0, 10.0 });
    const std::vector<double> ones { 1.0 };
    const std::vector<double> twos { 2.0 };
    double left = 0.0;
    double right = 0.0;
    const double* const in[] { ones.data(), twos.data() };
    double* const out[] { &left, &right };
    fir.run (in, out, 2, 1);
    fir.run (in, out, 1, 1);
    fir.run (in, out, 2, 1);
    EXPECT_EQ (left, 11.0);
    EXPECT_EQ (right, 22.0);
}

TEST (FirConvolverTest, zeroTapsGiveSilenceAndZeroSamplesAreIgnored)
{
    FirConvolver fir (1, maxTaps, maxBlock);
    fir.setTapCount (0);
    EXPECT_EQ (runInBlocks (fir, { 1.0, 2.0 }, { { 0, 2 } }), (std::vector<double> { 0.0, 0.0 }));
    fir.setTapCount (2);
    fir.setTaps (std::vector<double> { 1.0, 1.0 });
    EXPECT_EQ (runInBlocks (fir, { 1.0, 2.0 }, { { 0, 1 }, { 1, 0 }, { 1, 1 } }), (std::vector<double> { 1.0, 3.0 }));
}
} // namespace
