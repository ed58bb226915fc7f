#pragma once

#include "targets/DisplayCurve.h"

/** Where hertz and decibels stand in the room, which is drawn in one-point perspective.

    Lengths are pixels of the room component, y down. The vertical axis is frequency on a logarithmic scale, lowHz at
   the floor and highHz at the ceiling. Depth is gain: +scaleDb at the front plane, which is the component's edge,
   -scaleDb at the back wall. A wall reaches `depth` pixels inwards.

    A plain value: copy it where another thread needs it. Nothing throws; all calls are cheap. */
struct RoomGeometry
{
    static constexpr float lowHz = DisplayCurve::lowHz;
    static constexpr float highHz = DisplayCurve::highHz;
    static constexpr float depth = 120.0f;

    float width = 630.0f;
    float height = 622.0f;
    float scaleDb = 12.0f;

    /** The row of a frequency at the front plane, within 0 and the height. */
    [[nodiscard]] float frequencyRow (float frequencyHz) const noexcept;

    /** How far a gain lies from the side edge: 0 at +scaleDb, `depth` at -scaleDb. Not limited: what lies beyond the
        scale stands outside of the walls. */
    [[nodiscard]] float wallOffset (float gainDb) const noexcept;

    /** The row of a frequency at the depth of a gain. Towards the back wall rows draw together at half height. */
    [[nodiscard]] float wallRow (float frequencyHz, float gainDb) const noexcept;

    /** One step from a frequency towards the one that has `row` at a gain. One step for each event of a drag: the band
        converges under the hand. Not limited to the room.

        @param fromHz where to start; below 1 counts as 1 */
    [[nodiscard]] float frequencyAtRow (float fromHz, float row, float gainDb) const noexcept;

    /** The frequency of a row at the front plane, the inverse of frequencyRow(). Not limited. */
    [[nodiscard]] float frequencyFromFront (float row) const noexcept;

    /** The frequency of a row at the depth of 0 dB, as the mouse meets it over an empty room. Not limited. */
    [[nodiscard]] float frequencyFromBackWall (float row) const noexcept;
};
