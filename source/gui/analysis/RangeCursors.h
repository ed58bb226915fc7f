#pragma once

#include "gui/analysis/RangeMouse.h"

#include <juce_gui_basics/juce_gui_basics.h>

/** The pointers over a waveform, which say what a press would do to its ranges. Message thread. */
class RangeCursors
{
public:
    RangeCursors();

    [[nodiscard]] const juce::MouseCursor& of (RangeMouse::Cursor cursor) const noexcept;

private:
    juce::MouseCursor addCursor, removeCursor, moveCursor;
};
