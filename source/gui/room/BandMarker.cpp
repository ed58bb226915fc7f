#include "gui/room/BandMarker.h"

#include "core/parameters/Settings.h"

#include <algorithm>

BandMarker bandMarker (const RoomGeometry& room, float frequencyHz, float gainDb, bool master) noexcept
{
    BandMarker marker;
    marker.gainDb = std::clamp (gainDb, -room.scaleDb, room.scaleDb);

    if (master)
        marker.gainDb = std::clamp (marker.gainDb, -Settings::masterGainLimitDb, Settings::masterGainLimitDb);

    marker.x = room.wallOffset (marker.gainDb);
    marker.y = room.wallRow (std::max (frequencyHz, 1.0f), marker.gainDb);
    marker.leftFrame = { marker.x - 1.0f, marker.y - 4.0f, 3.0f, 8.0f };
    marker.rightFrame = { room.width - marker.x - 2.0f, marker.y - 4.0f, 4.0f, 8.0f };
    marker.leftFill = { marker.x, marker.y - 3.0f, 2.0f, 6.0f };
    marker.rightFill = { room.width - marker.x - 1.0f, marker.y - 3.0f, 2.0f, 6.0f };
    return marker;
}
