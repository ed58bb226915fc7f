#include "gui/look/TransportPicture.h"

#include "gui/look/Palette.h"

namespace
{
// From the slider's edges to the waveform's.
constexpr int waveformFromLeft = 8;
constexpr int waveformFromRight = 5;

constexpr int lineWidth = 2;
constexpr int symbolSize = 10;
constexpr int aroundSymbol = 3;
constexpr float barWidth = 3.0f;
constexpr float disabledAlpha = 0.4f;

juce::Rectangle<int> stripOf (const juce::Slider& slider)
{
    return slider.getLocalBounds().removeFromBottom (TransportPicture::stripHeight);
}

void drawSymbol (juce::Graphics& g, juce::Rectangle<float> area, bool pauses)
{
    if (pauses)
    {
        g.fillRect (area.withWidth (barWidth));
        g.fillRect (area.withLeft (area.getRight() - barWidth));
        return;
    }

    juce::Path triangle;
    triangle.addTriangle (area.getTopLeft(), area.getBottomLeft(), { area.getRight(), area.getCentreY() });
    g.fillPath (triangle);
}
} // namespace

bool TransportPicture::isTransport (const juce::Slider& slider)
{
    return slider.getName() == play || slider.getName() == pause;
}

juce::Rectangle<int> TransportPicture::trackArea (const juce::Slider& slider)
{
    return slider.getLocalBounds().withTrimmedLeft (waveformFromLeft).withTrimmedRight (waveformFromRight);
}

juce::Rectangle<int> TransportPicture::symbolArea (const juce::Slider& slider)
{
    return stripOf (slider)
        .withTrimmedLeft (waveformFromLeft)
        .withWidth (symbolSize)
        .withSizeKeepingCentre (symbolSize, symbolSize);
}

void TransportPicture::draw (juce::Graphics& g, juce::Slider& slider, float position)
{
    const auto strip = stripOf (slider);
    const auto symbol = symbolArea (slider);
    g.setColour (juce::Colour (Palette::trackGround));
    g.fillRect (strip);

    if (slider.isEnabled())
    {
        const auto left = juce::roundToInt (position) - lineWidth / 2;

        // At the very beginning it would run through the symbol.
        const auto bottom = left < symbol.getRight() + aroundSymbol ? strip.getY() : strip.getBottom();
        g.setColour (slider.findColour (juce::Slider::trackColourId));
        g.fillRect (left, 0, lineWidth, bottom);
    }

    g.setColour (
        juce::Colour (Palette::secondaryLabel).withMultipliedAlpha (slider.isEnabled() ? 1.0f : disabledAlpha));
    drawSymbol (g, symbol.toFloat(), slider.getName() == pause);

    if (slider.hasKeyboardFocus (false))
    {
        g.setColour (juce::Colour (Palette::focusRing));
        g.drawRect (strip);
    }
}
