#pragma once

#include "gui/room/WallDot.h"
#include "gui/room/WallPictures.h"

/** Draws dots onto the left wall, and then the right one as its mirror image. One thread at a time. */
class WallPainter
{
public:
    /** Clears the pictures. The images must not be null. */
    explicit WallPainter (WallPictures::Pair pair);

    /** A rounded dot in this colour, by the dot's alpha. */
    void draw (const WallDot& dot, juce::Colour colour);

    /** Makes the right wall from the left one. Call once, last. */
    void mirror();

private:
    WallPictures::Pair pictures;
    juce::Graphics graphics;
};
