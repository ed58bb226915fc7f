#include "gui/room/RoomBackground.h"

#include <cmath>
#include <initializer_list>

namespace
{
using Point = juce::Point<float>;

constexpr std::initializer_list<float> ringsHz { 1000.0f, 2000.0f, 4000.0f, 10000.0f, 15000.0f };

const juce::Colour lit (0xff2a2a2a);
const juce::Colour backWallLit (0xff282828);
const juce::Colour stripLit (0xff2b2b2b);
const juce::Colour stripUnlit (0xff0f0f0f);
const juce::Colour ringLit (0xff2e2e2e);
const juce::Colour ringUnlit (0xff141414);

/** A surface between four corners, lit at one point and dark at another. */
void fillSurface (juce::Graphics& graphics, std::initializer_list<Point> corners, const juce::ColourGradient& light)
{
    juce::Path surface;

    surface.startNewSubPath (*corners.begin());

    for (const auto corner : corners)
        surface.lineTo (corner);

    surface.closeSubPath();
    graphics.setGradientFill (light);
    graphics.fillPath (surface);
}

class Drawing
{
public:
    Drawing (juce::Image& image, const RoomGeometry& roomToDraw, float scaleToUse)
        : graphics (image),
          room (roomToDraw),
          scale (scaleToUse),
          width (static_cast<float> (image.getWidth())),
          height (static_cast<float> (image.getHeight())),
          depth (RoomGeometry::depth * scaleToUse)
    {
    }

    void draw()
    {
        graphics.fillAll (juce::Colours::black);
        drawBackWall();
        drawSideWalls();
        drawCeilingAndFloor();
        drawStrips();
        drawMiddle();
        drawRings();
        drawLabelGround();
    }

private:
    void drawBackWall()
    {
        graphics.setGradientFill ({ backWallLit, { width / 2, height / 2 }, juce::Colours::black, {}, true });
        graphics.fillRect (depth, depth, width - 2 * depth, height - 2 * depth);
    }

    /** On under ceiling and floor, which come over them: two slanted edges side by side would let the black behind them
        shine through. */
    void drawSideWalls()
    {
        const auto middle = height / 2;
        graphics.setGradientFill ({ lit, { 0, middle }, juce::Colours::black, { depth, middle }, false });
        graphics.fillRect (0.0f, 0.0f, depth, height);
        graphics.setGradientFill ({ lit, { width, middle }, juce::Colours::black, { width - depth, middle }, false });
        graphics.fillRect (width - depth, 0.0f, depth, height);
    }

    void drawCeilingAndFloor()
    {
        const auto middle = width / 2;
        fillSurface (graphics,
                     { { 0, 0 }, { width, 0 }, { width - depth, depth }, { depth, depth } },
                     { lit, { middle, 0 }, juce::Colours::black, { middle, depth }, false });
        fillSurface (graphics,
                     { { depth, height - depth }, { width - depth, height - depth }, { width, height }, { 0, height } },
                     { lit, { middle, height }, juce::Colours::black, { middle, height - depth }, false });
    }

    /** A path along the middle of ceiling and floor. */
    void drawStrips()
    {
        const auto middle = width / 2;
        const auto nearHalf = stripWidth();
        const auto farHalf = nearHalf / 2;
        fillSurface (graphics,
                     { { middle - nearHalf, 0 },
                       { middle + nearHalf, 0 },
                       { middle + farHalf, depth },
                       { middle - farHalf, depth } },
                     { stripLit, { middle, 0 }, stripUnlit, { middle, depth }, false });
        fillSurface (graphics,
                     { { middle - nearHalf, height },
                       { middle + nearHalf, height },
                       { middle + farHalf, height - depth },
                       { middle - farHalf, height - depth } },
                     { stripLit, { middle, height }, stripUnlit, { middle, height - depth }, false });
    }

    /** What lies at 0 dB, and in the middle between the walls. */
    void drawMiddle()
    {
        constexpr float frameThickness = 2.0f;
        graphics.setColour (lit);
        graphics.drawRect (juce::Rectangle<float> (depth / 2, depth / 2, width - depth, height - depth),
                           frameThickness);
        graphics.fillRect (width / 2, 0.0f, 1.0f, depth);
        graphics.fillRect (width / 2, height - depth, 1.0f, depth);
    }

    void drawRings()
    {
        for (const auto frequency : ringsHz)
        {
            const auto nearRow = room.wallRow (frequency, room.scaleDb) * scale;
            const auto farRow = room.wallRow (frequency, -room.scaleDb) * scale;
            drawRing ({ 0, nearRow }, { depth, farRow });
            drawRing ({ width, nearRow }, { width - depth, farRow });
        }
    }

    void drawRing (Point nearEnd, Point farEnd)
    {
        graphics.setGradientFill ({ ringLit, nearEnd, ringUnlit, farEnd, false });
        graphics.drawLine ({ nearEnd, farEnd }, scale);
    }

    /** Behind the label of the scale. */
    void drawLabelGround()
    {
        constexpr float labelHeight = 15.0f;
        graphics.setColour (juce::Colours::black);
        graphics.fillRect (
            width / 2 - stripWidth() / 2, height - labelHeight * scale - depth, stripWidth(), labelHeight * scale);
    }

    [[nodiscard]] float stripWidth() const { return width / 30; }

    juce::Graphics graphics;
    const RoomGeometry& room;
    const float scale;
    const float width;
    const float height;
    const float depth;
};
} // namespace

juce::Image RoomBackground::draw (const RoomGeometry& room, float displayScale)
{
    const auto scaled = [displayScale] (float length)
    { return std::max (1, static_cast<int> (std::lround (length * displayScale))); };
    juce::Image image (juce::Image::RGB, scaled (room.width), scaled (room.height), false, juce::SoftwareImageType());
    Drawing (image, room, displayScale).draw();
    return image;
}
