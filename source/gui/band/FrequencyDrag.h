#pragma once

#include "gui/band/OverlapPanel.h"

#include <optional>

/** The frequency that one event of a line's drag gives, within the room; nothing where another band's panel has the
    space.
    @param fromHz the band's frequency before the event; 0 if it has none yet
    @param row    of the hand, in the room */
[[nodiscard]] std::optional<float> frequencyUnderHand (const RoomGeometry& room,
                                                       float fromHz,
                                                       float row,
                                                       float gainDb,
                                                       const OverlapLimits& limits) noexcept;

/** A frequency limited to the room; nothing where another band's panel has the space. */
[[nodiscard]] std::optional<float> allowedFrequency (float frequencyHz, const OverlapLimits& limits) noexcept;

/** A drag of a band's line. One event makes one step towards the hand, so the last event's step is repeated while the
    hand rests, until the band no longer moves. */
class FrequencyDrag
{
public:
    void begin() noexcept { stepsLeft = 0; }

    /** An event came. @param row of the hand, in the room */
    void dragTo (float row) noexcept;

    /** A tick without an event: the row to step towards once more, or nothing once the band has arrived.
        @param frequencyHz the band's frequency now */
    std::optional<float> rest (int frequencyHz) noexcept;

private:
    float lastRow = 0.0f;
    int lastFrequencyHz = 0;
    int stepsLeft = 0;
};
