#include "gui/look/SVGButton.h"

#include "gui/look/Palette.h"

#include <algorithm>
#include <cmath>

namespace orvik
{
namespace
{
constexpr int fadeIntervalMilliseconds = 20;
constexpr float fadePerFrame = 0.04f;
constexpr float focusRingRadius = 3.0f;

bool draws (const juce::Drawable* image, const juce::Component& component)
{
    return image != nullptr && ! component.getLocalBounds().isEmpty();
}
} // namespace

SVGButton::SVGButton (const juce::String& name)
    : Button (name), imageColour (Palette::icon), toggledColour (Palette::icon), shownColour (Palette::icon)
{
    setTitle (name);

    // The keyboard reaches it, but a click leaves the host's own keys where they are.
    setMouseClickGrabsKeyboardFocus (false);
}

std::unique_ptr<juce::Drawable> SVGButton::parse (const juce::String& svg)
{
    if (const auto document = juce::parseXML (svg))
        return juce::Drawable::createFromSVG (*document);

    return nullptr;
}

void SVGButton::adopt (juce::Drawable* image) const
{
    if (image != nullptr)
        image->replaceColour (juce::Colour (Palette::icon), shownColour);
}

void SVGButton::setImages (const juce::String& normalSvg, const juce::String& overSvg, const juce::String& downSvg)
{
    normalImage = parse (normalSvg);
    overImage = parse (overSvg);
    downImage = parse (downSvg);

    for (auto* image : { normalImage.get(), overImage.get(), downImage.get() })
        adopt (image);

    repaint();
}

void SVGButton::setColours (juce::Colour colour, juce::Colour colourWhenToggled)
{
    imageColour = colour;
    toggledColour = colourWhenToggled;
    showColour (toggled ? toggledColour : imageColour);
}

void SVGButton::setAlphas (float alphaWhenOff, float alphaWhenOn)
{
    offAlpha = alphaWhenOff;
    onAlpha = alphaWhenOn;
    fadeTarget = restingAlpha();
    setAlpha (fadeTarget);
}

void SVGButton::setToggled (bool state)
{
    toggled = state;
    showColour (toggled ? toggledColour : imageColour);
    stopTimer();
    fadeTarget = restingAlpha();

    // Repaints by itself, and only if the alpha differs by as much as the screen can show.
    setAlpha (fadeTarget);
}

void SVGButton::showColour (juce::Colour colour)
{
    if (colour == shownColour)
        return;

    if (replaceColour (shownColour, colour))
        repaint();

    shownColour = colour;
}

bool SVGButton::replaceColour (juce::Colour from, juce::Colour to)
{
    auto replaced = false;

    for (auto* image : { normalImage.get(), overImage.get(), downImage.get() })
        if (image != nullptr)
            replaced = image->replaceColour (from, to) || replaced;

    return replaced;
}

const juce::Drawable* SVGButton::imageFor (bool over, bool down) const
{
    const auto* image = down ? downImage.get() : (over ? overImage.get() : nullptr);
    return image != nullptr ? image : normalImage.get();
}

void SVGButton::paintButton (juce::Graphics& g, bool over, bool down)
{
    if (const auto* image = imageFor (over, down); draws (image, *this))
    {
        const auto* document = dynamic_cast<const juce::DrawableComposite*> (image);
        const auto area = document != nullptr ? document->getContentArea() : image->getDrawableBounds();
        const auto fit = juce::RectanglePlacement (juce::RectanglePlacement::centred)
                             .getTransformToFit (area, getLocalBounds().toFloat());
        image->draw (g, isEnabled() ? 1.0f : 0.4f, fit);
    }

    drawFocusRing (g);
}

void SVGButton::drawFocusRing (juce::Graphics& g) const
{
    if (! focusShown)
        return;

    g.setColour (juce::Colour (Palette::focusRing));
    g.drawRoundedRectangle (getLocalBounds().toFloat().reduced (0.5f), focusRingRadius, 1.0f);
}

void SVGButton::focusGained (FocusChangeType cause)
{
    // The keyboard's walk wants to see where it is; a window that takes the focus as a whole marks nothing.
    focusShown = cause == focusChangedByTabKey;
    Button::focusGained (cause);
}

void SVGButton::focusLost (FocusChangeType cause)
{
    focusShown = false;
    Button::focusLost (cause);
}

void SVGButton::mouseEnter (const juce::MouseEvent& event)
{
    Button::mouseEnter (event);

    if (! toggled && isShowing())
        fadeTo (1.0f);
}

void SVGButton::mouseExit (const juce::MouseEvent& event)
{
    Button::mouseExit (event);

    if (! toggled)
        fadeTo (offAlpha);
}

void SVGButton::fadeTo (float alpha)
{
    fadeTarget = alpha;

    if (! juce::approximatelyEqual (getAlpha(), fadeTarget))
        startTimer (fadeIntervalMilliseconds);
}

void SVGButton::advanceFade()
{
    const auto alpha = getAlpha();

    // The framework keeps alpha in 255 steps, so the last step is taken whole.
    if (std::abs (fadeTarget - alpha) <= fadePerFrame)
    {
        setAlpha (fadeTarget);
        stopTimer();
    }
    else
    {
        setAlpha (alpha + std::copysign (fadePerFrame, fadeTarget - alpha));
    }
}

void SVGButton::timerCallback()
{
    advanceFade();
}
} // namespace orvik
