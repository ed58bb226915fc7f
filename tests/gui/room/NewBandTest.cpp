#include "gui/room/NewBand.h"

#include "gui/band/OverlapPanel.h"
#include "gui/room/RoomCases.h"

#include <gtest/gtest.h>

namespace
{
/** Where the room stands in the window. */
constexpr int roomTop = 42;
constexpr int roomMargin = 50;
constexpr int roomMarginBelow = 90;

float clickOf (const nlohmann::json& inputs)
{
    RoomGeometry room;
    room.width = static_cast<float> (inputs["editor"][0].get<int>() - roomMargin);
    room.height = static_cast<float> (inputs["editor"][1].get<int>() - roomMarginBelow);
    return NewBand::frequencyOfClick (room, inputs["y"].get<int>() - roomTop);
}
} // namespace

TEST (NewBandTest, clicksGiveTheFrequenciesOfTheIndependentComputation)
{
    for (const auto* id :
         { "double-click-middle", "double-click-shelf", "double-click-bottom-edge", "double-click-large-low" })
    {
        const auto& item = roomCases::byId (id);
        const auto frequency = clickOf (item["inputs"]);
        EXPECT_NEAR (frequency, item["expected"]["exactFrequency"].get<float>(), 0.05f) << id;
        EXPECT_EQ (NewBand::beginsAsShelf (frequency), item["expected"]["highshelf"].get<int>() == 1) << id;
    }
}

TEST (NewBandTest, theOutermostSixtyRowsCountAsTheirInnerEdge)
{
    const RoomGeometry room;

    for (const auto row : { -5, 0, 59, 60 })
        EXPECT_EQ (NewBand::frequencyOfClick (room, row), NewBand::frequencyOfClick (room, 60));

    for (const auto row : { 562, 563, 621, 700 })
        EXPECT_EQ (NewBand::frequencyOfClick (room, row), NewBand::frequencyOfClick (room, 562));

    EXPECT_LT (NewBand::frequencyOfClick (room, 61), NewBand::frequencyOfClick (room, 60));
    EXPECT_GT (NewBand::frequencyOfClick (room, 561), NewBand::frequencyOfClick (room, 562));
}

TEST (NewBandTest, aClickWhereAPanelHangsIsRefused)
{
    const auto& inputs = roomCases::byId ("double-click-upper-taken")["inputs"];
    EXPECT_FALSE ((OverlapLimits { .upperTakenByAnother = true }.allow (clickOf (inputs))));
    EXPECT_TRUE (OverlapLimits {}.allow (clickOf (inputs)));
    EXPECT_TRUE ((OverlapLimits { .lowerTakenByAnother = true }.allow (clickOf (inputs))));
}

TEST (NewBandTest, exactlyTenKilohertzIsNoShelf)
{
    EXPECT_FALSE (NewBand::beginsAsShelf (10000.0f));
    EXPECT_TRUE (NewBand::beginsAsShelf (10000.1f));
}
