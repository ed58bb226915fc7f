#include "gui/band/BandLayout.h"

#include "gui/room/RoomCases.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace
{
BandPlace placeOf (int frequencyHz, float gainDb, float q = 1.0f, bool highShelf = false)
{
    return { frequencyHz, gainDb, bandEdges (frequencyHz, q, highShelf) };
}

using Box = std::array<int, 4>;

Box boxOf (juce::Rectangle<int> rectangle)
{
    return { rectangle.getX(), rectangle.getY(), rectangle.getWidth(), rectangle.getHeight() };
}

class BandLayoutFigures : public testing::TestWithParam<const char*>
{
};
} // namespace

TEST_P (BandLayoutFigures, standWhereTheyWereComputed)
{
    const auto& item = roomCases::byId (GetParam());
    const auto& inputs = item["inputs"];
    const auto& expected = item["expected"];
    const auto room = roomCases::roomOf (inputs);
    const auto place = placeOf (inputs["frequency"], inputs["gain"], inputs["Q"], inputs["highshelf"] == 1);
    const auto layout = layOutBand (room, place);

    EXPECT_EQ (place.edges.upperHz, expected["upperHz"].get<int>());
    EXPECT_EQ (place.edges.lowerHz, expected["lowerHz"].get<int>());
    EXPECT_EQ (layout.outOfScale, expected["outOfScale"].get<bool>());
    EXPECT_NEAR (layout.centreRow, expected["centreRow"].get<float>(), 0.02f);
    EXPECT_NEAR (layout.topRow, expected["topRow"].get<float>(), 0.02f);
    EXPECT_NEAR (layout.bottomRow, expected["bottomRow"].get<float>(), 0.02f);
    EXPECT_NEAR (depthOfGain (place.gainDb, room.scaleDb), expected["normalisedGain"].get<float>(), 1e-4f);

    EXPECT_EQ (boxOf (layout.bounds), expected["bounds"].get<Box>());
    EXPECT_EQ (layout.topExtension, expected["topExtension"].get<int>());
    EXPECT_EQ (layout.bottomExtension, expected["bottomExtension"].get<int>());
    EXPECT_EQ (layout.centreOffset, expected["centreOffset"].get<int>());
    EXPECT_EQ (layout.lineRow(), expected["lineRow"].get<int>());
    EXPECT_EQ (boxOf (layout.leftLine), expected["leftLine"].get<Box>());
    EXPECT_EQ (boxOf (layout.rightLine), expected["rightLine"].get<Box>());
    EXPECT_EQ (boxOf (layout.topEdge), expected["topEdge"].get<Box>());
    EXPECT_EQ (boxOf (layout.bottomEdge), expected["bottomEdge"].get<Box>());
    EXPECT_EQ (boxOf (layout.leftDot), expected["leftDot"].get<Box>());
    EXPECT_EQ (boxOf (layout.rightDot), expected["rightDot"].get<Box>());
    EXPECT_EQ (boxOf (layout.panel), expected["panel"].get<Box>());

    EXPECT_EQ (layout.overlap, expected["overlap"] == "upper" ? OverlapPanel::upper : OverlapPanel::none);

    if (expected.contains ("panelInEditor"))
    {
        EXPECT_EQ (boxOf (overlapPanelBounds (layout.overlap, room, layout.centreRow)),
                   expected["panelInEditor"].get<Box>());
    }
}

INSTANTIATE_TEST_SUITE_P (Room, BandLayoutFigures, testing::Values ("band-boost", "band-ceiling", "band-over"));

TEST (BandLayoutTest, aBandWithoutAFrequencyHasNoPlace)
{
    EXPECT_TRUE (layOutBand ({}, BandPlace {}).bounds.isEmpty());
}

TEST (BandLayoutTest, aBoostIsAsWideAsTheRoomAndACutAsTheBackWall)
{
    const RoomGeometry room;
    EXPECT_EQ (layOutBand (room, placeOf (1000, 12.0f)).bounds.getHorizontalRange(), juce::Range<int> (0, 630));
    EXPECT_EQ (layOutBand (room, placeOf (1000, -12.0f)).bounds.getHorizontalRange(), juce::Range<int> (120, 510));
}

TEST (BandLayoutTest, aGainNextToItsTenthIsAsFarFromBothWallsAsTheTenth)
{
    const auto bounds = [] (float gainDb) { return boxOf (layOutBand ({}, placeOf (2400, gainDb)).bounds); };
    const auto [left, top, width, height] = bounds (4.0f);
    EXPECT_EQ (left, 40);
    EXPECT_EQ (width, 630 - 2 * left);
    EXPECT_EQ (bounds (std::nextafter (4.0f, 12.0f)), bounds (4.0f));
    EXPECT_EQ (bounds (std::nextafter (4.0f, 0.0f)), bounds (4.0f));
}

TEST (BandLayoutTest, aLineNearTheFloorGetsRoomForItsPanelBelow)
{
    const RoomGeometry room;
    const auto layout = layOutBand (room, placeOf (320, -6.0f));

    // The line is the lower edge itself: one pixel more than half a panel, at most 17.
    EXPECT_EQ (layout.topExtension, 0);
    EXPECT_EQ (layout.bottomExtension, 17);
    EXPECT_GE (layout.bounds.getBottom() - layout.lineRow(), 17);
    EXPECT_TRUE (layout.bottomEdge.isEmpty());
    EXPECT_EQ (layout.body().getHeight(), layout.bounds.getHeight() - 17);
}

