#include "gui/band/BandEdges.h"

#include "gui/room/RoomCases.h"

#include <gtest/gtest.h>

#include <cmath>

TEST (BandEdgesTest, matchTheComputedFigures)
{
    const auto& expected = roomCases::byId ("edges-0")["expected"];
    const auto edges = bandEdges (1000, 1.0f, false);
    EXPECT_NEAR (bandwidthRatio (1.0f), expected["r"].get<float>(), 1e-4f);
    EXPECT_EQ (edges.upperHz, expected["upperHz"].get<int>());
    EXPECT_EQ (edges.lowerHz, expected["lowerHz"].get<int>());
}

TEST (BandEdgesTest, lieGeometricallyEvenAboutTheCentre)
{
    for (const auto q : { 0.5f, 1.0f, 2.0f, 5.0f })
    {
        const auto edges = bandEdges (3000, q, false);
        const auto middle = std::sqrt (static_cast<double> (edges.upperHz) * edges.lowerHz);
        EXPECT_NEAR (middle, 3000.0, 3.0) << "Q " << q;
    }
}

TEST (BandEdgesTest, endAtFloorAndCeiling)
{
    EXPECT_EQ (bandEdges (320, 1.0f, false).lowerHz, 320);
    EXPECT_EQ (bandEdges (400, 1.0f, false).lowerHz, 320);

    // Four times bandwidth times frequency is 2.3e9 here, beyond a signed word.
    EXPECT_EQ (bandEdges (20000, 1.0f, false), (BandEdges { 20000, 10285 }));
    EXPECT_EQ (bandEdges (12000, 1.0f, false).upperHz, 20000);
}

TEST (BandEdgesTest, aShelfReachesTheCeiling)
{
    EXPECT_EQ (bandEdges (2000, 1.0f, true).upperHz, 20000);
    EXPECT_EQ (bandEdges (2000, 1.0f, true).lowerHz, bandEdges (2000, 1.0f, false).lowerHz);
}

TEST (BandEdgesTest, theRatioFindsItsQAgain)
{
    for (auto q = 0.5f; q <= 5.0f; q += 0.1f)
        EXPECT_NEAR (qOfBandwidthRatio (bandwidthRatio (q)), q, 1e-4) << q;

    // The polynomial's highest value is 1.63, at a Q of 5.9.
    EXPECT_TRUE (std::isnan (qOfBandwidthRatio (1.7f)));
}
