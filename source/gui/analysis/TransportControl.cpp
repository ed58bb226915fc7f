#include "gui/analysis/TransportControl.h"

#include "gui/look/Palette.h"
#include "gui/look/Tips.h"

namespace
{
/** A hand that moves less than this while it clicks does not drag. In pixels. */
constexpr int steadyHand = 4;

/** Around the symbol, which is small. */
constexpr int symbolMargin = 3;
} // namespace

TransportControl::TransportControl() : juce::Slider (juce::Slider::LinearHorizontal, juce::Slider::NoTextBox)
{
    setName (TransportPicture::play);
    setTitle ("Play position");
    setTooltip (Tips::text (Tips::transport));
    setRange (0.0, 1.0, 0.0);
    setScrollWheelEnabled (false);
    setMouseClickGrabsKeyboardFocus (false);
    setMouseCursor (juce::MouseCursor::PointingHandCursor);
    setColour (juce::Slider::backgroundColourId, juce::Colours::transparentBlack);
    setColour (juce::Slider::trackColourId, juce::Colour (Palette::secondaryLabel));
}

void TransportControl::showPlaying (bool playing)
{
    setName (playing ? TransportPicture::pause : TransportPicture::play);
    repaint();
}

bool TransportControl::hitTest (int, int y)
{
    return y >= getHeight() - TransportPicture::stripHeight;
}

void TransportControl::mouseDown (const juce::MouseEvent& event)
{
    dragged = false;
    onSymbol = TransportPicture::symbolArea (*this).expanded (symbolMargin).contains (event.getPosition());

    if (onPress)
        onPress();

    if (! onSymbol)
        Slider::mouseDown (event);
}

void TransportControl::mouseDrag (const juce::MouseEvent& event)
{
    dragged = dragged || event.getDistanceFromDragStart() >= steadyHand;

    if (! onSymbol)
        Slider::mouseDrag (event);
}

void TransportControl::mouseUp (const juce::MouseEvent& event)
{
    if (! onSymbol)
        Slider::mouseUp (event);

    if (isEnabled() && ! dragged && onClick)
        onClick();
}

bool TransportControl::keyPressed (const juce::KeyPress& key)
{
    if (key != juce::KeyPress::returnKey)
        return Slider::keyPressed (key);

    if (onPress)
        onPress();

    if (onClick)
        onClick();

    return true;
}
