#include "support/Pictures.h"

#include <cstdlib>

namespace
{
template <typename Counts>
int countIf (const juce::Image& picture, juce::Rectangle<int> area, Counts counts)
{
    const auto inside = area.getIntersection (picture.getBounds());
    auto total = 0;

    for (auto y = inside.getY(); y < inside.getBottom(); ++y)
        for (auto x = inside.getX(); x < inside.getRight(); ++x)
            total += counts (picture.getPixelAt (x, y)) ? 1 : 0;

    return total;
}
} // namespace

juce::Image Pictures::of (juce::Component& component, const juce::String& name, float scale)
{
    const auto picture = component.createComponentSnapshot (component.getLocalBounds(), true, scale);

    if (name.isNotEmpty())
        keep (picture, name);

    return picture;
}

void Pictures::keep (const juce::Image& picture, const juce::String& name)
{
    const auto* folder = std::getenv ("SOLVANE_PICTURES");

    if (folder == nullptr)
        return;

    const auto file = juce::File (juce::String::fromUTF8 (folder)).getChildFile (name + ".png");
    file.getParentDirectory().createDirectory();
    file.deleteFile();
    juce::FileOutputStream stream (file);
    juce::PNGImageFormat().writeImageToStream (picture, stream);
}

int Pictures::count (const juce::Image& picture, juce::Rectangle<int> area, juce::Colour colour, int tolerance)
{
    const auto isNear = [tolerance] (juce::uint8 a, juce::uint8 b) { return std::abs (a - b) <= tolerance; };
    return countIf (picture,
                    area,
                    [&] (juce::Colour pixel)
                    {
                        return isNear (pixel.getRed(), colour.getRed()) && isNear (pixel.getGreen(), colour.getGreen())
                               && isNear (pixel.getBlue(), colour.getBlue())
                               && isNear (pixel.getAlpha(), colour.getAlpha());
                    });
}

int Pictures::countDrawn (const juce::Image& picture, juce::Rectangle<int> area)
{
    return countIf (picture, area, [] (juce::Colour pixel) { return pixel.getAlpha() > 0; });
}
