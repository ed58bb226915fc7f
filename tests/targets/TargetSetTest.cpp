#include "targets/TargetSet.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace
{
using testing::Each;
using testing::ElementsAre;

std::vector<float> valuesOf (const TargetSet& target)
{
    return { target.targetValues.begin(), target.targetValues.end() };
}

TEST (TargetSetTest, asksForNothingAtFirst)
{
    const TargetSet target;
    EXPECT_EQ (target.targetLufs, 0.0f);
    EXPECT_THAT (valuesOf (target), Each (0.0f));
}

TEST (TargetSetTest, theTopBandIsTheExtrapolatedOneWhereThereIsOne)
{
    const std::vector<float> values { 1, 2, 3, 4, 5, 6, 7, 8, 9, 10 };
    TargetSet target;
    target.set (-10.0f, values, -40.0f);
    EXPECT_EQ (target.targetLufs, -10.0f);
    EXPECT_THAT (valuesOf (target), ElementsAre (1, 2, 3, 4, 5, 6, 7, 8, 9, -40));

    target.set (-11.0f, values, std::nullopt);
    EXPECT_EQ (target.targetLufs, -11.0f);
    EXPECT_THAT (valuesOf (target), ElementsAre (1, 2, 3, 4, 5, 6, 7, 8, 9, 10));
}

TEST (TargetSetTest, aShorterListLeavesWhatIsBehindIt)
{
    TargetSet target;
    target.set (-10.0f, std::vector<float> (10, -20.0f), std::nullopt);
    target.set (-9.0f, std::vector<float> (9, -30.0f), std::nullopt);
    EXPECT_THAT (valuesOf (target), ElementsAre (-30, -30, -30, -30, -30, -30, -30, -30, -30, -20));

    target.set (-9.0f, std::vector<float> (9, -30.0f), -45.0f);
    EXPECT_EQ (target.targetValues[9], -45.0f);
}
} // namespace
