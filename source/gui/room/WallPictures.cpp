#include "gui/room/WallPictures.h"

#include "gui/room/RoomGeometry.h"

#include <cmath>
#include <cstring>

namespace
{
juce::Image emptyPicture (int width, int height)
{
    return { juce::Image::ARGB, width, height, true, juce::SoftwareImageType() };
}
} // namespace

void WallPictures::resize (int wallWidth, int roomHeight, float displayScale)
{
    const auto scaled = [displayScale] (int length)
    { return std::max (1, static_cast<int> (std::lround (static_cast<float> (length) * displayScale))); };
    const auto makePair = [width = scaled (wallWidth), height = scaled (roomHeight)] {
        return Pair { emptyPicture (width, height), emptyPicture (width, height) };
    };

    const std::scoped_lock guard (imageLock);
    front = makePair();
    waiting = makePair();
    back = { makePair(), displayScale, roomHeight, back.generation + 1 };
    fresh = false;
}

WallPictures::Canvas WallPictures::canvas()
{
    const std::scoped_lock guard (imageLock);
    return back;
}

void WallPictures::publish (const Canvas& drawn)
{
    const std::scoped_lock guard (imageLock);

    if (drawn.generation != back.generation)
        return;

    std::swap (waiting, back.pair);
    fresh = true;
}

void WallPictures::paint (juce::Graphics& graphics, juce::Rectangle<int> area)
{
    const std::scoped_lock guard (imageLock);

    if (front.left.isNull())
        return;

    if (fresh)
    {
        copy (waiting.left, front.left);
        copy (waiting.right, front.right);
        fresh = false;
    }

    const auto draw = [&graphics] (const juce::Image& picture, juce::Rectangle<int> wall)
    {
        if (graphics.clipRegionIntersects (wall))
            graphics.drawImage (picture, wall.toFloat());
    };

    constexpr auto wallWidth = static_cast<int> (RoomGeometry::depth);
    draw (front.left, area.withWidth (wallWidth));
    draw (front.right, area.withLeft (area.getRight() - wallWidth));
}

void WallPictures::copy (const juce::Image& from, juce::Image& to)
{
    const juce::Image::BitmapData source (from, juce::Image::BitmapData::readOnly);
    const juce::Image::BitmapData destination (to, juce::Image::BitmapData::writeOnly);

    for (int row = 0; row < source.height; ++row)
        std::memcpy (destination.getLinePointer (row),
                     source.getLinePointer (row),
                     static_cast<std::size_t> (source.width * source.pixelStride));
}
