#pragma once

#include "gui/room/RoomGeometry.h"

#include <optional>
#include <span>

/** One dot of a curve on the left wall, in pixels of a picture whose scale is `displayScale` times the room's. */
struct WallDot
{
    float x = 0.0f;
    float y = 0.0f;
    float alpha = 0.0f;
    float width = 0.0f;
    float height = 0.0f;
};

/** Dots of the curves on the walls. A dot grows and brightens with the gain, as it comes nearer. None where it would
    lie on an edge of the wall or beyond. */
namespace WallDots
{
/** A curve's value at a frequency. */
[[nodiscard]] std::optional<WallDot>
ofValue (const RoomGeometry& room, double frequencyHz, double valueDb, float displayScale) noexcept;

/** The pulse of a target that is not yet measured: at the depth of 0 dB.
    @param alpha of the pulse at this moment, 0 to 1 */
[[nodiscard]] std::optional<WallDot>
ofPulse (const RoomGeometry& room, double frequencyHz, float alpha, float displayScale) noexcept;

/** A response given in dB on a linear grid from 0 Hz to the Nyquist frequency: the dot stands between those of the two
    grid points beside the frequency.
    @param sampleRate in hertz, above 0 */
[[nodiscard]] std::optional<WallDot> ofResponse (const RoomGeometry& room,
                                                 double frequencyHz,
                                                 std::span<const float> responseDb,
                                                 double sampleRate,
                                                 float displayScale) noexcept;
} // namespace WallDots
