#include "gui/editor/EditorLayout.h"

#include <gtest/gtest.h>

using Area = juce::Rectangle<int>;

TEST (EditorLayoutTest, atTheSizeOfANewWindow)
{
    const auto layout = EditorLayout::of (680, 712, 51, 130);
    EXPECT_EQ (layout.title, Area (6, 12, 90, 15));
    EXPECT_EQ (layout.header, Area (100, 10, 290, 20));
    EXPECT_EQ (layout.gainScale, Area (440, 5, 31, 32));
    EXPECT_EQ (layout.compare, Area (475, 13, 30, 15));
    EXPECT_EQ (layout.link, Area (478, 1, 25, 15));
    EXPECT_EQ (layout.burger, Area (512, 13, 32, 15));
    EXPECT_EQ (layout.outputGain, Area (550, 11, 31, 32));
    EXPECT_EQ (layout.separator, Area (577, 8, 2, 22));
    EXPECT_EQ (layout.settings, Area (584, 4, 30, 30));
    EXPECT_EQ (layout.help, Area (644, 4, 30, 30));
    EXPECT_EQ (layout.mainWindow, Area (5, 42, 670, 622));
    EXPECT_EQ (layout.analyse, Area (2, 672, 27, 27));
    EXPECT_EQ (layout.presetType, Area (30, 677, 51, 20));
    EXPECT_EQ (layout.presetName, Area (83, 679, 130, 16));
    EXPECT_EQ (layout.websiteLink, Area (559, 680, 150, 14));
    EXPECT_EQ (layout.websiteIcon, Area (529, 675, 20, 20));
}

TEST (EditorLayoutTest, theRightSideFollowsTheWidthAndTheFootTheHeight)
{
    const auto small = EditorLayout::of (570, 606, 10, 10);
    const auto large = EditorLayout::of (1570, 1606, 10, 10);

    for (auto part : { &EditorLayout::gainScale,
                       &EditorLayout::compare,
                       &EditorLayout::link,
                       &EditorLayout::burger,
                       &EditorLayout::outputGain,
                       &EditorLayout::separator,
                       &EditorLayout::settings,
                       &EditorLayout::help })
        EXPECT_EQ (large.*part, (small.*part).translated (1000, 0));

    for (auto part : { &EditorLayout::analyse, &EditorLayout::presetType, &EditorLayout::presetName })
        EXPECT_EQ (large.*part, (small.*part).translated (0, 1000));

    EXPECT_EQ (large.title, small.title);
    EXPECT_EQ (large.mainWindow, Area (5, 42, 1560, 1516));
}

TEST (EditorLayoutTest, aWindowOpensWithinItsLimits)
{
    EXPECT_EQ (EditorLayout::openingSize (680, 712, false), Area (680, 712));
    EXPECT_EQ (EditorLayout::openingSize (0, 0, false), Area (570, 606));
    EXPECT_EQ (EditorLayout::openingSize (5000, 5000, false), Area (2000, 2000));
    EXPECT_EQ (EditorLayout::openingSize (680, 1200, true), Area (680, 606));
}
