#pragma once

#include "gui/room/RoomGeometry.h"

/** Where a band may be hung into the room by hand. */
namespace NewBand
{
/** Rows at the top and at the bottom of the room that count as if the mouse were at their inner edge. */
inline constexpr int edgeRows = 60;

/** The frequency of a double click at a row of the room. */
[[nodiscard]] float frequencyOfClick (const RoomGeometry& room, int row) noexcept;

/** Bands added by hand above 10 kHz begin as a high shelf. */
[[nodiscard]] bool beginsAsShelf (float frequencyHz) noexcept;
} // namespace NewBand
