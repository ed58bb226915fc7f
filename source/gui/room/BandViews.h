#pragma once

#include "core/model/PluginModel.h"
#include "gui/room/RoomPainter.h"

#include <optional>
#include <vector>

/** What the parameters say about the bands that are in use, as the room shows it. Message thread, or whichever thread
    paints. */
namespace BandViews
{
/** The bands in use, by their number. */
[[nodiscard]] std::vector<BandView> read (const PluginModel& model);

[[nodiscard]] bool isInUse (const PluginModel& model, int band) noexcept;

/** The first band that is not in use. */
[[nodiscard]] std::optional<int> firstFree (const PluginModel& model) noexcept;

/** Bands in use by rising frequency, equal ones by number: the order in which the keyboard walks. */
[[nodiscard]] std::vector<int> byFrequency (const PluginModel& model);

/** The smallest scale in dB that shows every band in use, and a gain that was typed and not yet taken. */
[[nodiscard]] float neededScale (const PluginModel& model) noexcept;

/** True when a band in use lies beyond a scale. */
[[nodiscard]] bool anyBeyond (const PluginModel& model, float scaleDb) noexcept;
} // namespace BandViews
