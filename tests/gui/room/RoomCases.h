#pragma once

#include "gui/room/RoomGeometry.h"
#include "support/Fixture.h"

#include <stdexcept>
#include <string>

/** Figures of the room that were computed apart from this program, each with its inputs and tolerance. */
namespace roomCases
{
[[nodiscard]] inline const nlohmann::json& byId (const std::string& id)
{
    static const auto file = readFixture ("room.json");

    for (const auto& item : file["cases"])
        if (item["id"] == id)
            return item;

    throw std::runtime_error ("no case " + id);
}

/** The room of a case; its scale is 12 dB where the case names none. */
[[nodiscard]] inline RoomGeometry roomOf (const nlohmann::json& inputs)
{
    RoomGeometry room;
    room.width = inputs["room"][0];
    room.height = inputs["room"][1];
    room.scaleDb = inputs.value ("scaleDb", 12.0f);
    return room;
}
} // namespace roomCases
