#include "gui/room/AutomaticScale.h"

#include "gui/room/RoomCases.h"

#include <gtest/gtest.h>

#include <vector>

using AutomaticScale::Band;

TEST (AutomaticScaleTest, isThatOfTheIndependentComputation)
{
    const auto& item = roomCases::byId ("auto-scale-11");
    std::vector<Band> bands;

    for (const float gain : item["inputs"]["gains"])
        bands.push_back ({ .gainDb = gain });

    EXPECT_EQ (AutomaticScale::scaleFor (bands), item["expected"].get<float>());
}

TEST (AutomaticScaleTest, theChosenScaleIsTheFirstAboveGainAndMargin)
{
    const auto scaleFor = [] (float gainDb)
    { return AutomaticScale::scaleFor (std::vector { Band { .gainDb = gainDb } }); };
    EXPECT_EQ (AutomaticScale::scaleFor ({}), 2.0f);
    EXPECT_EQ (scaleFor (0.0f), 2.0f);
    EXPECT_EQ (scaleFor (-1.8f), 2.0f);
    EXPECT_EQ (scaleFor (1.9f), 4.0f);
    EXPECT_EQ (scaleFor (2.0f), 4.0f);
    EXPECT_EQ (scaleFor (-3.8f), 4.0f);
    EXPECT_EQ (scaleFor (7.8f), 8.0f);
    EXPECT_EQ (scaleFor (8.0f), 12.0f);
    EXPECT_EQ (scaleFor (11.8f), 12.0f);
}

TEST (AutomaticScaleTest, aNeedBeyondEveryChoiceIsTheScaleItself)
{
    EXPECT_FLOAT_EQ (AutomaticScale::scaleFor (std::vector { Band { .gainDb = -12.0f } }), 12.1f);
}

TEST (AutomaticScaleTest, aTypedGainNeedsNoMargin)
{
    EXPECT_EQ (AutomaticScale::scaleFor (std::vector { Band { .gainDb = 0.0f, .typedDb = -3.95f } }), 4.0f);
    EXPECT_EQ (AutomaticScale::scaleFor (std::vector { Band { .gainDb = 0.0f, .typedDb = 4.0f } }), 8.0f);
}

TEST (AutomaticScaleTest, everyBandCounts)
{
    EXPECT_EQ (AutomaticScale::scaleFor (std::vector<Band> { { 1.0f, 0.0f }, { -7.0f, 0.0f }, { 3.0f, 0.0f } }), 8.0f);
}

TEST (AutomaticScaleTest, aGainWithinATenthOfTheEndOutgrowsEveryScaleButTheLargest)
{
    EXPECT_FALSE (AutomaticScale::isOutgrown (4.0f, 3.85f));
    EXPECT_TRUE (AutomaticScale::isOutgrown (4.0f, 3.95f));
    EXPECT_TRUE (AutomaticScale::isOutgrown (4.0f, -3.95f));
    EXPECT_TRUE (AutomaticScale::isOutgrown (2.0f, 9.0f));
    EXPECT_FALSE (AutomaticScale::isOutgrown (12.0f, 12.0f));
}
