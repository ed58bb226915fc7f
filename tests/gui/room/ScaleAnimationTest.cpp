#include "gui/room/ScaleAnimation.h"

#include "gui/room/RoomCases.h"

#include <gtest/gtest.h>

TEST (ScaleAnimationTest, passesThroughTheStepsOfTheIndependentComputation)
{
    const auto& item = roomCases::byId ("scale-animation-0");
    float scale = item["inputs"]["from"];
    const float target = item["inputs"]["to"];

    for (const float expected : item["expected"])
    {
        scale = ScaleAnimation::nextScale (scale, target);
        EXPECT_NEAR (scale, expected, 0.0001f);
    }

    EXPECT_EQ (scale, target);
}

TEST (ScaleAnimationTest, arrivesExactlyFromBelow)
{
    auto scale = 2.0f;
    int ticks = 0;

    while (scale != 12.1f && ticks < 100)
    {
        const auto next = ScaleAnimation::nextScale (scale, 12.1f);
        EXPECT_GT (next, scale);
        scale = next;
        ++ticks;
    }

    // 10.1 * 0.6^n < 0.1
    EXPECT_EQ (ticks, 10);
}

TEST (ScaleAnimationTest, staysWhereItHasArrived)
{
    EXPECT_EQ (ScaleAnimation::nextScale (8.0f, 8.0f), 8.0f);
}
