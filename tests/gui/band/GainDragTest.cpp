#include "gui/band/GainDrag.h"
#include "gui/band/BandLayout.h"
#include "gui/band/GainLimits.h"

#include "gui/room/RoomCases.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{
/** A gain in the steps of its parameter. */
float stored (float gainDb)
{
    return std::round (gainDb * 10.0f) / 10.0f;
}

class GainDragFigures : public testing::TestWithParam<const char*>
{
};
} // namespace

TEST_P (GainDragFigures, leaveTheComputedGain)
{
    const auto& item = roomCases::byId (GetParam());
    const auto& inputs = item["inputs"];
    const auto& expected = item["expected"];
    const GainLimits limits { inputs["master"].get<bool>() ? FilterMode::master : FilterMode::mix,
                              inputs["gainScale"],
                              inputs["scaleDb"] };
    const int y0 = inputs["y0"];
    const int y1 = inputs["y1"];
    const int events = inputs["events"];

    GainDrag drag;
    drag.begin (depthOfGain (inputs["gain"], limits.scaleDb), y0);
    float gain = 0.0f;
    auto exceeded = false;

    for (int event = 1; event <= events; ++event)
    {
        const auto depth = drag.dragTo (y0 + (y1 - y0) * event / events);
        exceeded = exceeded || limits.exceedsMaster (gainAtDepth (depth, limits.scaleDb));
        gain = gainAtDepth (limits.limitDepth (depth), limits.scaleDb);
    }

    EXPECT_NEAR (gain, expected["exactGain"].get<float>(), 0.01f);
    EXPECT_NEAR (stored (gain), expected["gain"].get<float>(), 0.0005f);
    EXPECT_EQ (exceeded, expected["masterExceeded"].get<bool>());
}

INSTANTIATE_TEST_SUITE_P (Room,
                          GainDragFigures,
                          testing::Values ("drag-gain-down", "drag-gain-one-event", "drag-gain-master-half"));

TEST (GainDragTest, aRestingHandFindsTheBandUnderIt)
{
    GainDrag drag;
    drag.begin (0.5f, 300);
    EXPECT_FLOAT_EQ (drag.dragTo (330), 0.55f);
    EXPECT_FLOAT_EQ (drag.rest().value(), 0.6f);
    EXPECT_FLOAT_EQ (drag.rest().value(), 0.65f);
    EXPECT_FLOAT_EQ (drag.rest().value(), 0.7f);
    EXPECT_FALSE (drag.rest().has_value());
}

TEST (GainDragTest, aHandThatHasNotMovedLeavesTheBand)
{
    GainDrag drag;
    drag.begin (0.3625f, 434);
    EXPECT_FALSE (drag.rest().has_value());
    EXPECT_FLOAT_EQ (drag.dragTo (434), 0.3625f);
}

TEST (GainDragTest, goesOnFromWhereTheBandWasPutMeanwhile)
{
    GainDrag drag;
    drag.begin (0.5f, 300);
    drag.dragTo (330);
    drag.bandMoved (0.2f);
    EXPECT_FALSE (drag.rest().has_value());
    EXPECT_FLOAT_EQ (drag.dragTo (330), 0.2f);
    EXPECT_FLOAT_EQ (drag.dragTo (360), 0.25f);
}
