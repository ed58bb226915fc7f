#include "gui/band/FrequencyDrag.h"

#include "gui/room/RoomCases.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{
/** A frequency in the steps of its parameter. */
int stored (float hz)
{
    return 320 + 10 * static_cast<int> (std::lround ((hz - 320.0f) / 10.0f));
}

class FrequencyDragFigures : public testing::TestWithParam<const char*>
{
};
} // namespace

TEST_P (FrequencyDragFigures, leaveTheComputedFrequency)
{
    const auto& item = roomCases::byId (GetParam());
    const auto& inputs = item["inputs"];
    const auto room = roomCases::roomOf (inputs);
    const OverlapLimits limits { inputs.value ("upperPanelUsedByAnother", false), false };
    const int row0 = inputs["row0"];
    const int row1 = inputs["row1"];
    const int events = inputs["events"];
    int frequency = inputs["frequency"];

    for (int event = 1; event <= events; ++event)
    {
        const auto row = static_cast<float> (row0 + (row1 - row0) * event / events);
        const auto next = frequencyUnderHand (room, static_cast<float> (frequency), row, inputs["gain"], limits);

        if (next)
            frequency = stored (*next);
    }

    EXPECT_NEAR (frequency, item["expected"].get<int>(), item["tolerance"]["int"].get<int>());
}

INSTANTIATE_TEST_SUITE_P (Room,
                          FrequencyDragFigures,
                          testing::Values ("drag-frequency-up",
                                           "drag-frequency-far-down-fast",
                                           "drag-frequency-refused"));

TEST (FrequencyDragTest, aRestingHandFindsTheLineUnderIt)
{
    for (const auto gain : { -12.0f, 0.0f, 12.0f })
        for (const auto row : { 100.0f, 200.0f, 311.0f, 480.0f })
        {
            const RoomGeometry room;
            FrequencyDrag drag;
            drag.begin();
            drag.dragTo (row);
            int frequency = stored (*frequencyUnderHand (room, 3910.0f, row, gain, {}));
            int steps = 0;

            while (const auto again = drag.rest (frequency))
            {
                frequency = stored (*frequencyUnderHand (room, static_cast<float> (frequency), *again, gain, {}));
                ++steps;
            }

            const auto reached = room.wallRow (static_cast<float> (frequency), gain);
            const auto floor = room.wallRow (320.0f, gain);
            const auto ceiling = room.wallRow (20000.0f, gain);

            // The steps of the parameter are three rows apart at the floor.
            EXPECT_NEAR (reached, std::clamp (row, ceiling, floor), 2.5f) << "gain " << gain << ", row " << row;
            EXPECT_LE (steps, 30);
        }
}

TEST (FrequencyDragTest, restsOnceTheBandNoLongerMoves)
{
    FrequencyDrag drag;
    drag.begin();
    EXPECT_FALSE (drag.rest (1000).has_value());
    drag.dragTo (200.0f);
    EXPECT_EQ (drag.rest (1000), 200.0f);
    EXPECT_EQ (drag.rest (1010), 200.0f);
    EXPECT_FALSE (drag.rest (1010).has_value());
    EXPECT_FALSE (drag.rest (1020).has_value());
}

TEST (FrequencyDragTest, staysInTheRoom)
{
    const RoomGeometry room;
    EXPECT_EQ (frequencyUnderHand (room, 1000.0f, 9000.0f, 0.0f, {}), 320.0f);
    EXPECT_EQ (allowedFrequency (25000.0f, {}), 20000.0f);
    EXPECT_EQ (allowedFrequency (12.0f, {}), 320.0f);
    EXPECT_FALSE (allowedFrequency (25000.0f, { true, false }).has_value());
    EXPECT_FALSE (allowedFrequency (12.0f, { false, true }).has_value());
}
