#include "targets/fit/FitGoal.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace
{
constexpr auto silence = -std::numeric_limits<float>::infinity();
constexpr auto nothing = std::numeric_limits<float>::quiet_NaN();
constexpr std::array frequencies { 100.0, 320.0, 1000.0, 4000.0, 10000.0, 15000.0, 19000.0 };

FitTask task (const FitTask::Levels& adjustments)
{
    FitTask result;
    result.lufs = -18.0f;
    result.bands.fill (-40.0f);
    result.adjustments = adjustments;
    return result;
}

TEST (FitGoalTest, theCurveGoesThroughTheAdjustmentsAndStaysLevelBelow)
{
    const FitGoal goal (task ({ 2, 1, -1, 3, 0, 4, -2, 5, 1, 0 }), frequencies);
    EXPECT_NEAR (goal.curve()[0], 2.0, 1e-6);
    EXPECT_NEAR (goal.curve()[1], 2.0, 1e-6);
    EXPECT_NEAR (goal.curve()[2], -1.0, 1e-5);
    EXPECT_NEAR (goal.curve()[3], 4.0, 1e-5);
    EXPECT_NEAR (goal.curve()[4], 5.0, 1e-5);
    EXPECT_EQ (goal.largestAdjustment(), 5.0);
}

TEST (FitGoalTest, theLimitsLieThreeDecibelsOutsideOfWhatIsWanted)
{
    const FitGoal goal (task ({ 2, 1, -1, 3, 0, 4, -2, 5, 1, -9 }), frequencies);
    EXPECT_EQ (goal.floor(), -5.0);

    for (std::size_t index = 0; index < frequencies.size(); ++index)
        EXPECT_EQ (goal.ceiling (index), 8.0);
}

TEST (FitGoalTest, nobodyWantsMoreThanMusicBears)
{
    const FitGoal goal (task ({ 30, -40, 10, 30, 30, 30, 30, 30, 40, 0 }), frequencies);
    EXPECT_EQ (goal.floor(), -24.0);
    EXPECT_EQ (goal.ceiling (1), 15.0);
    EXPECT_EQ (goal.ceiling (3), 20.0);
    EXPECT_EQ (goal.ceiling (5), 15.0);
    EXPECT_EQ (goal.curve()[5], 15.0);
}

TEST (FitGoalTest, nothingIsLiftedWhereNothingIs)
{
    auto dull = task ({ 2, 1, -1, 3, 0, 4, nothing, nothing, nothing, nothing });
    dull.bands[6] = dull.bands[7] = dull.bands[8] = dull.bands[9] = silence;
    const FitGoal goal (dull, frequencies);
    EXPECT_FALSE (goal.counts (8));
    EXPECT_TRUE (goal.counts (5));
    EXPECT_EQ (goal.ceiling (3), 7.0);

    for (const auto index : { 4u, 5u, 6u })
    {
        EXPECT_TRUE (goal.isSilent (index));
        EXPECT_EQ (goal.ceiling (index), 0.0);
        EXPECT_LE (goal.curve()[index], 0.0);
    }
}

TEST (FitGoalTest, aChangeOfLoudnessIsMadeUpFor)
{
    EXPECT_EQ (FitGoal (task ({}), frequencies).makeUpDb (2.5), -2.5);
    EXPECT_EQ (FitGoal (task ({}), frequencies).makeUpDb (-7.0), 7.0);
    EXPECT_EQ (FitGoal (task ({}), frequencies).makeUpDb (0.0), 0.0);
}

TEST (FitGoalTest, aQuietRecordingIsNotTurnedDownForLittle)
{
    auto quiet = task ({});
    quiet.lufs = -28.5f;

    for (const auto level : { -40.0f, silence })
    {
        quiet.bands[8] = level;
        EXPECT_EQ (FitGoal (quiet, frequencies).makeUpDb (2.5), 0.0);
        EXPECT_EQ (FitGoal (quiet, frequencies).makeUpDb (5.0), -2.0);
        EXPECT_EQ (FitGoal (quiet, frequencies).makeUpDb (-2.5), 2.5);
    }
}

TEST (FitGoalTest, hissIsNotTurnedUpForLittle)
{
    auto dull = task ({});
    dull.bands[8] = silence;
    EXPECT_EQ (FitGoal (dull, frequencies).makeUpDb (-2.5), 0.0);
    EXPECT_EQ (FitGoal (dull, frequencies).makeUpDb (-5.0), 2.0);
    EXPECT_EQ (FitGoal (dull, frequencies).makeUpDb (2.5), -2.5);
}

TEST (FitGoalTest, theAmountScalesWhatIsWanted)
{
    auto half = task ({ 2, 1, -1, 3, 0, 4, -2, 8, 1, 0 });
    half.amountPercent = 50.0f;
    const FitGoal goal (half, frequencies);
    EXPECT_EQ (goal.adjustment (7), 4.0);
    EXPECT_NEAR (goal.curve()[4], 4.0, 1e-5);
    EXPECT_EQ (goal.ceiling (2), 7.0);
}
} // namespace
