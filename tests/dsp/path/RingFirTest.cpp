#include "dsp/path/RingFir.h"

#include "support/SimdLevels.h"
#include "support/TestSignals.h"

#include <gtest/gtest.h>

namespace
{
constexpr int tapCount = 257;

std::vector<double> runInBlocks (RingFir& fir, const std::vector<double>& input, const std::vector<Block>& blocks)
{
    std::vector<double> output (input.size());

    for (const auto& block : blocks)
    {
        std::copy_n (input.begin() + block.start, block.count, fir.nextInput (0, block.count));
        double* const out[] { output.data() + block.start };
        fir.run (out, 1, block.count);
    }

    return output;
}

double directForm (const std::vector<double>& taps, const std::vector<double>& input, int i)
{
    double sum = 0.0;

    for (int k = 0; k < static_cast<int> (taps.size()) && k <= i; ++k)
        sum += taps[static_cast<std::size_t> (k)] * input[static_cast<std::size_t> (i - k)];

    return sum;
}

TEST (RingFirTest, isSilentUntilItHasTaps)
{
    RingFir fir (1, tapCount, 8192);
    EXPECT_EQ (runInBlocks (fir, noise (500, 1), { { 0, 500 } }), std::vector<double> (500, 0.0));
}

class RingFirLevelTest : public testing::TestWithParam<SimdLevel>
{
protected:
    ScopedSimdLevel level { GetParam() };
};

INSTANTIATE_TEST_SUITE_P (Levels, RingFirLevelTest, testing::ValuesIn (availableSimdLevels()), simdLevelName);

TEST_P (RingFirLevelTest, newTapsActOnTheSamplesBeforeThem)
{
    const auto input = noise (4000, 2);
    const auto first = noise (tapCount, 3);
    const auto second = noise (tapCount, 4);
    RingFir fir (1, tapCount, 8192);
    std::vector<double> output (input.size());
    bool useSecond = false;
    double largest = 0.0;

    for (const auto& block : randomBlocks (4000, 1, 120, 5))
    {
        useSecond = ! useSecond;
        const auto& taps = useSecond ? second : first;
        fir.setTaps (taps);
        std::copy_n (input.begin() + block.start, block.count, fir.nextInput (0, block.count));
        double* const out[] { output.data() + block.start };
        fir.run (out, 1, block.count);

        for (int i = block.start; i < block.start + block.count; ++i)
            largest = std::max (largest, std::abs (output[static_cast<std::size_t> (i)] - directForm (taps, input, i)));
    }

    EXPECT_LT (largest, 1e-12);
}

TEST_P (RingFirLevelTest, outputDoesNotDependOnThePartitionToTheLastBit)
{
    const auto input = noise (5000, 6);
    RingFir whole (1, tapCount, 8192);
    RingFir cut (1, tapCount, 8192);
    whole.setTaps (noise (tapCount, 7));
    cut.setTaps (noise (tapCount, 7));
    EXPECT_EQ (runInBlocks (cut, input, randomBlocks (5000, 1, 99, 8)), runInBlocks (whole, input, { { 0, 5000 } }));
}

TEST (RingFirTest, resetSilencesThePastAndKeepsTheTaps)
{
    RingFir fir (1, 2, 16);
    fir.setTaps (std::vector<double> { 1.0, 1.0 });
    runInBlocks (fir, { 5.0 }, { { 0, 1 } });
    fir.reset();
    EXPECT_EQ (runInBlocks (fir, { 1.0, 2.0 }, { { 0, 2 } }), (std::vector<double> { 1.0, 3.0 }));
}

TEST (RingFirTest, ignoresTapsOfAnotherLength)
{
    RingFir fir (1, 2, 16);
    fir.setTaps (std::vector<double> { 1.0, 1.0 });
    fir.setTaps (std::vector<double> { 9.0 });
    EXPECT_EQ (runInBlocks (fir, { 1.0, 2.0 }, { { 0, 2 } }), (std::vector<double> { 1.0, 3.0 }));
}
} // namespace
