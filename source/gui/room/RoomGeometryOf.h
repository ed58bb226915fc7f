#pragma once

#include "core/model/PluginModel.h"
#include "gui/room/RoomGeometry.h"

/** The room as it stands now. Any thread. */
[[nodiscard]] inline RoomGeometry roomGeometryOf (const PluginModel& model) noexcept
{
    const auto& state = model.interfaceState;
    return { .width = static_cast<float> (state.roomWidth.load (std::memory_order_relaxed)),
             .height = static_cast<float> (state.roomHeight.load (std::memory_order_relaxed)),
             .scaleDb = model.displayScaleDb.load (std::memory_order_relaxed) };
}
