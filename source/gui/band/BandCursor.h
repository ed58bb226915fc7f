#pragma once

#include "gui/band/BandState.h"
#include "gui/band/BandZone.h"

#include <juce_gui_basics/juce_gui_basics.h>

/** The mouse's pointer over a part of a band: what a press would do there. */
[[nodiscard]] juce::MouseCursor::StandardCursorType cursorFor (BandZone zone, const BandState& band) noexcept;
