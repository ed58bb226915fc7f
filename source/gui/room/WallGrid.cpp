#include "gui/room/WallGrid.h"

#include <cmath>

std::vector<GridLine> wallGrid (const RoomGeometry& room)
{
    constexpr int greyOfCuts = 25;
    constexpr int greyOfBoosts = 40;

    std::vector<GridLine> lines;

    for (auto gain = static_cast<int> (std::trunc (1.0f - room.scaleDb)); static_cast<float> (gain) <= room.scaleDb;
         ++gain)
    {
        if (gain == 0)
            continue;

        const auto gainDb = static_cast<float> (gain);
        const auto offset = room.wallOffset (gainDb);
        lines.push_back ({ .gainDb = gain,
                           .leftX = offset,
                           .rightX = room.width - offset,
                           .top = room.wallRow (RoomGeometry::highHz, gainDb),
                           .bottom = room.wallRow (RoomGeometry::lowHz, gainDb),
                           .grey = static_cast<std::uint8_t> (gain + (gain < 0 ? greyOfCuts : greyOfBoosts)) });
    }

    return lines;
}
