#include "gui/room/WallDot.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr float faintestAlpha = 0.25f;
constexpr float alphaRange = 0.5f;

float alphaOf (const RoomGeometry& room, double valueDb) noexcept
{
    const auto nearness = (room.scaleDb + static_cast<float> (valueDb)) / (2.0f * room.scaleDb);
    return std::clamp (nearness * alphaRange + faintestAlpha, 0.0f, 1.0f);
}

/** Also false for what is not a number. */
bool isOnWall (float x, float displayScale) noexcept
{
    return x > 0.0f && x < RoomGeometry::depth * displayScale;
}

WallDot dotAt (float x, float y, float alpha, float displayScale) noexcept
{
    return { .x = x, .y = y, .alpha = alpha, .width = displayScale * alpha, .height = 2.0f * displayScale * alpha };
}
} // namespace

std::optional<WallDot>
WallDots::ofValue (const RoomGeometry& room, double frequencyHz, double valueDb, float displayScale) noexcept
{
    const auto gainDb = static_cast<float> (valueDb);
    const auto x = room.wallOffset (gainDb) * displayScale;

    if (! isOnWall (x, displayScale))
        return std::nullopt;

    const auto y = room.wallRow (static_cast<float> (frequencyHz), gainDb) * displayScale;
    return dotAt (x, y, alphaOf (room, valueDb), displayScale);
}

std::optional<WallDot>
WallDots::ofPulse (const RoomGeometry& room, double frequencyHz, float alpha, float displayScale) noexcept
{
    if (! (alpha > 0.0f))
        return std::nullopt;

    return dotAt (room.wallOffset (0.0f) * displayScale,
                  room.wallRow (static_cast<float> (frequencyHz), 0.0f) * displayScale,
                  alpha,
                  displayScale);
}

std::optional<WallDot> WallDots::ofResponse (const RoomGeometry& room,
                                             double frequencyHz,
                                             std::span<const float> responseDb,
                                             double sampleRate,
                                             float displayScale) noexcept
{
    const auto hertzPerPoint = sampleRate * 0.5 / static_cast<double> (responseDb.size());
    const auto position = frequencyHz / hertzPerPoint;
    const auto index = static_cast<std::size_t> (position);

    if (index + 1 >= responseDb.size())
        return std::nullopt;

    const auto fraction = static_cast<float> (position - static_cast<double> (index));
    const auto below = responseDb[index];
    const auto above = responseDb[index + 1];
    const auto x0 = room.wallOffset (below) * displayScale;
    const auto x1 = room.wallOffset (above) * displayScale;

    if (! isOnWall (x0, displayScale) || ! std::isfinite (x1))
        return std::nullopt;

    const auto frequencyAbove = static_cast<float> (static_cast<double> (index + 1) * hertzPerPoint);
    const auto y0 = room.wallRow (static_cast<float> (frequencyHz), below) * displayScale;
    const auto y1 = room.wallRow (frequencyAbove, above) * displayScale;
    return dotAt (x0 + (x1 - x0) * fraction,
                  y0 + (y1 - y0) * fraction,
                  alphaOf (room, static_cast<double> (below)),
                  displayScale);
}
