#include "gui/room/WallGrid.h"

#include "gui/room/RoomCases.h"

#include <gtest/gtest.h>

TEST (WallGridTest, isThatOfTheIndependentComputation)
{
    const auto& item = roomCases::byId ("grid-smallest-2");
    const auto lines = wallGrid (roomCases::roomOf (item["inputs"]));
    ASSERT_EQ (lines.size(), item["expected"].size());

    for (std::size_t i = 0; i < lines.size(); ++i)
    {
        const auto& expected = item["expected"][i];
        EXPECT_EQ (lines[i].gainDb, expected[0].get<int>());
        EXPECT_NEAR (lines[i].leftX, expected[1].get<float>(), 0.01f);
        EXPECT_NEAR (lines[i].rightX, expected[2].get<float>(), 0.01f);
        EXPECT_NEAR (lines[i].top, expected[3].get<float>(), 0.01f);
        EXPECT_NEAR (lines[i].bottom, expected[4].get<float>(), 0.01f);
        EXPECT_EQ (lines[i].grey, expected[5].get<int>());
    }
}

TEST (WallGridTest, theLargestScaleHasElevenLinesBehindTheMiddleAndTwelveBeforeIt)
{
    const auto lines = wallGrid (RoomGeometry {});
    ASSERT_EQ (lines.size(), 23u);
    EXPECT_EQ (lines.front().gainDb, -11);
    EXPECT_EQ (lines.front().grey, 14);
    EXPECT_EQ (lines.back().gainDb, 12);
    EXPECT_EQ (lines.back().grey, 52);

    for (const auto& line : lines)
        EXPECT_NE (line.gainDb, 0);
}

TEST (WallGridTest, aScaleOnItsWayHasTheWholeDecibelsWithinIt)
{
    const auto lines = wallGrid (RoomGeometry { .scaleDb = 5.6f });
    EXPECT_EQ (lines.front().gainDb, -4);
    EXPECT_EQ (lines.back().gainDb, 5);

    for (const auto& line : lines)
        EXPECT_GE (line.leftX, 0.0f);
}
