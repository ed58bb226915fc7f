#include "gui/band/GestureCount.h"

#include <gtest/gtest.h>

using enum Settings::Parameter;

TEST (GestureCountTest, aHostHearsOneBeginAndOneEnd)
{
    GestureCount gestures;
    EXPECT_TRUE (gestures.begin (gain));
    EXPECT_FALSE (gestures.begin (gain));
    EXPECT_FALSE (gestures.end (gain));
    EXPECT_TRUE (gestures.isUnderWay (gain));
    EXPECT_TRUE (gestures.end (gain));
    EXPECT_FALSE (gestures.isUnderWay (gain));
}

TEST (GestureCountTest, anEndWithoutABeginIsNotTold)
{
    GestureCount gestures;
    EXPECT_FALSE (gestures.end (gain));
    EXPECT_TRUE (gestures.begin (gain));
}

TEST (GestureCountTest, kindsAreCountedApart)
{
    GestureCount gestures;
    EXPECT_TRUE (gestures.begin (gain));
    EXPECT_TRUE (gestures.begin (q));
    EXPECT_FALSE (gestures.end (frequency));
    EXPECT_TRUE (gestures.end (q));
    EXPECT_TRUE (gestures.isUnderWay (gain));
}

TEST (GestureCountTest, aBandThatGoesAwayEndsWhatItBegan)
{
    GestureCount gestures;
    EXPECT_FALSE (gestures.endAll (gain));
    (void) gestures.begin (gain);
    (void) gestures.begin (gain);
    EXPECT_TRUE (gestures.endAll (gain));
    EXPECT_FALSE (gestures.end (gain));
}
