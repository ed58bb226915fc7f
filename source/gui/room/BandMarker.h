#pragma once

#include "gui/room/RoomGeometry.h"

/** Where a band is marked on the side walls, in pixels of the room. */
struct BandMarker
{
    struct Box
    {
        float x = 0.0f;
        float y = 0.0f;
        float width = 0.0f;
        float height = 0.0f;
    };

    /** The gain at whose depth the marker stands, in dB. */
    float gainDb = 0.0f;

    float x = 0.0f;
    float y = 0.0f;

    /** A light frame on each wall, and the band's colour on top of it. The right one's frame is a pixel wider. */
    Box leftFrame;
    Box rightFrame;
    Box leftFill;
    Box rightFill;
};

/** @param gainDb as the parameter has it: the marker stays within the scale, and in Master within what Master applies
 */
[[nodiscard]] BandMarker bandMarker (const RoomGeometry& room, float frequencyHz, float gainDb, bool master) noexcept;
