#include "gui/room/BandColours.h"

#include "gui/room/RoomCases.h"

#include <gtest/gtest.h>

TEST (BandColoursTest, areThoseOfTheIndependentComputation)
{
    const auto& item = roomCases::byId ("colours");
    const auto tolerance = item["tolerance"]["int"].get<int>();
    ASSERT_EQ (item["expected"].size(), bandColours().size());

    for (std::size_t band = 0; band < bandColours().size(); ++band)
    {
        const auto colour = bandColours()[band];
        const auto& expected = item["expected"][band];
        EXPECT_NEAR (colour.getRed(), expected[0].get<int>(), tolerance) << band;
        EXPECT_NEAR (colour.getGreen(), expected[1].get<int>(), tolerance) << band;
        EXPECT_NEAR (colour.getBlue(), expected[2].get<int>(), tolerance) << band;
        EXPECT_EQ (colour.getAlpha(), 255) << band;
    }
}
