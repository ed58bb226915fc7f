#include "gui/room/WallPictures.h"

#include "gui/room/WallPainter.h"

#include <gtest/gtest.h>

namespace
{
constexpr int wall = 120;
constexpr int roomWidth = 300;
constexpr int roomHeight = 40;

void drawDot (const WallPictures::Canvas& canvas, float x, float y)
{
    WallPainter painter (canvas.pair);
    painter.draw ({ .x = x, .y = y, .alpha = 1.0f, .width = 4.0f, .height = 8.0f }, juce::Colours::red);
    painter.mirror();
}

juce::Image paintedRoom (WallPictures& pictures)
{
    juce::Image image (juce::Image::RGB, roomWidth, roomHeight, true, juce::SoftwareImageType());
    juce::Graphics graphics (image);
    pictures.paint (graphics, image.getBounds());
    return image;
}

bool isRed (const juce::Image& image, int x, int y)
{
    return image.getPixelAt (x, y).getRed() > 200;
}
} // namespace

TEST (WallPicturesTest, whatIsPublishedIsPaintedOnBothWalls)
{
    WallPictures pictures;
    pictures.resize (wall, roomHeight, 1.0f);
    const auto canvas = pictures.canvas();
    drawDot (canvas, 10.0f, 20.0f);
    EXPECT_FALSE (isRed (paintedRoom (pictures), 11, 23));
    pictures.publish (canvas);
    const auto image = paintedRoom (pictures);
    EXPECT_TRUE (isRed (image, 11, 23));
    EXPECT_TRUE (isRed (image, roomWidth - 1 - 11, 23));

    for (int x = 0; x < roomWidth; ++x)
        for (int y = 0; y < roomHeight; ++y)
            EXPECT_EQ (image.getPixelAt (x, y), image.getPixelAt (roomWidth - 1 - x, y));
}

TEST (WallPicturesTest, aNewDrawingReplacesTheOldOne)
{
    WallPictures pictures;
    pictures.resize (wall, roomHeight, 1.0f);

    for (const auto x : { 10.0f, 30.0f, 50.0f })
    {
        const auto canvas = pictures.canvas();
        drawDot (canvas, x, 20.0f);
        pictures.publish (canvas);
        const auto image = paintedRoom (pictures);
        EXPECT_TRUE (isRed (image, static_cast<int> (x) + 1, 23));
        EXPECT_FALSE (isRed (image, static_cast<int> (x) - 19, 23));
    }
}

TEST (WallPicturesTest, whatWasDrawnForAnotherSizeIsDropped)
{
    WallPictures pictures;
    pictures.resize (wall, roomHeight, 1.0f);
    const auto old = pictures.canvas();
    drawDot (old, 10.0f, 20.0f);
    pictures.resize (wall, roomHeight, 1.0f);
    pictures.publish (old);
    EXPECT_FALSE (isRed (paintedRoom (pictures), 11, 23));
    EXPECT_NE (pictures.canvas().generation, old.generation);
}

TEST (WallPicturesTest, picturesHaveTheDisplaysResolutionAndFillTheWall)
{
    WallPictures pictures;
    pictures.resize (wall, roomHeight, 2.0f);
    const auto canvas = pictures.canvas();
    EXPECT_EQ (canvas.pair.left.getWidth(), 240);
    EXPECT_EQ (canvas.pair.right.getHeight(), 80);
    EXPECT_EQ (canvas.roomHeight, roomHeight);
    drawDot (canvas, 20.0f, 40.0f);
    pictures.publish (canvas);
    EXPECT_TRUE (isRed (paintedRoom (pictures), 11, 22));
}

TEST (WallPicturesTest, beforeTheFirstSizeNothingIsPainted)
{
    WallPictures pictures;
    EXPECT_TRUE (pictures.canvas().pair.left.isNull());
    EXPECT_FALSE (isRed (paintedRoom (pictures), 11, 23));
}
