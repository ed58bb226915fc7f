#include "gui/room/NewBand.h"

#include <algorithm>

float NewBand::frequencyOfClick (const RoomGeometry& room, int row) noexcept
{
    const auto lowest = std::max (static_cast<int> (room.height) - edgeRows, edgeRows);
    return room.frequencyFromBackWall (static_cast<float> (std::clamp (row, edgeRows, lowest)));
}

bool NewBand::beginsAsShelf (float frequencyHz) noexcept
{
    constexpr float shelfAboveHz = 10000.0f;
    return frequencyHz > shelfAboveHz;
}
