#include "gui/band/MidSideControlPanel.h"

#include "gui/look/Icons.h"
#include "gui/look/Palette.h"
#include "gui/look/Tips.h"

#include <algorithm>
#include <utility>

namespace
{
constexpr int tickMs = 20;
constexpr int hideDelayTicks = 200 / tickMs;
constexpr float alphaPerTick = 0.1f;
constexpr float stereoValue = 0.5f;
constexpr float corner = 8.0f;
constexpr float outlineThickness = 1.0f;
} // namespace

MidSideControlPanel::MidSideControlPanel()
{
    setName ("MidSide");
    setTitle ("Mid/Side");
    setSize (panelWidth, panelHeight);
    setVisible (false);
    setAlpha (0.0f);

    slider.setName ("midside");
    slider.setTitle ("Mid/Side balance");
    slider.setTooltip (Tips::text (Tips::stereo));
    slider.setRange (0.0, 1.0);
    slider.setValue (stereoValue, juce::dontSendNotification);
    slider.setMouseCursor (juce::MouseCursor::PointingHandCursor);
    slider.setScrollWheelEnabled (false);
    slider.setColour (juce::Slider::backgroundColourId, juce::Colour (Palette::bandPanel));
    slider.addListener (this);
    // Double clicks end a gesture and begin another, which the slider's own way back would not.
    slider.setDoubleClickReturnValue (false, stereoValue);
    slider.addMouseListener (this, true);
    addAndMakeVisible (slider);

    midButton.setImages (Icons::svg (Icons::Role::mid));
    sideButton.setImages (Icons::svg (Icons::Role::side));
    midButton.setTooltip (Tips::text (Tips::mid));
    sideButton.setTooltip (Tips::text (Tips::side));
    midButton.setTitle ("Mid");
    sideButton.setTitle ("Side");
    midButton.onClick = [this] { setTo (0.0f); };
    sideButton.onClick = [this] { setTo (1.0f); };

    for (auto* button : { &midButton, &sideButton })
    {
        button->setMouseCursor (juce::MouseCursor::PointingHandCursor);
        button->setWantsKeyboardFocus (false);
        button->addMouseListener (this, false);
        addAndMakeVisible (*button);
    }
}

MidSideControlPanel::~MidSideControlPanel()
{
    stopTimer();
    slider.removeListener (this);

    if (gestureUnderWay && onGestureEnd != nullptr)
        onGestureEnd (band);
}

void MidSideControlPanel::showFor (int servedBandIndex, float value)
{
    if (gestureUnderWay && band != servedBandIndex)
        sliderDragEnded (&slider);

    band = servedBandIndex;
    setValue (value);
    shown = true;
    ticksToHide = 0;

    setVisible (true);

    // The window made it before the room, which would cover it.
    toFront (false);
    startTimer (tickMs);
}

void MidSideControlPanel::setValue (float value)
{
    const juce::ScopedValueSetter<bool> guard (ignoreChange, true);
    slider.setValue (value, juce::dontSendNotification);
}

void MidSideControlPanel::hideSoon()
{
    if (! shown || isInUse())
        return;

    shown = false;
    ticksToHide = hideDelayTicks;
    startTimer (tickMs);
}

void MidSideControlPanel::hideAtOnce()
{
    shown = false;
    ticksToHide = 0;
    alpha = 0.0f;
    setAlpha (alpha);
    setVisible (false);
    stopTimer();
}

bool MidSideControlPanel::isInUse() const
{
    return gestureUnderWay || (isVisible() && isMouseOver (true));
}

void MidSideControlPanel::timerCallback()
{
    if (! shown && ticksToHide > 0)
    {
        --ticksToHide;
        return;
    }

    alpha = std::clamp (alpha + (shown ? alphaPerTick : -alphaPerTick), 0.0f, 1.0f);
    setAlpha (alpha);

    if (shown ? alpha >= 1.0f : alpha <= 0.0f)
        stopTimer();

    if (! shown && alpha <= 0.0f)
        setVisible (false);
}

//======================================================================================================================
void MidSideControlPanel::paint (juce::Graphics& g)
{
    const auto body = getLocalBounds().toFloat().reduced (outlineThickness / 2.0f);
    g.setColour (juce::Colour (Palette::bandPanel));
    g.fillRoundedRectangle (body, corner);
    g.setColour (juce::Colour (Palette::panelOutline));
    g.drawRoundedRectangle (body, corner, outlineThickness);
}

void MidSideControlPanel::resized()
{
    slider.setBounds (15, 1, getWidth() - 30, 14);
    midButton.setBounds (8, 3, 8, 8);
    sideButton.setBounds (getWidth() - 13, 3, 8, 8);
}

void MidSideControlPanel::mouseEnter (const juce::MouseEvent&)
{
    if (band >= 0)
    {
        shown = true;
        ticksToHide = 0;
        startTimer (tickMs);
    }

    if (onUse != nullptr)
        onUse (true);
}

void MidSideControlPanel::mouseExit (const juce::MouseEvent&)
{
    if (isInUse())
        return;

    if (onUse != nullptr)
        onUse (false);

    if (onLeft != nullptr)
        onLeft();
}

void MidSideControlPanel::mouseDoubleClick (const juce::MouseEvent& event)
{
    if (event.eventComponent != &slider || event.mouseWasDraggedSinceMouseDown())
        return;

    sliderDragEnded (&slider);
    setTo (stereoValue);
}

//======================================================================================================================
void MidSideControlPanel::sliderValueChanged (juce::Slider*)
{
    if (! ignoreChange)
        write (static_cast<float> (slider.getValue()));
}

void MidSideControlPanel::sliderDragStarted (juce::Slider*)
{
    if (band >= 0 && ! std::exchange (gestureUnderWay, true) && onGestureBegin != nullptr)
        onGestureBegin (band);
}

void MidSideControlPanel::sliderDragEnded (juce::Slider*)
{
    if (std::exchange (gestureUnderWay, false) && onGestureEnd != nullptr)
        onGestureEnd (band);
}

void MidSideControlPanel::setTo (float value)
{
    sliderDragStarted (&slider);
    setValue (value);
    write (value);
    sliderDragEnded (&slider);
}

void MidSideControlPanel::write (float value)
{
    if (band >= 0 && onValue != nullptr)
        onValue (band, value);
}
