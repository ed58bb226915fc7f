#include "pictures/GoldenPicture.h"

using GoldenPicture::channelTolerance;
using GoldenPicture::differenceOf;

namespace
{
constexpr juce::uint8 level = 0x40;
const juce::Colour grey (level, level, level);

juce::Colour blueBy (int offset)
{
    return { level, level, static_cast<juce::uint8> (level + offset) };
}

juce::Image greyPicture (int width = 30, int height = 20)
{
    juce::Image picture (juce::Image::RGB, width, height, false, juce::SoftwareImageType());
    picture.clear (picture.getBounds(), grey);
    return picture;
}
} // namespace

TEST (GoldenPictureTest, equalPicturesDoNotDiffer)
{
    const auto difference = differenceOf (greyPicture(), greyPicture());
    EXPECT_EQ (difference.pixels, 0);
    EXPECT_EQ (difference.largest, 0);
    EXPECT_TRUE (difference.area.isEmpty());
}

TEST (GoldenPictureTest, countsThePixelsThatAreOffByMoreThanTheTolerance)
{
    auto picture = greyPicture();
    picture.setPixelAt (3, 4, blueBy (channelTolerance));
    EXPECT_EQ (differenceOf (picture, greyPicture()).pixels, 0);
    EXPECT_EQ (differenceOf (picture, greyPicture()).largest, channelTolerance);

    picture.setPixelAt (3, 4, blueBy (-channelTolerance - 1));
    picture.setPixelAt (10, 9, juce::Colours::black);
    const auto difference = differenceOf (picture, greyPicture());
    EXPECT_EQ (difference.pixels, 2);
    EXPECT_EQ (difference.largest, level);
    EXPECT_EQ (difference.area, juce::Rectangle<int> (3, 4, 8, 6));
    EXPECT_EQ (difference.picture.getPixelAt (3, 4), juce::Colours::magenta);
    EXPECT_NE (difference.picture.getPixelAt (4, 4), juce::Colours::magenta);
}

TEST (GoldenPictureTest, twoSizesCannotBeCompared)
{
    EXPECT_THROW (std::ignore = differenceOf (greyPicture (30, 20), greyPicture (30, 21)), std::invalid_argument);
}

TEST (GoldenPictureTest, aMissingGoldenPictureIsAFailureThatSaysWhereThePictureIs)
{
    const auto result = GoldenPicture::matches (greyPicture(), "never-drawn");
    const juce::File kept (SOLVANE_FAILED_PICTURES "/never-drawn.png");
    EXPECT_FALSE (result);
    EXPECT_NE (std::string (result.message()).find (kept.getFullPathName().toStdString()), std::string::npos);
    EXPECT_EQ (differenceOf (juce::PNGImageFormat::loadFrom (kept), greyPicture()).largest, 0);
}
