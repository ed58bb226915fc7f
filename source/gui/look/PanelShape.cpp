#include "gui/look/PanelShape.h"

#include "gui/look/Palette.h"

namespace
{
constexpr float radius = 4.0f;
constexpr float tipHalfWidth = 7.0f;

juce::Path outline (juce::Rectangle<float> area, float tipX)
{
    const auto top = area.getY() + PanelShape::tipHeight;
    juce::Path path;
    path.startNewSubPath (area.getX() + radius, top);
    path.lineTo (tipX - tipHalfWidth, top);
    path.lineTo (tipX, area.getY());
    path.lineTo (tipX + tipHalfWidth, top);
    path.lineTo (area.getRight() - radius, top);
    path.quadraticTo (area.getRight(), top, area.getRight(), top + radius);
    path.lineTo (area.getRight(), area.getBottom() - radius);
    path.quadraticTo (area.getRight(), area.getBottom(), area.getRight() - radius, area.getBottom());
    path.lineTo (area.getX() + radius, area.getBottom());
    path.quadraticTo (area.getX(), area.getBottom(), area.getX(), area.getBottom() - radius);
    path.lineTo (area.getX(), top + radius);
    path.quadraticTo (area.getX(), top, area.getX() + radius, top);
    path.closeSubPath();
    return path;
}
} // namespace

void PanelShape::draw (juce::Graphics& g, juce::Rectangle<int> bounds, float tipX)
{
    // Half a pixel inwards, so that the outline fills whole pixels.
    const auto path = outline (bounds.toFloat().reduced (0.5f), static_cast<float> (bounds.getX()) + tipX);
    g.setColour (juce::Colour (Palette::sliderPanel));
    g.fillPath (path);
    g.setColour (juce::Colour (Palette::panelOutline));
    g.strokePath (path, juce::PathStrokeType (1.0f));
}

void PanelShape::drawPage (juce::Graphics& g, juce::Rectangle<int> bounds)
{
    const auto area = bounds.toFloat().reduced (0.5f);
    g.setColour (juce::Colour (Palette::sliderPanel));
    g.fillRoundedRectangle (area, radius);
    g.setColour (juce::Colour (Palette::panelOutline));
    g.drawRoundedRectangle (area, radius, 1.0f);
}
