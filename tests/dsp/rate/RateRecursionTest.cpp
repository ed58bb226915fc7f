#include "dsp/rate/RateRecursion.h"

#include "support/SimdLevels.h"
#include "support/TestSignals.h"

#include <gtest/gtest.h>

#include <array>

namespace
{
/** The recursion of one channel as it is defined. */
std::vector<double> runPlainly (const RateFilterTable& table, std::vector<double> values)
{
    for (std::size_t i = 0; i < values.size(); ++i)
        for (auto k = static_cast<std::size_t> (table.order); k > 0; --k)
            values[i] -= k <= i ? table.recursive[RateFilterTable::framesAtOnce + k] * values[i - k] : 0.0;

    return values;
}

class RateRecursionLevelTest : public testing::TestWithParam<SimdLevel>
{
protected:
    ScopedSimdLevel level { GetParam() };
};

INSTANTIATE_TEST_SUITE_P (Levels, RateRecursionLevelTest, testing::ValuesIn (availableSimdLevels()), simdLevelName);

TEST_P (RateRecursionLevelTest, givesTheBitsOfTheDefinitionForEveryCount)
{
    for (const auto* table : { &rateTableByFour, &rateTableByEight })
    {
        for (const auto channelCount : { 1, 2 })
        {
            for (const auto largest : { 1, 3, 4, 9, 500 })
            {
                const std::vector<std::vector<double>> inputs { noise (500, 1), noise (500, 2) };
                std::vector<double> frames (static_cast<std::size_t> (500 * channelCount));
                auto* first = frames.data();
                std::array<RecursionState, 2> results {};
                RecursionState* const states[] { &results[0], &results[1] };

                for (int i = 0; i < 500; ++i)
                    for (int c = 0; c < channelCount; ++c)
                        first[i * channelCount + c] =
                            inputs[static_cast<std::size_t> (c)][static_cast<std::size_t> (i)];

                for (const auto& block : randomBlocks (500, 1, largest, 3))
                    runRecursion (*table, first + block.start * channelCount, block.count, states, channelCount);

                for (int c = 0; c < channelCount; ++c)
                {
                    std::vector<double> channel;

                    for (int i = 0; i < 500; ++i)
                        channel.push_back (first[i * channelCount + c]);

                    EXPECT_EQ (channel, runPlainly (*table, inputs[static_cast<std::size_t> (c)]));
                }
            }
        }
    }
}
} // namespace
