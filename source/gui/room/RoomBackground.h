#pragma once

#include "gui/room/RoomGeometry.h"

#include <juce_graphics/juce_graphics.h>

/** The room without anything in it: back wall, side walls, ceiling, floor, the frame at the depth of 0 dB, and the
   lines of some frequencies on the walls. */
namespace RoomBackground
{
/** Draws a picture of a room's size times the display's scale. Opaque, made in software; costs some milliseconds. Any
    thread. */
[[nodiscard]] juce::Image draw (const RoomGeometry& room, float displayScale);
} // namespace RoomBackground
