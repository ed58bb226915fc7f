#include "gui/band/BandEdges.h"

#include "gui/room/RoomGeometry.h"

#include <algorithm>
#include <cmath>

namespace
{
// ratio = linear * Q + square * Q^2 + offset, fitted to the bells that the filters make.
constexpr double linear = 0.458;
constexpr double square = -0.0388;
constexpr double offset = 0.28;
} // namespace

float bandwidthRatio (float q) noexcept
{
    return static_cast<float> (linear * q + square * q * q + offset);
}

double qOfBandwidthRatio (float ratio) noexcept
{
    const auto radicand = linear * linear - (offset - ratio) * 4.0 * square;
    return (std::sqrt (radicand) - linear) / (2.0 * square);
}

BandEdges bandEdges (int frequencyHz, float q, bool highShelf) noexcept
{
    const auto bandwidth = static_cast<int> (static_cast<float> (frequencyHz) / bandwidthRatio (q));

    // upper * lower = centre^2 with upper - lower = bandwidth. In double: the product passes 2^31 at the ceiling.
    const auto twiceBelow = 2.0 * frequencyHz - bandwidth;
    const auto product = 4.0 * bandwidth * frequencyHz;
    const auto above = static_cast<int> ((std::sqrt (twiceBelow * twiceBelow + product) - twiceBelow) / 2.0);

    const auto highest = static_cast<int> (RoomGeometry::highHz);
    const auto lowest = static_cast<int> (RoomGeometry::lowHz);
    return { highShelf ? highest : std::min (frequencyHz + above, highest),
             std::max (frequencyHz - (bandwidth - above), lowest) };
}
