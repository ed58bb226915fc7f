#include "gui/analysis/OutlineDrawing.h"

#include "gui/look/Palette.h"

#include <array>
#include <cmath>

namespace
{
constexpr int squareSize = 2;

/** In the order in which they are drawn. */
constexpr std::array outlineColours { Palette::outlineBright,       Palette::outlineDark,
                                      Palette::activeRangeBright,   Palette::activeRangeDark,
                                      Palette::inactiveRangeBright, Palette::inactiveRangeDark };

juce::Path squaresOf (const ReferenceTrack::Outline& outline, Palette::Argb colour)
{
    juce::Path path;

    for (const auto& point : outline)
        if (point.colour == colour)
            path.addRectangle (juce::Rectangle<int> (point.x, point.y, squareSize, squareSize));

    return path;
}
} // namespace

void OutlineDrawing::resize (int waveformWidth)
{
    columns = waveformWidth / TrackOutline::columnStep;
    gridScale = 0.0f;
}

void OutlineDrawing::paintGrid (juce::Graphics& g)
{
    // As fine as the display is, or the squares would be blurred.
    const auto scale = std::ceil (g.getInternalContext().getPhysicalPixelScaleFactor());

    if (scale != gridScale)
        drawGrid (scale);

    if (gridImage.isValid())
        g.drawImageTransformed (gridImage, juce::AffineTransform::scale (1.0f / gridScale));
}

void OutlineDrawing::drawGrid (float wantedScale)
{
    gridScale = wantedScale;
    gridImage = {};

    if (columns <= 0)
        return;

    constexpr int height = TrackOutline::middleY + TrackOutline::columnStep * TrackOutline::rowCount + squareSize;
    const auto pixels = [this] (int length) { return juce::roundToInt (static_cast<float> (length) * gridScale); };
    gridImage = juce::Image (juce::Image::ARGB,
                             pixels (columns * TrackOutline::columnStep),
                             pixels (height),
                             true,
                             juce::SoftwareImageType());
    juce::Graphics g (gridImage);
    g.addTransform (juce::AffineTransform::scale (gridScale));
    g.setColour (juce::Colour (Palette::outlineDark));

    for (int column = 0; column < columns; ++column)
        for (int row = -TrackOutline::rowCount; row <= TrackOutline::rowCount; ++row)
            g.fillRect (column * TrackOutline::columnStep,
                        TrackOutline::middleY + TrackOutline::columnStep * row,
                        squareSize,
                        squareSize);
}

void OutlineDrawing::paintOutline (juce::Graphics& g, const ReferenceTrack::Outline& outline)
{
    for (const auto colour : outlineColours)
    {
        g.setColour (juce::Colour (colour));
        g.fillPath (squaresOf (outline, colour));
    }
}
