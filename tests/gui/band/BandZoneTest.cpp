#include "gui/band/BandZone.h"

#include "gui/band/BandRoom.h"
#include "gui/room/RoomCases.h"

#include <gtest/gtest.h>

#include <string>

namespace
{
BandLayout layoutOf (const RoomGeometry& room, int frequencyHz, float gainDb, float q = 1.0f)
{
    return layOutBand (room, { frequencyHz, gainDb, bandEdges (frequencyHz, q, false) });
}

std::string nameOf (BandZone zone)
{
    switch (zone)
    {
        case BandZone::none:
            return "none";
        case BandZone::body:
            return "body";
        case BandZone::line:
            return "line";
        case BandZone::topEdge:
            return "topEdge";
        case BandZone::bottomEdge:
            return "bottomEdge";
        case BandZone::dot:
            return "dot";
    }

    return {};
}
} // namespace

TEST (BandZoneTest, aPressMeetsTheComputedZone)
{
    const auto& item = roomCases::byId ("zone-1");
    const auto& inputs = item["inputs"];
    const auto layout = layoutOf (roomCases::roomOf (inputs), inputs["frequency"], inputs["gain"]);
    const juce::Point<int> point { inputs["pointInControl"][0], inputs["pointInControl"][1] };
    EXPECT_EQ (nameOf (pressedZone (layout, point)), item["expected"].get<std::string>());
}

TEST (BandZoneTest, aPressMeetsTheBandThatIsNearer)
{
    const auto& item = roomCases::byId ("hit-1");
    const auto& inputs = item["inputs"];
    RoomGeometry room;
    room.width = inputs["editor"][0].get<float>() - 50.0f;
    room.height = inputs["editor"][1].get<float>() - 90.0f;
    const juce::Point<int> point { inputs["x"].get<int>() - BandRoom::roomLeft,
                                   inputs["y"].get<int>() - BandRoom::roomTop };

    // The case gives its bands in order of falling gain, so the first that holds the point lies on top.
    for (const auto& band : inputs["bands"])
    {
        const auto layout = layoutOf (room, band["frequency"], band["gain"]);

        if (! layout.bounds.contains (point))
            continue;

        EXPECT_EQ (band["slot"], item["expected"][1]);
        EXPECT_EQ (nameOf (pressedZone (layout, point - layout.bounds.getPosition())),
                   item["expected"][2].get<std::string>());
        return;
    }

    FAIL() << "no band under the point";
}

TEST (BandZoneTest, aPressTakesTheLineAndTheRestingMouseTheEdge)
{
    // Flatter than any Q makes a band today.
    BandLayout layout;
    layout.bounds = { 100, 100, 400, 20 };
    layout.leftLine = { 0, 6, 100, 16 };
    layout.bottomEdge = { 0, 14, 400, 6 };
    EXPECT_EQ (pressedZone (layout, { 50, 16 }), BandZone::line);
    EXPECT_EQ (hoveredZone (layout, { 50, 16 }), BandZone::bottomEdge);
}

TEST (BandZoneTest, whatIsNeitherLineNorEdgeIsBody)
{
    const RoomGeometry room;
    const auto layout = layoutOf (room, 1000, 3.3f);
    EXPECT_EQ (pressedZone (layout, { 5, 0 }), BandZone::topEdge);
    EXPECT_EQ (pressedZone (layout, { 5, 15 }), BandZone::topEdge);
    EXPECT_EQ (pressedZone (layout, { 5, 16 }), BandZone::body);
    EXPECT_EQ (pressedZone (layout, { 5, 84 }), BandZone::line);
    EXPECT_EQ (pressedZone (layout, { 211, 99 }), BandZone::line);
    EXPECT_EQ (pressedZone (layout, { 212, 99 }), BandZone::body);
    EXPECT_EQ (pressedZone (layout, { 348, 99 }), BandZone::line);
    EXPECT_EQ (pressedZone (layout, { 5, 159 }), BandZone::bottomEdge);
    EXPECT_EQ (pressedZone (layout, { 5, 175 }), BandZone::none);
    EXPECT_EQ (pressedZone (layout, { -1, 20 }), BandZone::none);
}

TEST (BandZoneTest, outOfScaleOnlyTheDotsAreThere)
{
    RoomGeometry room;
    room.scaleDb = 2.0f;
    const auto layout = layoutOf (room, 1000, 8.0f);
    EXPECT_EQ (pressedZone (layout, layout.leftDot.getCentre()), BandZone::dot);
    EXPECT_EQ (hoveredZone (layout, layout.rightDot.getCentre()), BandZone::dot);
    EXPECT_EQ (pressedZone (layout, { 100, layout.leftDot.getCentreY() }), BandZone::none);
}
