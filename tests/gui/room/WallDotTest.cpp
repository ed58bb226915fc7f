#include "gui/room/WallDot.h"

#include "gui/room/RoomCases.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

TEST (WallDotTest, aTargetDotIsThatOfTheIndependentComputation)
{
    const auto& item = roomCases::byId ("dot-1");
    const auto& inputs = item["inputs"];
    const auto& expected = item["expected"];
    const auto dot =
        WallDots::ofValue (roomCases::roomOf (inputs), inputs["frequency"], inputs["value"], inputs["displayScale"]);
    ASSERT_TRUE (dot.has_value());
    EXPECT_NEAR (dot->alpha, expected["alpha"].get<float>(), 0.0001f);
    EXPECT_NEAR (dot->x, expected["x"].get<float>(), 0.01f);
    EXPECT_NEAR (dot->y, expected["y"].get<float>(), 0.01f);
    EXPECT_NEAR (dot->width, expected["w"].get<float>(), 0.0001f);
    EXPECT_NEAR (dot->height, expected["h"].get<float>(), 0.0001f);
}

TEST (WallDotTest, everythingGrowsWithTheDisplayScaleButTheAlpha)
{
    const RoomGeometry room;
    const auto plain = WallDots::ofValue (room, 5000.0, -3.0, 1.0f);
    const auto doubled = WallDots::ofValue (room, 5000.0, -3.0, 2.0f);
    ASSERT_TRUE (plain && doubled);
    EXPECT_FLOAT_EQ (doubled->x, 2.0f * plain->x);
    EXPECT_FLOAT_EQ (doubled->y, 2.0f * plain->y);
    EXPECT_FLOAT_EQ (doubled->width, 2.0f * plain->width);
    EXPECT_FLOAT_EQ (doubled->height, 2.0f * plain->height);
    EXPECT_FLOAT_EQ (doubled->alpha, plain->alpha);
}

TEST (WallDotTest, theEdgesOfTheWallHaveNoDot)
{
    const RoomGeometry room;
    EXPECT_FALSE (WallDots::ofValue (room, 1000.0, 12.0, 1.0f));
    EXPECT_FALSE (WallDots::ofValue (room, 1000.0, -12.0, 1.0f));
    EXPECT_FALSE (WallDots::ofValue (room, 1000.0, 13.0, 2.0f));
    EXPECT_TRUE (WallDots::ofValue (room, 1000.0, 11.9, 1.0f));
    EXPECT_TRUE (WallDots::ofValue (room, 1000.0, -11.9, 2.0f));
    EXPECT_FALSE (WallDots::ofValue (room, 1000.0, std::numeric_limits<double>::quiet_NaN(), 1.0f));
}

TEST (WallDotTest, aPulseStandsAtNoGainAndIsAsStrongAsItsAlpha)
{
    const RoomGeometry room;
    const auto dot = WallDots::ofPulse (room, 5000.0, 0.8f, 2.0f);
    ASSERT_TRUE (dot.has_value());
    EXPECT_FLOAT_EQ (dot->x, 120.0f);
    EXPECT_FLOAT_EQ (dot->y, 2.0f * room.wallRow (5000.0f, 0.0f));
    EXPECT_FLOAT_EQ (dot->alpha, 0.8f);
    EXPECT_FLOAT_EQ (dot->width, 1.6f);
    EXPECT_FLOAT_EQ (dot->height, 3.2f);
    EXPECT_FALSE (WallDots::ofPulse (room, 5000.0, 0.0f, 2.0f));
}

TEST (WallDotTest, aResponseDotStandsBetweenItsTwoPoints)
{
    const RoomGeometry room;
    constexpr double rate = 48000.0;
    constexpr double hertzPerPoint = rate / 2.0 / 1024.0;
    std::vector<float> response (1024, 0.0f);
    response[100] = 6.0f;
    response[101] = -6.0f;

    const auto atPoint = WallDots::ofResponse (room, 100.0 * hertzPerPoint, response, rate, 1.0f);
    ASSERT_TRUE (atPoint.has_value());
    EXPECT_NEAR (atPoint->x, 30.0f, 0.001f);
    EXPECT_NEAR (atPoint->y, room.wallRow (2343.75f, 6.0f), 0.001f);
    EXPECT_FLOAT_EQ (atPoint->alpha, 0.625f);

    const auto between = WallDots::ofResponse (room, 100.25 * hertzPerPoint, response, rate, 1.0f);
    ASSERT_TRUE (between.has_value());
    EXPECT_NEAR (between->x, 45.0f, 0.001f);
    const auto here = room.wallRow (static_cast<float> (100.25 * hertzPerPoint), 6.0f);
    const auto there = room.wallRow (static_cast<float> (101.0 * hertzPerPoint), -6.0f);
    EXPECT_NEAR (between->y, 0.75f * here + 0.25f * there, 0.001f);
    EXPECT_FLOAT_EQ (between->alpha, 0.625f);
}

TEST (WallDotTest, aResponseThatIsNoNumberHasNoDot)
{
    const RoomGeometry room;
    constexpr auto nan = std::numeric_limits<float>::quiet_NaN();
    constexpr auto infinity = std::numeric_limits<float>::infinity();

    for (const auto odd : { nan, infinity, -infinity })
    {
        std::vector<float> response (1024, 0.0f);
        response[100] = odd;
        EXPECT_FALSE (WallDots::ofResponse (room, 100.5 / 1024.0 * 24000.0, response, 48000.0, 1.0f));
        EXPECT_FALSE (WallDots::ofResponse (room, 99.5 / 1024.0 * 24000.0, response, 48000.0, 1.0f));
        EXPECT_TRUE (WallDots::ofResponse (room, 101.5 / 1024.0 * 24000.0, response, 48000.0, 1.0f));
    }
}

TEST (WallDotTest, frequenciesBeyondTheResponseHaveNoDot)
{
    const std::vector<float> response (1024, 0.0f);
    EXPECT_FALSE (WallDots::ofResponse (RoomGeometry {}, 20000.0, response, 32000.0, 1.0f));
    EXPECT_TRUE (WallDots::ofResponse (RoomGeometry {}, 20000.0, response, 44100.0, 1.0f));
}
