#include "gui/band/BandPainter.h"

#include "gui/look/Palette.h"

#include <algorithm>

namespace
{
constexpr float frameCorner = 5.0f;
constexpr float frameThickness = 1.0f;
constexpr float dotSize = 10.0f;
constexpr float dotOutline = 1.5f;
constexpr float overDotShift = 2.0f;
constexpr float lineWedge = 5.0f;
constexpr float shadowAlpha = 0.4f;
constexpr float restFade = 0.7f;
constexpr float middle = 0.5f;

/** The shelf's sign at the upper edge, and how much of it is curve. */
constexpr float shelfWidth = 26.0f;
constexpr float shelfHeight = 8.0f;
constexpr float shelfInset = 4.0f;
constexpr float shelfThickness = 1.5f;
constexpr float shelfCurve = 0.45f;

void paintDots (juce::Graphics& g, juce::Rectangle<float> bounds, const BandLook& look)
{
    const auto shift = look.overDot ? overDotShift : 0.0f;
    const auto top = bounds.getHeight() / 2.0f - dotSize / 2.0f;

    for (const auto left : { -dotSize / 2.0f + shift, bounds.getWidth() - shift - dotSize / 2.0f })
    {
        const juce::Rectangle<float> dot { left, top, dotSize, dotSize };
        g.setColour (juce::Colour (Palette::inactiveBand));
        g.fillEllipse (dot);
        g.setColour (look.colour);
        g.drawEllipse (dot.reduced (dotOutline / 2.0f), dotOutline);
    }
}

/** A part of the body with its frame. Corners are round where the band has an edge within the room. */
void paintPart (juce::Graphics& g,
                juce::Rectangle<float> area,
                const BandEdges& edges,
                juce::Colour fill,
                juce::Colour line)
{
    if (area.getWidth() <= frameThickness || area.getHeight() <= frameThickness)
        return;

    const auto roundTop = edges.upperHz < static_cast<int> (RoomGeometry::highHz);
    const auto roundBottom = edges.lowerHz > static_cast<int> (RoomGeometry::lowHz);
    const auto frame = area.reduced (frameThickness / 2.0f);

    juce::Path path;
    path.addRoundedRectangle (frame.getX(),
                              frame.getY(),
                              frame.getWidth(),
                              frame.getHeight(),
                              frameCorner,
                              frameCorner,
                              roundTop,
                              roundTop,
                              roundBottom,
                              roundBottom);
    g.setColour (fill);
    g.fillPath (path);
    g.setColour (line);
    g.strokePath (path, juce::PathStrokeType (frameThickness));
}

void paintBody (juce::Graphics& g,
                const BandLayout& layout,
                const BandEdges& edges,
                const BandLook& look,
                juce::Colour line)
{
    const auto body = layout.body().toFloat();
    const auto fill = look.colour.withAlpha (bodyAlpha (look.depth, look.fade));
    const auto parts = midSideParts (body.getWidth(), look.midSideShown ? look.midSide : middle);

    for (const auto& part : { parts.first, parts.second })
        paintPart (g, body.withX (part.getStart()).withWidth (part.getLength()), edges, fill, line);
}

/** The line from the walls to the panel, which it meets with a wedge, over a shadow: at the front plane the body is as
    opaque as the line. */
void paintLine (juce::Graphics& g, const BandLayout& layout, const BandLook& look, juce::Colour line)
{
    const auto row = static_cast<float> (layout.lineY()) + 0.5f;
    const auto thickness = look.lineHot ? 3.0f : 1.0f;
    const auto left = static_cast<float> (layout.panel.getX());
    const auto right = static_cast<float> (layout.panel.getRight());
    const auto width = static_cast<float> (layout.bounds.getWidth());

    juce::Path path;
    path.addRectangle (0.0f, row - thickness / 2.0f, left - lineWedge, thickness);
    path.addRectangle (right + lineWedge, row - thickness / 2.0f, width - right - lineWedge, thickness);
    path.addTriangle (left - lineWedge, row, left, row - lineWedge, left, row + lineWedge);
    path.addTriangle (right + lineWedge, row, right, row - lineWedge, right, row + lineWedge);

    g.setColour (juce::Colours::black.withAlpha (shadowAlpha));
    g.fillPath (path, juce::AffineTransform::translation (0.0f, 1.0f));
    g.setColour (line);
    g.fillPath (path);
}

/** A small triangle that stands on an edge and points into the band. */
void paintHandle (juce::Graphics& g, float middleX, float edgeRow, float height)
{
    const auto half = std::abs (height) * 2.0f;
    juce::Path handle;
    handle.addTriangle (middleX - half, edgeRow, middleX + half, edgeRow, middleX, edgeRow + height);
    g.fillPath (handle);
}

void paintShelf (juce::Graphics& g, float middleX, float top)
{
    const auto area = juce::Rectangle<float> (shelfWidth, shelfHeight)
                          .withCentre ({ middleX, top + shelfInset + shelfHeight / 2.0f });
    const auto reach = shelfCurve * area.getHeight() * 2.0f;

    juce::Path curve;
    curve.startNewSubPath (area.getBottomLeft());
    curve.lineTo (middleX - reach, area.getBottom());
    curve.quadraticTo (middleX, area.getBottom(), middleX, area.getCentreY());
    curve.quadraticTo (middleX, area.getY(), middleX + reach, area.getY());
    curve.lineTo (area.getTopRight());
    g.strokePath (curve, juce::PathStrokeType (shelfThickness));
}

void paintHandles (juce::Graphics& g, const BandLayout& layout, const BandEdges& edges, const BandLook& look)
{
    const auto body = layout.body().toFloat();
    const auto tall = layout.bounds.getHeight() > 60;
    const auto height = ! look.handlesHot ? 3.0f : tall ? 5.0f : 4.0f;
    g.setColour (look.handlesHot ? juce::Colours::white : look.colour);

    if (look.highShelf)
        paintShelf (g, body.getCentreX(), body.getY());
    else if (edges.upperHz < static_cast<int> (RoomGeometry::highHz))
        paintHandle (g, body.getCentreX(), body.getY(), height);

    if (edges.lowerHz > static_cast<int> (RoomGeometry::lowHz))
        paintHandle (g, body.getCentreX(), body.getBottom(), -height);
}
} // namespace

MidSideParts midSideParts (float width, float midSide) noexcept
{
    if (midSide <= middle)
    {
        const auto inset = (middle - midSide) * width * 0.8f;
        return { { inset, width - inset }, {} };
    }

    const auto part = width * (1.0f - midSide) * 2.0f * 0.3f + width * 0.2f;
    return { { 0.0f, part }, { width - part, width } };
}

float bodyAlpha (float depth, float fade) noexcept
{
    return std::clamp ((1.1f - depth) * (fade + 0.5f) * 0.6f, 0.0f, 1.0f);
}

void paintBand (juce::Graphics& g, const BandLayout& layout, const BandEdges& edges, const BandLook& look)
{
    if (look.dots)
        return paintDots (g, layout.bounds.withZeroOrigin().toFloat(), look);

    auto shown = look;

    if (look.ctrlHover)
        shown.colour = look.colour.brighter();

    const auto line = look.fade < restFade ? shown.colour.withAlpha (look.fade + 0.3f) : shown.colour;
    paintBody (g, layout, edges, shown, line);
    paintLine (g, layout, shown, line);

    if (look.handlesShown)
        paintHandles (g, layout, edges, shown);
}
