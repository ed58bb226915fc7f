#include "gui/room/WallPainter.h"

#include <algorithm>

WallPainter::WallPainter (WallPictures::Pair pair) : pictures (std::move (pair)), graphics (pictures.left)
{
    pictures.left.clear (pictures.left.getBounds());
}

void WallPainter::draw (const WallDot& dot, juce::Colour colour)
{
    graphics.setColour (colour.withAlpha (dot.alpha));
    graphics.fillRoundedRectangle (dot.x, dot.y, dot.width, dot.height, dot.width * 0.5f);
}

void WallPainter::mirror()
{
    const juce::Image::BitmapData left (pictures.left, juce::Image::BitmapData::readOnly);
    const juce::Image::BitmapData right (pictures.right, juce::Image::BitmapData::writeOnly);

    for (int row = 0; row < left.height; ++row)
    {
        const auto* from = reinterpret_cast<const juce::PixelARGB*> (left.getLinePointer (row));
        auto* to = reinterpret_cast<juce::PixelARGB*> (right.getLinePointer (row));
        std::reverse_copy (from, from + left.width, to);
    }
}