TEST (BandLayoutTest, whereALineIsNearBothEdgesTheUpperExtensionWins)
{
    // A narrow cut in the smallest window: both edges are nearer than half a panel.
    RoomGeometry room;
    room.width = 520.0f;
    room.height = 516.0f;
    const auto layout = layOutBand (room, placeOf (18000, -12.0f, 5.0f));
    ASSERT_LT (layout.bottomRow - layout.centreRow, 40.0f);
    EXPECT_EQ (layout.topExtension, 17);
    EXPECT_EQ (layout.bottomExtension, 0);
}

TEST (BandLayoutTest, aFlatBandHasFlatZones)
{
    RoomGeometry room;
    room.height = 516.0f;
    const auto flat = layOutBand (room, placeOf (3000, -12.0f, 5.0f));
    ASSERT_LE (flat.bounds.getHeight(), 60);
    EXPECT_EQ (flat.topEdge.getHeight(), 6);
    EXPECT_EQ (flat.leftLine.getHeight(), 6);

    const auto tall = layOutBand (room, placeOf (3000, -12.0f, 0.5f));
    EXPECT_EQ (tall.bottomEdge.getHeight(), 16);
}

TEST (BandLayoutTest, theLineLeavesMoreRoomToThePanelFromWhereTheShelfIsOffered)
{
    const RoomGeometry room;
    const auto low = layOutBand (room, placeOf (1590, 0.0f));
    const auto high = layOutBand (room, placeOf (1600, 0.0f));
    ASSERT_EQ (low.bounds.getWidth(), high.bounds.getWidth());
    EXPECT_EQ (low.leftLine.getWidth() - high.leftLine.getWidth(), 5);
}

TEST (BandLayoutTest, aGainBeyondTheScaleLeavesDotsAtTheScalesEnd)
{
    RoomGeometry room;
    room.scaleDb = 4.0f;
    const auto boosted = layOutBand (room, placeOf (1000, 8.0f));
    EXPECT_TRUE (boosted.outOfScale);
    EXPECT_EQ (boosted.bounds, layOutBand (room, placeOf (1000, 4.0f)).bounds);
    EXPECT_NEAR (boosted.lineRow(), boosted.bounds.getY() + boosted.leftDot.getCentreY(), 10);

    // Near the ceiling the dots stay within the room as well, where they can be clicked.
    const auto high = layOutBand (room, placeOf (19500, 8.0f));
    EXPECT_GE (high.bounds.getY() + high.leftDot.getY(), 0);
    EXPECT_EQ (high.overlap, OverlapPanel::none);

    EXPECT_FALSE (layOutBand (room, placeOf (1000, 4.0f)).outOfScale);

    // At the widest scale nothing is out of it.
    room.scaleDb = 12.0f;
    EXPECT_FALSE (layOutBand (room, placeOf (1000, 12.5f)).outOfScale);
}

TEST (OverlapPanelTest, isTakenWhereAPanelDoesNotFit)
{
    const RoomGeometry room;
    EXPECT_EQ (overlapPanelFor (room, 16.9f), OverlapPanel::upper);
    EXPECT_EQ (overlapPanelFor (room, 17.0f), OverlapPanel::none);
    EXPECT_EQ (overlapPanelFor (room, 605.0f), OverlapPanel::none);
    EXPECT_EQ (overlapPanelFor (room, 605.1f), OverlapPanel::lower);
}

TEST (OverlapPanelTest, followsTheLineUpToTheRoomsEnd)
{
    const RoomGeometry room;
    using enum OverlapPanel;
    EXPECT_EQ (overlapPanelBounds (upper, room, 1.0f), juce::Rectangle<int> (248, 28, 186, 34));
    EXPECT_EQ (overlapPanelBounds (upper, room, 12.0f), juce::Rectangle<int> (248, 37, 186, 34));
    EXPECT_EQ (overlapPanelBounds (lower, room, 610.0f), juce::Rectangle<int> (248, 635, 186, 34));
    EXPECT_EQ (overlapPanelBounds (lower, room, 622.0f), juce::Rectangle<int> (248, 644, 186, 34));
    EXPECT_TRUE (overlapPanelBounds (none, room, 300.0f).isEmpty());
}

TEST (OverlapPanelTest, keepsOtherBandsOutOfItsSpace)
{
    EXPECT_TRUE ((OverlapLimits { false, false }.allow (20000.0f)));
    EXPECT_TRUE ((OverlapLimits { true, false }.allow (14799.0f)));
    EXPECT_FALSE ((OverlapLimits { true, false }.allow (14800.0f)));
    EXPECT_TRUE ((OverlapLimits { false, true }.allow (431.0f)));
    EXPECT_FALSE ((OverlapLimits { false, true }.allow (430.0f)));
    EXPECT_TRUE ((OverlapLimits { false, true }.allow (20000.0f)));
}
