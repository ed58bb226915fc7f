#pragma once

#include "gui/room/RoomGeometry.h"

#include <cstdint>
#include <vector>

/** The line of a whole decibel on both side walls, in pixels of the room. */
struct GridLine
{
    int gainDb = 0;
    float leftX = 0.0f;
    float rightX = 0.0f;
    float top = 0.0f;
    float bottom = 0.0f;

    /** Red, green and blue alike. */
    std::uint8_t grey = 0;
};

/** A line for each whole decibel within the scale but 0, from the back to the front. Boosts are a shade lighter. */
[[nodiscard]] std::vector<GridLine> wallGrid (const RoomGeometry& room);
