#pragma once

#include "gui/room/RoomGeometry.h"

/** Where a band may be hung into the room by hand. */
namespace NewBand
{
/** While a panel hangs above or below the room, no band may come so high, or so low, that it would want that place. */
struct PanelsInUse
{
    bool upper = false;
    bool lower = false;
};

inline constexpr float upperPanelFromHz = 14800.0f;
inline constexpr float lowerPanelUpToHz = 430.0f;

/** Rows at the top and at the bottom of the room that count as if the mouse were at their inner edge. */
inline constexpr int edgeRows = 60;

/** The frequency of a double click at a row of the room. */
[[nodiscard]] float frequencyOfClick (const RoomGeometry& room, int row) noexcept;

/** True for a frequency at which a panel already hangs. */
[[nodiscard]] bool isRefused (float frequencyHz, PanelsInUse inUse) noexcept;

/** Bands added by hand above 10 kHz begin as a high shelf. */
[[nodiscard]] bool beginsAsShelf (float frequencyHz) noexcept;
} // namespace NewBand
