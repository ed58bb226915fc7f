#include "gui/heat/StripPicture.h"

#include <gtest/gtest.h>

#include <vector>

namespace
{
constexpr int windowWidth = 100;
constexpr int height = 41;

juce::Image painted (StripPicture& picture)
{
    juce::Image image (juce::Image::ARGB, windowWidth, height, true, juce::SoftwareImageType());
    juce::Graphics graphics (image);
    picture.paint (graphics, image.getBounds());
    return image;
}

/** The alpha of a line, which must be one and the same all over both strips, and nothing between them. */
int alphaOfLine (const juce::Image& image, int line)
{
    const auto colour = image.getPixelAt (0, line);

    for (int x = 0; x < windowWidth; ++x)
    {
        const auto inStrip = x < 20 || x >= windowWidth - 20;
        EXPECT_EQ (image.getPixelAt (x, line), inStrip ? colour : juce::Colour()) << x << ", " << line;
    }

    return colour.getAlpha();
}

void drawAndPublish (StripPicture& picture, const std::vector<std::uint8_t>& alphas)
{
    auto canvas = picture.canvas();
    StripPicture::draw (canvas, alphas);
    picture.publish (canvas);
}
} // namespace

TEST (StripPictureTest, rowsStandTwoPixelsHighFromTheFootOnBothSides)
{
    StripPicture picture;
    picture.resize (height);
    std::vector<std::uint8_t> alphas (21, 0);
    alphas[0] = 255;
    alphas[2] = 128;
    alphas[20] = 64;
    drawAndPublish (picture, alphas);
    const auto image = painted (picture);
    EXPECT_EQ (image.getPixelAt (5, 40), juce::Colour (0xFFFF8C00));

    for (int line = 0; line < height; ++line)
        EXPECT_EQ (alphaOfLine (image, line), alphas[static_cast<std::size_t> ((40 - line) / 2)]) << line;
}

TEST (StripPictureTest, whatIsDrawnShowsWhenItIsPublished)
{
    StripPicture picture;
    picture.resize (height);
    auto canvas = picture.canvas();
    StripPicture::draw (canvas, std::vector<std::uint8_t> (21, 200));
    EXPECT_EQ (alphaOfLine (painted (picture), 30), 0);
    picture.publish (canvas);
    EXPECT_EQ (alphaOfLine (painted (picture), 30), 200);

    for (const auto alpha : { 10, 90, 0 })
    {
        drawAndPublish (picture, std::vector<std::uint8_t> (21, static_cast<std::uint8_t> (alpha)));
        EXPECT_EQ (alphaOfLine (painted (picture), 30), alpha);
    }
}

TEST (StripPictureTest, whatWasDrawnForAnotherSizeIsNotShown)
{
    StripPicture picture;
    picture.resize (height);
    auto canvas = picture.canvas();
    StripPicture::draw (canvas, std::vector<std::uint8_t> (21, 200));
    picture.resize (height);
    picture.publish (canvas);
    EXPECT_EQ (alphaOfLine (painted (picture), 30), 0);

    // Nor does it take away what was drawn for this one.
    drawAndPublish (picture, std::vector<std::uint8_t> (21, 90));
    picture.publish (canvas);
    EXPECT_EQ (alphaOfLine (painted (picture), 30), 90);
}

TEST (StripPictureTest, withoutASizeThereIsNothing)
{
    StripPicture picture;
    EXPECT_TRUE (picture.canvas().image.isNull());
    EXPECT_EQ (alphaOfLine (painted (picture), 30), 0);
}
