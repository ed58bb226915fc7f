#include "gui/room/RoomBackground.h"

#include <gtest/gtest.h>

namespace
{
int greyAt (const juce::Image& image, int x, int y)
{
    const auto colour = image.getPixelAt (x, y);
    EXPECT_EQ (colour.getRed(), colour.getGreen());
    EXPECT_EQ (colour.getRed(), colour.getBlue());
    return colour.getRed();
}
} // namespace

TEST (RoomBackgroundTest, aPictureHasTheRoomsSizeTimesTheDisplaysScale)
{
    EXPECT_EQ (RoomBackground::draw ({}, 1.0f).getBounds(), juce::Rectangle<int> (630, 622));
    EXPECT_EQ (RoomBackground::draw ({}, 2.0f).getBounds(), juce::Rectangle<int> (1260, 1244));
}

TEST (RoomBackgroundTest, everySurfaceIsLitAtTheFrontAndDarkAtTheBack)
{
    const auto image = RoomBackground::draw ({}, 1.0f);

    // Rows and columns that no line crosses.
    EXPECT_NEAR (greyAt (image, 2, 200), 0x2a, 2);
    EXPECT_LE (greyAt (image, 117, 200), 2);
    EXPECT_NEAR (greyAt (image, 627, 200), 0x2a, 2);
    EXPECT_LE (greyAt (image, 512, 200), 2);
    EXPECT_NEAR (greyAt (image, 200, 2), 0x2a, 2);
    EXPECT_LE (greyAt (image, 200, 117), 2);
    EXPECT_NEAR (greyAt (image, 200, 619), 0x2a, 2);
    EXPECT_LE (greyAt (image, 200, 504), 2);
    EXPECT_NEAR (greyAt (image, 300, 311), 0x27, 2);
    EXPECT_LT (greyAt (image, 125, 130), greyAt (image, 200, 250));
}

TEST (RoomBackgroundTest, bothHalvesAreMirrorImages)
{
    const auto image = RoomBackground::draw ({}, 1.0f);

    for (int y = 0; y < 622; y += 3)
        for (int x = 0; x < 300; x += 3)
            EXPECT_NEAR (greyAt (image, x, y), greyAt (image, 629 - x, y), 3) << x << ", " << y;
}

TEST (RoomBackgroundTest, noGapShowsBetweenTheSurfaces)
{
    const auto image = RoomBackground::draw ({}, 1.0f);

    // At each corner of the room, where a wall meets ceiling or floor; nowhere is it darker than what is beside it.
    for (int i = 5; i < 55; ++i)
        for (const auto x : { i, 629 - i })
            for (const auto y : { i, 621 - i })
                EXPECT_GE (greyAt (image, x, y), std::min (greyAt (image, x + 4, y), greyAt (image, x - 4, y)) - 1)
                    << x << ", " << y;
}

TEST (RoomBackgroundTest, theFrameOfNoGainLiesAtHalfDepth)
{
    const auto image = RoomBackground::draw ({}, 1.0f);
    EXPECT_EQ (greyAt (image, 60, 200), 0x2a);
    EXPECT_EQ (greyAt (image, 61, 200), 0x2a);
    EXPECT_LT (greyAt (image, 63, 200), 0x1a);
    EXPECT_EQ (greyAt (image, 200, 60), 0x2a);
    EXPECT_EQ (greyAt (image, 568, 200), 0x2a);
    EXPECT_EQ (greyAt (image, 200, 560), 0x2a);
}

TEST (RoomBackgroundTest, theScalesLabelHasABlackGround)
{
    const auto image = RoomBackground::draw ({}, 1.0f);
    EXPECT_EQ (greyAt (image, 315, 490), 0);
    EXPECT_EQ (greyAt (image, 307, 500), 0);
    EXPECT_GT (greyAt (image, 315, 480), 0);
    EXPECT_GT (greyAt (image, 290, 490), 0);
}

TEST (RoomBackgroundTest, linesOfTheNamedFrequenciesRunAlongTheWalls)
{
    const RoomGeometry room;
    const auto image = RoomBackground::draw (room, 1.0f);

    for (const auto frequency : { 1000.0f, 2000.0f, 4000.0f, 10000.0f, 15000.0f })
    {
        const auto row = static_cast<int> (room.wallRow (frequency, room.scaleDb * 0.15f));
        const auto column = static_cast<int> (room.wallOffset (room.scaleDb * 0.15f));
        auto brightest = 0;

        for (int y = row - 2; y <= row + 2; ++y)
            brightest = std::max (brightest, greyAt (image, column, y));

        EXPECT_GT (brightest, greyAt (image, column, row - 8)) << frequency;
        EXPECT_GT (brightest, greyAt (image, column, row + 8)) << frequency;
    }
}
