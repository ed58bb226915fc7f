#include "pictures/GoldenPicture.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

namespace
{
const juce::Colour glaring = juce::Colours::magenta;
constexpr float dimmed = 0.3f;

bool updating = false;

juce::File goldenFile (const juce::String& name)
{
    return juce::File (SOLVANE_GOLDEN_PICTURES).getChildFile (name + ".png");
}

void write (const juce::Image& picture, const juce::File& file)
{
    file.getParentDirectory().createDirectory();
    file.deleteFile();
    juce::FileOutputStream stream (file);

    if (! stream.openedOk() || ! juce::PNGImageFormat().writeImageToStream (picture, stream))
        throw std::runtime_error ("cannot write " + file.getFullPathName().toStdString());
}

/** Leaves a picture in the build folder. */
juce::String keep (const juce::Image& picture, const juce::String& name)
{
    const auto file = juce::File (SOLVANE_FAILED_PICTURES).getChildFile (name + ".png");
    write (picture, file);
    return file.getFullPathName();
}

int distance (juce::Colour a, juce::Colour b)
{
    return std::max ({ std::abs (a.getRed() - b.getRed()),
                       std::abs (a.getGreen() - b.getGreen()),
                       std::abs (a.getBlue() - b.getBlue()) });
}
} // namespace

GoldenPicture::Difference GoldenPicture::differenceOf (const juce::Image& actual, const juce::Image& expected)
{
    if (actual.getBounds() != expected.getBounds())
        throw std::invalid_argument ("pictures of two sizes");

    Difference difference;
    difference.picture = { juce::Image::RGB, actual.getWidth(), actual.getHeight(), true, juce::SoftwareImageType() };
    const juce::Image::BitmapData actualPixels (actual, juce::Image::BitmapData::readOnly);
    const juce::Image::BitmapData expectedPixels (expected, juce::Image::BitmapData::readOnly);
    juce::Image::BitmapData shown (difference.picture, juce::Image::BitmapData::writeOnly);

    for (int y = 0; y < actual.getHeight(); ++y)
    {
        for (int x = 0; x < actual.getWidth(); ++x)
        {
            const auto wanted = expectedPixels.getPixelColour (x, y);
            const auto off = distance (actualPixels.getPixelColour (x, y), wanted);
            const auto differs = off > channelTolerance;
            difference.largest = std::max (difference.largest, off);
            shown.setPixelColour (x, y, differs ? glaring : wanted.withMultipliedBrightness (dimmed));

            if (differs)
            {
                const juce::Rectangle<int> pixel (x, y, 1, 1);
                difference.area = difference.pixels++ == 0 ? pixel : difference.area.getUnion (pixel);
            }
        }
    }

    return difference;
}

testing::AssertionResult GoldenPicture::matches (const juce::Image& actual, const juce::String& name)
{
    const auto file = goldenFile (name);
    const auto expected = juce::PNGImageFormat::loadFrom (file);
    const auto sameSize = expected.isValid() && expected.getBounds() == actual.getBounds();

    if (updating)
    {
        if (! sameSize || differenceOf (actual, expected).largest > 0)
            write (actual, file);

        return testing::AssertionSuccess();
    }

    if (! sameSize)
        return testing::AssertionFailure() << (expected.isValid() ? "another size than " : "there is no ")
                                           << file.getFullPathName() << "\nthe picture is " << keep (actual, name);

    const auto difference = differenceOf (actual, expected);

    if (difference.pixels <= pixelTolerance)
        return testing::AssertionSuccess() << difference.pixels << " pixels differ, by up to " << difference.largest;

    return testing::AssertionFailure() << difference.pixels << " pixels differ, by up to " << difference.largest
                                       << ", within " << difference.area.toString() << " (x y width height)"
                                       << "\nthe picture is      " << keep (actual, name) << "\nits difference from "
                                       << file.getFullPathName() << "\n                 is "
                                       << keep (difference.picture, name + "-difference");
}

void GoldenPicture::beginUpdate()
{
    updating = true;
}
