#include "gui/band/FrequencyDrag.h"

#include <algorithm>

namespace
{
/** A step from the floor of the room to its ceiling converges within a dozen; between two steps of the parameter the
    band may go to and fro for ever. */
constexpr int mostSteps = 30;

/** Where a step starts when the band has no frequency yet. */
constexpr float firstHz = 3.0f;
} // namespace

std::optional<float> frequencyUnderHand (const RoomGeometry& room,
                                         float fromHz,
                                         float row,
                                         float gainDb,
                                         const OverlapLimits& limits) noexcept
{
    return allowedFrequency (room.frequencyAtRow (fromHz > 0.0f ? fromHz : firstHz, row, gainDb), limits);
}

std::optional<float> allowedFrequency (float frequencyHz, const OverlapLimits& limits) noexcept
{
    if (! limits.allow (frequencyHz))
        return std::nullopt;

    return std::clamp (frequencyHz, RoomGeometry::lowHz, RoomGeometry::highHz);
}

void FrequencyDrag::dragTo (float row) noexcept
{
    lastRow = row;
    lastFrequencyHz = 0;
    stepsLeft = mostSteps;
}

std::optional<float> FrequencyDrag::rest (int frequencyHz) noexcept
{
    if (frequencyHz == lastFrequencyHz)
        stepsLeft = 0;

    if (stepsLeft == 0)
        return std::nullopt;

    --stepsLeft;
    lastFrequencyHz = frequencyHz;
    return lastRow;
}
