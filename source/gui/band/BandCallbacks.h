#pragma once

#include "core/parameters/Settings.h"

#include <juce_graphics/juce_graphics.h>

#include <functional>

/** What a band's control asks of the room. The room binds all of them before the control is first used. Message
    thread. */
struct BandCallbacks
{
    using Kind = Settings::Parameter;

    /** A new depth: 0 at +scaleDb, 1 at -scaleDb; not limited in Mix. */
    std::function<void (int band, float depth)> onGain;

    /** A new Q, mapped from 0.5..5 to 0..1; not limited. */
    std::function<void (int band, float normalisedQ)> onQ;

    /** A row of the room under the hand, or a frequency in hertz. */
    std::function<void (int band, float position, bool isRow)> onFrequency;

    /** A hand takes hold of a value, and lets go of it. Frequency, gain and Q; always in pairs. */
    std::function<void (int band, Kind kind)> onGestureBegin;
    std::function<void (int band, Kind kind)> onGestureEnd;

    /** The mouse has come to the band or pressed it, or the keyboard's focus has: it is the one that is meant. */
    std::function<void (int band)> onClicked;

    /** Mouse and keyboard have left the band. */
    std::function<void()> onLeft;

    /** The mouse moves over the band's body; the point is the room's. */
    std::function<void (int band, juce::Point<int> point)> onMouseMove;

    /** The mouse was released over the band; with Ctrl the one behind it is meant. The room's coordinates. */
    std::function<void (int band, int x, int y)> onCtrlClick;

    std::function<void (int band, bool state)> onSolo;
    std::function<void (int band, bool state)> onBypass;
    std::function<void (int band, bool state)> onHighShelf;

    /** The band is to go. The control may be gone when this returns. */
    std::function<void (int band)> onClose;

    /** The room's scale has to open: -1 for as far as all bands need. */
    std::function<void (int band, bool state)> onCollapse;

    /** A double click with Shift: a further band is to hang here. The room's coordinates. */
    std::function<void (juce::Point<int> point)> onAddBandHere;
};
