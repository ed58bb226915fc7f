#include "gui/band/GainLimits.h"
#include "gui/band/BandLayout.h"

#include <gtest/gtest.h>

namespace
{
constexpr float wayUp = -1.0f;
} // namespace

TEST (GainLimitsTest, masterStopsWhereFourDecibelsWouldBeHeard)
{
    const auto reached = [] (float gainScale, float scaleDb)
    {
        const GainLimits limits { FilterMode::master, gainScale, scaleDb };
        return gainAtDepth (limits.limitDepth (wayUp), scaleDb);
    };

    EXPECT_NEAR (reached (100.0f, 12.0f), 4.0f, 1e-5f);
    EXPECT_NEAR (reached (50.0f, 12.0f), 8.0f, 1e-5f);
    EXPECT_NEAR (reached (200.0f, 12.0f), 2.0f, 1e-5f);
    EXPECT_NEAR (reached (10.0f, 12.0f), 12.0f, 1e-5f);
    EXPECT_NEAR (reached (0.0f, 12.0f), 12.0f, 1e-5f);

    // No further than the room.
    EXPECT_NEAR (reached (100.0f, 2.0f), 2.0f, 1e-5f);
}

TEST (GainLimitsTest, mixLimitsNothing)
{
    const GainLimits limits { FilterMode::mix, 100.0f, 12.0f };
    EXPECT_FLOAT_EQ (limits.limitDepth (wayUp), wayUp);
    EXPECT_FLOAT_EQ (limits.limitQ (5.0f), 5.0f);
}

TEST (GainLimitsTest, masterTakesAQOfOneAndAHalf)
{
    const GainLimits limits { FilterMode::master, 100.0f, 12.0f };
    EXPECT_FLOAT_EQ (limits.limitQ (6.0f), 1.5f);
    EXPECT_FLOAT_EQ (limits.limitQ (0.7f), 0.7f);
}

TEST (GainLimitsTest, tellsWhatIsTooMuchForMasterInEitherMode)
{
    for (const auto mode : { FilterMode::master, FilterMode::mix })
    {
        const GainLimits half { mode, 50.0f, 12.0f };
        EXPECT_FALSE (half.exceedsMaster (8.0f));
        EXPECT_TRUE (half.exceedsMaster (8.1f));
        EXPECT_TRUE (half.exceedsMaster (-8.1f));
    }
}
