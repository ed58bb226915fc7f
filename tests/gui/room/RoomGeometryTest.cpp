#include "gui/room/RoomGeometry.h"

#include "gui/room/RoomCases.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

TEST (RoomGeometryTest, floorAndCeilingAreTheEdgesOfTheFrequencyRange)
{
    const RoomGeometry room;
    EXPECT_FLOAT_EQ (room.frequencyRow (320.0f), 622.0f);
    EXPECT_FLOAT_EQ (room.frequencyRow (20000.0f), 0.0f);

    // sqrt (320 * 20000)
    EXPECT_NEAR (room.frequencyRow (2529.8221f), 311.0f, 0.001f);
}

TEST (RoomGeometryTest, frequenciesBeyondTheRoomStandAtItsEdges)
{
    const RoomGeometry room;
    EXPECT_FLOAT_EQ (room.frequencyRow (40000.0f), 0.0f);
    EXPECT_FLOAT_EQ (room.frequencyRow (20.0f), 622.0f);
    EXPECT_FLOAT_EQ (room.frequencyRow (0.0f), 622.0f);
}

TEST (RoomGeometryTest, gainsRunFromTheSideEdgeToTheBackWall)
{
    const RoomGeometry room { .scaleDb = 8.0f };
    EXPECT_FLOAT_EQ (room.wallOffset (8.0f), 0.0f);
    EXPECT_FLOAT_EQ (room.wallOffset (0.0f), 60.0f);
    EXPECT_FLOAT_EQ (room.wallOffset (-8.0f), 120.0f);
    EXPECT_FLOAT_EQ (room.wallOffset (12.0f), -30.0f);
}

TEST (RoomGeometryTest, perspectiveLowersTheCeilingAndRaisesTheFloor)
{
    const RoomGeometry room;

    for (const auto gain : { 12.0f, 6.0f, 0.0f, -6.5f, -12.0f })
    {
        EXPECT_NEAR (room.wallRow (20000.0f, gain), room.wallOffset (gain), 0.001f);
        EXPECT_NEAR (room.wallRow (320.0f, gain), 622.0f - room.wallOffset (gain), 0.001f);
        EXPECT_NEAR (room.wallRow (2529.8221f, gain), 311.0f, 0.001f);
    }
}

TEST (RoomGeometryTest, aWallRowIsThatOfTheIndependentComputation)
{
    const auto& item = roomCases::byId ("wall-row-5");
    const auto& inputs = item["inputs"];
    EXPECT_NEAR (roomCases::roomOf (inputs).wallRow (inputs["frequency"], inputs["gain"]),
                 item["expected"].get<float>(),
                 item["tolerance"]["float"].get<float>());
}

TEST (RoomGeometryTest, aFrequencyLineRunsBetweenTheEndsOfTheIndependentComputation)
{
    const auto& item = roomCases::byId ("ring-4000");
    const auto room = roomCases::roomOf (item["inputs"]);
    const float frequency = item["inputs"]["frequency"];
    const auto& ends = item["expected"];
    EXPECT_NEAR (room.wallOffset (room.scaleDb), ends[0][0].get<float>(), 0.01f);
    EXPECT_NEAR (room.wallRow (frequency, room.scaleDb), ends[0][1].get<float>(), 0.01f);
    EXPECT_NEAR (room.wallOffset (-room.scaleDb), ends[1][0].get<float>(), 0.01f);
    EXPECT_NEAR (room.wallRow (frequency, -room.scaleDb), ends[1][1].get<float>(), 0.01f);
}

TEST (RoomGeometryTest, oneStepTowardsARowIsThatOfTheIndependentComputation)
{
    const auto& item = roomCases::byId ("frequency-at-row-1");
    const auto& inputs = item["inputs"];
    EXPECT_NEAR (roomCases::roomOf (inputs).frequencyAtRow (inputs["f0"], inputs["row"], inputs["gain"]),
                 item["expected"].get<float>(),
                 item["tolerance"]["float"].get<float>());
}

TEST (RoomGeometryTest, repeatedStepsArriveAtTheRow)
{
    const RoomGeometry room;

    for (const auto gain : { 10.0f, 0.0f, -10.0f })
        for (const auto target : { 400.0f, 1000.0f, 5000.0f, 16000.0f })
        {
            const auto row = room.wallRow (target, gain);
            auto frequency = 2000.0f;

            for (int event = 0; event < 200; ++event)
                frequency = std::clamp (room.frequencyAtRow (frequency, row, gain), 320.0f, 20000.0f);

            EXPECT_NEAR (frequency, target, target * 0.001f) << gain << " dB";
        }
}

TEST (RoomGeometryTest, aStepFromNoFrequencyIsFinite)
{
    EXPECT_TRUE (std::isfinite (RoomGeometry().frequencyAtRow (0.0f, 300.0f, 3.0f)));
}

TEST (RoomGeometryTest, aMouseRowHasTheFrequencyOfTheIndependentComputation)
{
    const auto& item = roomCases::byId ("back-wall-6");
    EXPECT_NEAR (roomCases::roomOf (item["inputs"]).frequencyFromBackWall (item["inputs"]["y"]),
                 item["expected"].get<float>(),
                 item["tolerance"]["float"].get<float>());
}

TEST (RoomGeometryTest, theMouseMeetsTheWallsEndsHalfADepthFromTheEdges)
{
    const RoomGeometry room;
    EXPECT_NEAR (room.frequencyFromBackWall (60.0f), 20000.0f, 0.01f);
    EXPECT_NEAR (room.frequencyFromBackWall (562.0f), 320.0f, 0.001f);
}

TEST (RoomGeometryTest, aRowAtTheFrontHasTheFrequencyThatStandsThere)
{
    RoomGeometry room;
    EXPECT_FLOAT_EQ (room.frequencyFromFront (622.0f), 320.0f);
    EXPECT_FLOAT_EQ (room.frequencyFromFront (0.0f), 20000.0f);
    EXPECT_FLOAT_EQ (room.frequencyFromFront (311.0f), 2529.8221f); // the geometric mean

    for (const auto frequency : { 400.0f, 1000.0f, 15000.0f })
        EXPECT_NEAR (room.frequencyFromFront (room.frequencyRow (frequency)), frequency, frequency * 1e-5f);
}
