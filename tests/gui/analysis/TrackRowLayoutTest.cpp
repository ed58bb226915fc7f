#include "gui/analysis/TrackRowLayout.h"

#include <gtest/gtest.h>

TEST (TrackRowLayoutTest, oneThreeAndTwentyRowsShareTheWidth)
{
    EXPECT_EQ (TrackRowLayout::boundsOf (0, 1, 680), juce::Rectangle<int> (25, 198, 582, 24));

    // (680 - 102) / 3, cut.
    EXPECT_EQ (TrackRowLayout::boundsOf (0, 3, 680), juce::Rectangle<int> (25, 198, 192, 24));
    EXPECT_EQ (TrackRowLayout::boundsOf (1, 3, 680), juce::Rectangle<int> (219, 198, 192, 24));
    EXPECT_EQ (TrackRowLayout::boundsOf (2, 3, 680), juce::Rectangle<int> (413, 198, 192, 24));

    // (570 - 136) / 20, cut.
    EXPECT_EQ (TrackRowLayout::boundsOf (0, 20, 570), juce::Rectangle<int> (25, 198, 21, 24));
    EXPECT_EQ (TrackRowLayout::boundsOf (19, 20, 570), juce::Rectangle<int> (25 + 23 * 19, 198, 21, 24));
}

TEST (TrackRowLayoutTest, rowsEndBeforeTheButtonsAtTheRightAtEveryWidth)
{
    for (auto width = 570; width <= 2000; ++width)
        for (auto count = 1; count <= 20; ++count)
            EXPECT_LE (TrackRowLayout::boundsOf (count - 1, count, width).getRight(), width - 71);
}

TEST (TrackRowLayoutTest, aWindowWithoutAWidthHasEmptyRows)
{
    EXPECT_TRUE (TrackRowLayout::boundsOf (0, 1, 0).isEmpty());
}
