#pragma once

#include "gui/band/BandEdges.h"
#include "gui/room/RoomGeometry.h"

#include <optional>

/** A drag of a band's upper or lower edge. */
class QDrag
{
public:
    enum class Edge
    {
        upper,
        lower
    };

    /** What the band is like at the moment of an event. */
    struct Band
    {
        int frequencyHz = 0;
        float gainDb = 0.0f;
        BandEdges edges;

        /** Its bounds in the room: the first row, and how many. */
        int top = 0;
        int height = 0;
    };

    void begin (Edge draggedEdge, int row) noexcept;

    /** The Q that brings the edge under the hand, not limited; nothing if the hand has not moved, has crossed the
        band's middle, or stands where no Q reaches.
        @param row of the hand, in the room */
    std::optional<float> dragTo (const RoomGeometry& room, const Band& band, int row) noexcept;

private:
    [[nodiscard]] bool crossedMiddle (const Band& band, int row) const noexcept;

    Edge edge = Edge::upper;
    int lastRow = 0;
};
