#include "gui/band/BandCursor.h"

#include <gtest/gtest.h>

TEST (BandCursorTest, saysWhatAPressWouldDo)
{
    using Cursor = juce::MouseCursor;
    BandState band (0);
    EXPECT_EQ (cursorFor (BandZone::line, band), Cursor::UpDownResizeCursor);
    EXPECT_EQ (cursorFor (BandZone::topEdge, band), Cursor::TopEdgeResizeCursor);
    EXPECT_EQ (cursorFor (BandZone::bottomEdge, band), Cursor::BottomEdgeResizeCursor);
    EXPECT_EQ (cursorFor (BandZone::body, band), Cursor::DraggingHandCursor);
    EXPECT_EQ (cursorFor (BandZone::dot, band), Cursor::PointingHandCursor);

    band.highShelf = true;
    EXPECT_EQ (cursorFor (BandZone::bottomEdge, band), Cursor::NormalCursor);
    band.solo = true;
    EXPECT_EQ (cursorFor (BandZone::body, band), Cursor::NormalCursor);
    EXPECT_EQ (cursorFor (BandZone::line, band), Cursor::UpDownResizeCursor);
}

TEST (BandCursorTest, promisesNothingWhereTheBandDoesNotAnswer)
{
    BandState band (0);
    band.dimmed = true;

    for (const auto zone : { BandZone::line, BandZone::topEdge, BandZone::bottomEdge, BandZone::body })
        EXPECT_EQ (cursorFor (zone, band), juce::MouseCursor::NormalCursor);
}
