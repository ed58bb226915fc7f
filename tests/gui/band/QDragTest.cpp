#include "gui/band/QDrag.h"
#include "gui/band/BandLayout.h"
#include "gui/band/GainLimits.h"

#include "gui/room/RoomCases.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace
{
/** A band whose edge is dragged, laid out anew after each event as the room does. */
struct DraggedBand
{
    RoomGeometry room;
    int frequencyHz = 3910;
    float gainDb = 0.0f;
    float q = 1.0f;
    QDrag drag;

    [[nodiscard]] BandLayout layout() const
    {
        return layOutBand (room, { frequencyHz, gainDb, bandEdges (frequencyHz, q, false) });
    }

    [[nodiscard]] std::optional<float> dragTo (int row)
    {
        const auto bounds = layout().bounds;
        const auto wanted = drag.dragTo (
            room, { frequencyHz, gainDb, bandEdges (frequencyHz, q, false), bounds.getY(), bounds.getHeight() }, row);

        // As the parameter stores it.
        if (wanted)
            q = std::round (std::clamp (*wanted, 0.5f, 5.0f) * 10.0f) / 10.0f;

        return wanted;
    }
};
} // namespace

TEST (QDragTest, leavesTheComputedQ)
{
    const auto& item = roomCases::byId ("drag-q-bottom-narrower");
    const auto& inputs = item["inputs"];
    DraggedBand band;
    band.room = roomCases::roomOf (inputs);
    band.q = inputs["Q"];
    const auto start = band.layout().bounds.getBottom() - 8;
    const int distance = inputs["dy"];
    const int events = inputs["events"];
    band.drag.begin (QDrag::Edge::lower, start);

    for (int event = 1; event <= events; ++event)
        (void) band.dragTo (start + distance * event / events);

    EXPECT_NEAR (band.q, item["expected"].get<float>(), item["tolerance"]["float"].get<float>());
}

TEST (QDragTest, theUpperEdgeFollowsTheHand)
{
    DraggedBand band;
    const auto top = band.layout().bounds.getY();
    band.drag.begin (QDrag::Edge::upper, top);

    for (int row = top + 1; row <= top + 30; ++row)
        (void) band.dragTo (row);

    EXPECT_GT (band.q, 1.4f);
    EXPECT_NEAR (band.layout().bounds.getY(), top + 30, 6);
}

TEST (QDragTest, ignoresAHandThatHasNotMoved)
{
    DraggedBand band;
    const auto row = band.layout().bounds.getY() + 3;
    band.drag.begin (QDrag::Edge::upper, row);
    EXPECT_FALSE (band.dragTo (row).has_value());
    EXPECT_TRUE (band.dragTo (row + 1).has_value());
    EXPECT_FALSE (band.dragTo (row + 1).has_value());
}

TEST (QDragTest, ignoresAHandBeyondTheMiddle)
{
    const auto bounds = DraggedBand().layout().bounds;
    const auto middle = bounds.getY() + bounds.getHeight() / 2;

    DraggedBand upper;
    upper.drag.begin (QDrag::Edge::upper, bounds.getY());
    EXPECT_TRUE (upper.dragTo (middle - 5).has_value());

    DraggedBand beyond;
    beyond.drag.begin (QDrag::Edge::upper, bounds.getY());
    EXPECT_FALSE (beyond.dragTo (middle - 4).has_value());

    DraggedBand lower;
    lower.drag.begin (QDrag::Edge::lower, bounds.getBottom());
    EXPECT_FALSE (lower.dragTo (middle + 4).has_value());
}

TEST (QDragTest, aPlaceThatNoQReachesEndsTheEvent)
{
    // On the line itself the bandwidth would be 0.
    const RoomGeometry room;
    QDrag drag;
    drag.begin (QDrag::Edge::upper, 0);
    const auto row = static_cast<int> (room.wallRow (3910.0f, 0.0f));
    EXPECT_FALSE (drag.dragTo (room, { 3910, 0.0f, { 3915, 3905 }, row - 100, 400 }, row).has_value());
}
