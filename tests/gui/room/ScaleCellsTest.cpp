#include "gui/room/ScaleCells.h"

#include <gtest/gtest.h>

TEST (ScaleCellsTest, eachQuarterIsACell)
{
    EXPECT_EQ (ScaleCells::cellAt (1.0f, 42.0f), 0);
    EXPECT_EQ (ScaleCells::cellAt (10.0f, 42.0f), 0);
    EXPECT_EQ (ScaleCells::cellAt (11.0f, 42.0f), 1);
    EXPECT_EQ (ScaleCells::cellAt (22.0f, 42.0f), 2);
    EXPECT_EQ (ScaleCells::cellAt (41.0f, 42.0f), 3);
}

TEST (ScaleCellsTest, aBorderIsNoCell)
{
    for (const auto border : { 0.0f, 10.5f, 21.0f, 31.5f, 42.0f })
        EXPECT_EQ (ScaleCells::cellAt (border, 42.0f), std::nullopt) << border;

    EXPECT_EQ (ScaleCells::cellAt (-1.0f, 42.0f), std::nullopt);
    EXPECT_EQ (ScaleCells::cellAt (43.0f, 42.0f), std::nullopt);
}

TEST (ScaleCellsTest, cellsAndScalesBelongTogether)
{
    for (const auto& [cell, scale] :
         { std::pair (0, 2.0f), std::pair (1, 4.0f), std::pair (2, 8.0f), std::pair (3, 12.0f) })
    {
        EXPECT_EQ (ScaleCells::scaleOf (cell), scale);
        EXPECT_EQ (ScaleCells::cellOf (scale), cell);
    }

    EXPECT_EQ (ScaleCells::cellOf (12.1f), 3);
}
