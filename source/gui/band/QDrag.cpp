#include "gui/band/QDrag.h"

#include <cmath>
#include <cstdint>

namespace
{
/** The lower handle is taken a little above its edge. */
constexpr int lowerHandleOffset = 2;

/** A hand may pass the middle by this much before the edge lets go. */
constexpr int middleTolerance = 5;

/** Bandwidth of a band with one edge at a distance from its centre and the other geometrically even to it; 0 if there
    is none. Whole hertz. */
int bandwidthWithEdge (QDrag::Edge edge, int frequencyHz, float edgeHz) noexcept
{
    const std::int64_t frequency = frequencyHz;
    const auto above = edge == QDrag::Edge::upper;
    const auto distance = static_cast<std::int64_t> (above ? edgeHz - static_cast<float> (frequencyHz)
                                                           : static_cast<float> (frequencyHz) - edgeHz);
    const auto divisor = above ? frequency + distance : frequency - distance;
    return divisor == 0 ? 0 : static_cast<int> (distance + distance * frequency / divisor);
}
} // namespace

void QDrag::begin (Edge draggedEdge, int row) noexcept
{
    edge = draggedEdge;
    lastRow = row;
}

bool QDrag::crossedMiddle (const Band& band, int row) const noexcept
{
    const auto y = row - band.top;
    const auto middle = band.height / 2;
    return edge == Edge::upper ? y > middle - middleTolerance : y < middle + middleTolerance;
}

std::optional<float> QDrag::dragTo (const RoomGeometry& room, const Band& band, int row) noexcept
{
    if (row == lastRow)
        return std::nullopt;

    lastRow = row;

    if (crossedMiddle (band, row))
        return std::nullopt;

    const auto upper = edge == Edge::upper;
    const auto from = static_cast<float> (upper ? band.edges.upperHz : band.edges.lowerHz);
    const auto edgeRow = static_cast<float> (upper ? row : row + lowerHandleOffset);
    const auto bandwidth = bandwidthWithEdge (edge, band.frequencyHz, room.frequencyAtRow (from, edgeRow, band.gainDb));

    if (bandwidth == 0)
        return std::nullopt;

    const auto q = qOfBandwidthRatio (static_cast<float> (band.frequencyHz) / static_cast<float> (bandwidth));
    return std::isfinite (q) ? std::optional (static_cast<float> (q)) : std::nullopt;
}
