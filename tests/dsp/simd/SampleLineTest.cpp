#include "dsp/simd/SampleLine.h"

#include "support/TestSignals.h"

#include <gtest/gtest.h>

namespace
{
TEST (SampleLineTest, keepsThePastBeforeEveryBlock)
{
    const auto signal = noise (20000, 1);

    for (const auto past : { 0, 1, 60, 300 })
    {
        SampleLine line (300, 5000);
        line.setPastLength (past);

        for (const auto& block : randomBlocks (20000, 1, past == 60 ? 3 : 5000, 2))
        {
            std::copy_n (signal.begin() + block.start, block.count, line.append (block.count));

            for (int i = -past; i < block.count; ++i)
            {
                const auto index = block.start + i;
                ASSERT_EQ (line.newest()[i], index < 0 ? 0.0 : signal[static_cast<std::size_t> (index)]);
            }
        }
    }
}

TEST (SampleLineTest, clearingFillsThePastWithZeros)
{
    SampleLine line (10, 100);
    line.setPastLength (10);
    std::fill_n (line.append (50), 50, 1.0);
    line.clear();
    EXPECT_EQ (line.pastLength(), 10);
    const auto* block = line.append (1);

    for (int i = 1; i <= 10; ++i)
        EXPECT_EQ (block[-i], 0.0);
}

TEST (SampleLineTest, limitsThePastToItsStorage)
{
    SampleLine line (16, 100);
    line.setPastLength (1000);
    EXPECT_EQ (line.pastLength(), 16);
}
} // namespace
