#include "targets/GainTargets.h"
#include "support/RealTimeGuard.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace
{
using Ten = std::array<float, analysisBandCount>;

Ten ten (float value)
{
    Ten values;
    values.fill (value);
    return values;
}

TEST (GainTargetsTest, isTargetLessLevelLessTheDifferenceOfLoudness)
{
    GainTargets targets;
    auto wanted = ten (-20.0f);
    wanted[4] = -23.0f;
    targets.updateGainTargets (ten (-26.0f), wanted, 4.0f, false);

    for (std::size_t band = 0; band < analysisBandCount; ++band)
        EXPECT_FLOAT_EQ (targets.gainTarget[band].load(), band == 4 ? -1.0f : 2.0f);
}

TEST (GainTargetsTest, whatIsNotFiniteBecomesZero)
{
    GainTargets targets;
    auto levels = ten (-26.0f);
    levels[0] = -std::numeric_limits<float>::infinity();
    levels[1] = std::numeric_limits<float>::quiet_NaN();
    targets.updateGainTargets (levels, ten (-20.0f), 0.0f, false);
    EXPECT_EQ (targets.gainTarget[0].load(), 0.0f);
    EXPECT_EQ (targets.gainTarget[1].load(), 0.0f);
    EXPECT_EQ (targets.gainTarget[2].load(), 6.0f);

    // The overall loudness is minus infinity until its first gate.
    targets.updateGainTargets (levels, ten (-20.0f), std::numeric_limits<float>::infinity(), false);

    for (const auto& value : targets.gainTarget)
        EXPECT_EQ (value.load(), 0.0f);
}

TEST (GainTargetsTest, saysWhetherABandMovedByMoreThanATwentiethOfADecibel)
{
    GainTargets targets;
    EXPECT_TRUE (targets.updateGainTargets (ten (0.0f), ten (6.0f), 0.0f, false));
    EXPECT_FALSE (targets.updateGainTargets (ten (0.0f), ten (6.0f), 0.0f, false));

    auto wanted = ten (6.0f);
    wanted[9] = 6.04f;
    EXPECT_FALSE (targets.updateGainTargets (ten (0.0f), wanted, 0.0f, false));
    wanted[9] = 6.1f;
    EXPECT_TRUE (targets.updateGainTargets (ten (0.0f), wanted, 0.0f, false));
}

TEST (GainTargetsTest, maxChangeIsTheLargestMoveUntilEverythingIsReady)
{
    GainTargets targets;
    auto wanted = ten (1.0f);
    wanted[3] = -2.0f;
    targets.updateGainTargets (ten (0.0f), wanted, 0.0f, false);
    EXPECT_FLOAT_EQ (targets.maxChange.load(), 2.0f);

    targets.updateGainTargets (ten (0.0f), wanted, 0.0f, false);
    EXPECT_EQ (targets.maxChange.load(), 0.0f);

    EXPECT_TRUE (targets.updateGainTargets (ten (0.0f), ten (9.0f), 0.0f, true));
    EXPECT_EQ (targets.maxChange.load(), 0.0f);
}

TEST (GainTargetsTest, clearLeavesTheValuesToCompareWith)
{
    GainTargets targets;
    targets.updateGainTargets (ten (0.0f), ten (6.0f), 0.0f, false);
    targets.clear();

    for (const auto& value : targets.gainTarget)
        EXPECT_EQ (value.load(), 0.0f);

    EXPECT_FALSE (targets.updateGainTargets (ten (0.0f), ten (6.0f), 0.0f, false));
    EXPECT_EQ (targets.gainTarget[0].load(), 6.0f);
}

TEST (GainTargetsTest, updatingDoesNotAllocate)
{
    GainTargets targets;
    const RealTimeGuard guard;
    targets.updateGainTargets (ten (0.0f), ten (6.0f), 0.0f, false);
    EXPECT_EQ (guard.allocations(), 0);
}
} // namespace
