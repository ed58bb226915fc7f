#include "dsp/threads/ChangeCount.h"

#include <gtest/gtest.h>

#include <barrier>
#include <thread>

namespace
{
TEST (ChangeCountTest, worksOnceWhereNothingMovesMeanwhile)
{
    ChangeCount changes;
    auto turns = 0;
    changes.raise();
    changes.untilSettled ([&turns] { ++turns; });
    changes.untilSettled ([&turns] { ++turns; });
    EXPECT_EQ (turns, 2);
}

TEST (ChangeCountTest, worksAgainForEachTurnInWhichAValueChanged)
{
    ChangeCount changes;
    auto turns = 0;

    changes.untilSettled (
        [&]
        {
            if (++turns < 4)
                changes.raise();
        });

    EXPECT_EQ (turns, 4);
}

TEST (ChangeCountTest, whatTwoThreadsWorkOutFitsBothOfTheirValues)
{
    constexpr int roundCount = 20000;
    ChangeCount changes;
    std::atomic<int> values[2] {};
    std::atomic<int> sum { 0 };
    auto failures = 0;
    std::barrier begin (2);
    std::barrier end (2, [&]() noexcept { failures += sum == values[0] + values[1] ? 0 : 1; });

    const auto changeInTurn = [&] (int own)
    {
        for (int round = 1; round <= roundCount; ++round)
        {
            begin.arrive_and_wait();
            values[own] = round;
            changes.raise();
            changes.untilSettled ([&] { sum = values[0] + values[1]; });
            end.arrive_and_wait();
        }
    };
    std::thread other (changeInTurn, 1);
    changeInTurn (0);
    other.join();

    EXPECT_EQ (failures, 0);
}
} // namespace
