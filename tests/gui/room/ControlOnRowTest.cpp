#include "gui/room/ControlOnRow.h"

#include <gtest/gtest.h>

#include <vector>

namespace
{
const std::vector<ControlOutline> controls { { .band = 4, .lineRow = 200.0f },
                                             { .band = 1, .lineRow = 206.0f },
                                             { .band = 7, .collapsed = true, .left = 0.0f, .right = 630.0f },
                                             { .band = 2, .collapsed = true, .left = 120.0f, .right = 510.0f } };
}

TEST (ControlOnRowTest, aLineIsFoundFourPixelsAway)
{
    EXPECT_EQ (findControlOnRow (controls, -1, 300.0f, 196.0f), 4);
    EXPECT_EQ (findControlOnRow (controls, -1, 300.0f, 210.0f), 1);
    EXPECT_EQ (findControlOnRow (controls, -1, 300.0f, 195.0f), std::nullopt);
    EXPECT_EQ (findControlOnRow (controls, -1, 300.0f, 211.0f), std::nullopt);
}

TEST (ControlOnRowTest, theFirstOfTwoWins)
{
    EXPECT_EQ (findControlOnRow (controls, -1, 300.0f, 203.0f), 4);
}

TEST (ControlOnRowTest, theBandItselfIsSkipped)
{
    EXPECT_EQ (findControlOnRow (controls, 4, 300.0f, 203.0f), 1);
    EXPECT_EQ (findControlOnRow (controls, 4, 300.0f, 198.0f), std::nullopt);
}

TEST (ControlOnRowTest, collapsedOnesAreFoundAtTheirOwnEdges)
{
    EXPECT_EQ (findControlOnRow (controls, -1, 4.0f, 500.0f), 7);
    EXPECT_EQ (findControlOnRow (controls, -1, 5.0f, 500.0f), std::nullopt);
    EXPECT_EQ (findControlOnRow (controls, -1, 626.0f, 500.0f), 7);
    EXPECT_EQ (findControlOnRow (controls, -1, 116.0f, 500.0f), 2);
    EXPECT_EQ (findControlOnRow (controls, -1, 514.0f, 500.0f), 2);
    EXPECT_EQ (findControlOnRow (controls, 2, 514.0f, 500.0f), std::nullopt);
}
