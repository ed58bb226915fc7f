#include "gui/heat/StripPicture.h"

#include "gui/heat/HeatRows.h"
#include "gui/look/Palette.h"

#include <algorithm>
#include <cstring>

namespace
{
void copy (const juce::Image& from, juce::Image& to)
{
    const juce::Image::BitmapData source (from, juce::Image::BitmapData::readOnly);
    const juce::Image::BitmapData destination (to, juce::Image::BitmapData::writeOnly);

    for (int row = 0; row < source.height; ++row)
        std::memcpy (destination.getLinePointer (row),
                     source.getLinePointer (row),
                     static_cast<std::size_t> (source.width * source.pixelStride));
}
} // namespace

void StripPicture::resize (int height)
{
    const auto empty = [height]
    { return juce::Image (juce::Image::ARGB, width, std::max (1, height), true, juce::SoftwareImageType()); };

    const std::scoped_lock guard (stripLock);
    front = empty();
    waiting = empty();
    back = { empty(), back.generation + 1 };
    fresh = false;
}

StripPicture::Canvas StripPicture::canvas()
{
    const std::scoped_lock guard (stripLock);
    return back;
}

void StripPicture::draw (Canvas& canvas, std::span<const std::uint8_t> alphas)
{
    const juce::Image::BitmapData pixels (canvas.image, juce::Image::BitmapData::writeOnly);
    const juce::Colour colour (Palette::heat);

    for (int line = 0; line < pixels.height; ++line)
    {
        const auto row = static_cast<std::size_t> ((pixels.height - 1 - line) / HeatRows::rowHeight);
        const auto alpha = row < alphas.size() ? alphas[row] : std::uint8_t { 0 };
        auto* start = reinterpret_cast<juce::PixelARGB*> (pixels.getLinePointer (line));
        std::fill_n (start, pixels.width, colour.withAlpha (alpha).getPixelARGB());
    }
}

void StripPicture::publish (const Canvas& drawn)
{
    const std::scoped_lock guard (stripLock);

    if (drawn.generation != back.generation)
        return;

    std::swap (waiting, back.image);
    fresh = true;
}

void StripPicture::paint (juce::Graphics& graphics, juce::Rectangle<int> area)
{
    const std::scoped_lock guard (stripLock);

    if (front.isNull())
        return;

    if (fresh)
    {
        copy (waiting, front);
        fresh = false;
    }

    graphics.drawImageAt (front, area.getX(), area.getY());
    graphics.drawImageAt (front, area.getRight() - width, area.getY());
}
