#include "gui/editor/EditorClock.h"

#include <juce_core/juce_core.h>

#include <cmath>

bool EditorClock::advanceStartup() noexcept
{
    if (startupTick >= startupTicks)
        return true;

    ++startupTick;
    return false;
}

EditorClock::Slide EditorClock::advanceSlide (bool opening) noexcept
{
    const auto quarter = static_cast<float> (slideStep) * juce::MathConstants<float>::pi / (2.0f * slideSteps);
    const auto risen = std::sin (quarter);
    Slide slide { slideHeight * (opening ? risen : 1.0f - risen), false };

    if (++slideStep > slideSteps)
    {
        slideStep = 0;
        slide.ended = true;
    }

    return slide;
}

bool EditorClock::advanceLevelIcon() noexcept
{
    if (++levelIconTick < levelIconTicks)
        return false;

    levelIconTick = 0;
    return true;
}

bool EditorClock::advanceMessage() noexcept
{
    if (++messageTick < messageTicks)
        return false;

    messageTick = 0;
    return true;
}

void EditorClock::forceRepaint() noexcept
{
    repaintForced = true;
    repaintTick = 0;
}

bool EditorClock::advanceForcedRepaint() noexcept
{
    if (! repaintForced)
        return false;

    if (++repaintTick >= repaintTicks)
        repaintForced = false;

    return true;
}
