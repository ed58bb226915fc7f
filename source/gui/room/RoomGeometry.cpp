#include "gui/room/RoomGeometry.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace
{
constexpr double pi = std::numbers::pi;
constexpr double ln10 = std::numbers::ln10;
const double logLow = std::log10 (static_cast<double> (RoomGeometry::lowHz));
const double logRange = std::log10 (static_cast<double> (RoomGeometry::highHz)) - logLow;

/** Below this a frequency has no place on a logarithmic axis that a step could start from. */
constexpr float lowestStartHz = 1.0f;

/** Angle of the line of sight at a row: 45 degrees down from the ceiling, 0 at half height. */
double sightAngle (double row, double height) noexcept
{
    return (1.0 - 2.0 * row / height) * pi / 4.0;
}
} // namespace

float RoomGeometry::frequencyRow (float frequencyHz) const noexcept
{
    const auto row = height - (std::log10 (static_cast<double> (frequencyHz)) - logLow) * height / logRange;
    return static_cast<float> (std::clamp (row, 0.0, static_cast<double> (height)));
}

float RoomGeometry::wallOffset (float gainDb) const noexcept
{
    return (1.0f - gainDb / scaleDb) * 0.5f * depth;
}

float RoomGeometry::wallRow (float frequencyHz, float gainDb) const noexcept
{
    const double row = frequencyRow (frequencyHz);
    return static_cast<float> (row + std::tan (sightAngle (row, height)) * wallOffset (gainDb));
}

float RoomGeometry::frequencyAtRow (float fromHz, float row, float gainDb) const noexcept
{
    const auto start = std::max (fromHz, lowestStartHz);
    const auto cosine = std::cos (sightAngle (frequencyRow (start), height));

    // The true derivative has twice the first term. Less of it makes the steps a little longer near ceiling and floor.
    const auto slope = wallOffset (gainDb) / (cosine * cosine) * pi / (4.0 * start * ln10 * logRange)
                       - height / (ln10 * start * logRange);

    return static_cast<float> (start - (static_cast<double> (wallRow (start, gainDb)) - row) / slope);
}

float RoomGeometry::frequencyFromFront (float row) const noexcept
{
    const auto above = static_cast<double> (height) - row;
    return static_cast<float> (std::pow (10.0, above * logRange / height + logLow));
}

float RoomGeometry::frequencyFromBackWall (float row) const noexcept
{
    const auto above = static_cast<double> (height) - row - 0.5 * depth;
    return static_cast<float> (std::pow (10.0, above * logRange / (static_cast<double> (height) - depth) + logLow));
}
