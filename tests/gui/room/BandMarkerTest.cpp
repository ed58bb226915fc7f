#include "gui/room/BandMarker.h"

#include "gui/room/RoomCases.h"

#include <gtest/gtest.h>

namespace
{
void expectBox (const BandMarker::Box& box, const nlohmann::json& expected)
{
    EXPECT_NEAR (box.x, expected[0].get<float>(), 0.01f);
    EXPECT_NEAR (box.y, expected[1].get<float>(), 0.01f);
    EXPECT_EQ (box.width, expected[2].get<float>());
    EXPECT_EQ (box.height, expected[3].get<float>());
}
} // namespace

TEST (BandMarkerTest, isThatOfTheIndependentComputation)
{
    const auto& item = roomCases::byId ("marker-1");
    const auto& inputs = item["inputs"];
    const auto& expected = item["expected"];
    const auto marker = bandMarker (roomCases::roomOf (inputs), inputs["frequency"], inputs["gain"], inputs["master"]);
    EXPECT_EQ (marker.gainDb, expected["gain"].get<float>());
    EXPECT_NEAR (marker.x, expected["x"].get<float>(), 0.01f);
    EXPECT_NEAR (marker.y, expected["y"].get<float>(), 0.01f);
    expectBox (marker.leftFrame, expected["rectangles"][0]);
    expectBox (marker.rightFrame, expected["rectangles"][1]);
    expectBox (marker.leftFill, expected["rectangles"][2]);
    expectBox (marker.rightFill, expected["rectangles"][3]);
}

TEST (BandMarkerTest, mixLeavesTheGainAndTheScaleLimitsIt)
{
    EXPECT_EQ (bandMarker (RoomGeometry {}, 1000.0f, 10.0f, false).gainDb, 10.0f);
    EXPECT_EQ (bandMarker (RoomGeometry { .scaleDb = 8.0f }, 1000.0f, 10.0f, false).gainDb, 8.0f);
    EXPECT_EQ (bandMarker (RoomGeometry { .scaleDb = 8.0f }, 1000.0f, -10.0f, false).gainDb, -8.0f);
    EXPECT_EQ (bandMarker (RoomGeometry { .scaleDb = 2.0f }, 1000.0f, -10.0f, true).gainDb, -2.0f);
}

TEST (BandMarkerTest, noFrequencyStandsOnTheFloor)
{
    EXPECT_FLOAT_EQ (bandMarker (RoomGeometry {}, 0.0f, 0.0f, false).y, 562.0f);
}
