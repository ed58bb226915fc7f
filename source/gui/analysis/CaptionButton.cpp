#include "gui/analysis/CaptionButton.h"

#include "gui/look/Fonts.h"
#include "gui/look/Palette.h"

namespace
{
constexpr float textHeight = 12.0f;
constexpr float pictureTextHeight = 14.0f;
constexpr float frameRadius = 4.0f;
constexpr float disabledAlpha = 0.4f;
constexpr float overAlpha = 0.1f;
constexpr float frameAlpha = 0.35f;
constexpr float frameAlphaOver = 0.6f;
} // namespace

CaptionButton::CaptionButton (const juce::String& name, const juce::String& shownText)
    : SVGButton (name), text (shownText)
{
    setTitle (text);
}

void CaptionButton::setPicture (const juce::String& svg, juce::Rectangle<int> caption)
{
    setImages (svg);
    captionArea = caption;
    framed = false;
}

void CaptionButton::paintButton (juce::Graphics& g, bool over, bool down)
{
    SVGButton::paintButton (g, over, down);

    if (framed)
        drawFrame (g, over, down);

    g.setColour (juce::Colour (Palette::text).withMultipliedAlpha (isEnabled() ? 1.0f : disabledAlpha));
    g.setFont (framed ? Fonts::bold (textHeight) : Fonts::regular (pictureTextHeight));
    g.drawText (text, framed ? getLocalBounds() : captionArea, juce::Justification::centred, false);
}

void CaptionButton::drawFrame (juce::Graphics& g, bool over, bool down) const
{
    const auto area = getLocalBounds().toFloat().reduced (0.5f);
    const auto awake = isEnabled() && (over || down);
    const juce::Colour white (Palette::icon);

    if (awake)
    {
        g.setColour (white.withAlpha (down ? overAlpha * 2.0f : overAlpha));
        g.fillRoundedRectangle (area, frameRadius);
    }

    g.setColour (white.withAlpha ((awake ? frameAlphaOver : frameAlpha) * (isEnabled() ? 1.0f : disabledAlpha)));
    g.drawRoundedRectangle (area, frameRadius, 1.0f);
}
