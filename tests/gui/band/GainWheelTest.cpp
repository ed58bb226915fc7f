#include "gui/band/GainWheel.h"

#include <gtest/gtest.h>

namespace
{
constexpr GainLimits mix { FilterMode::mix, 100.0f, 12.0f };
} // namespace

TEST (GainWheelTest, aNotchGoesAFifthOfItsMovementOnceItHasArrived)
{
    GainWheel wheel;
    EXPECT_FLOAT_EQ (wheel.turn (0.5f, 0.5f, 0.0, mix), 0.525f);
    EXPECT_FLOAT_EQ (wheel.rest (mix).value(), 0.55f);
    EXPECT_FLOAT_EQ (wheel.rest (mix).value(), 0.575f);
    EXPECT_FLOAT_EQ (wheel.rest (mix).value(), 0.6f);
    EXPECT_FALSE (wheel.rest (mix).has_value());
}

TEST (GainWheelTest, fastNotchesAddUp)
{
    GainWheel wheel;
    wheel.turn (0.5f, 0.5f, 0.0, mix);

    // The band is still on its way when the next notches come.
    wheel.turn (0.525f, 0.5f, 10.0, mix);
    wheel.turn (0.575f, 0.5f, 20.0, mix);
    float depth = 0.0f;

    while (const auto next = wheel.rest (mix))
        depth = *next;

    EXPECT_FLOAT_EQ (depth, 0.8f);
}

TEST (GainWheelTest, afterHalfASecondItStartsFromTheBand)
{
    GainWheel wheel;
    wheel.turn (0.5f, 0.5f, 0.0, mix);
    EXPECT_FLOAT_EQ (wheel.turn (0.3f, -0.5f, 501.0, mix), 0.275f);
}

TEST (GainWheelTest, aBandThatWasPutElsewhereIsWhereTheNextNotchStarts)
{
    GainWheel wheel;
    wheel.turn (0.5f, 0.5f, 0.0, mix);
    wheel.bandMoved();
    EXPECT_FALSE (wheel.rest (mix).has_value());
    EXPECT_FLOAT_EQ (wheel.turn (0.2f, 0.5f, 100.0, mix), 0.225f);
}

TEST (GainWheelTest, staysWithinTheRoomAndComesBackAtOnce)
{
    GainWheel wheel;

    for (int notch = 0; notch < 10; ++notch)
        wheel.turn (0.9f, 1.0f, notch, mix);

    EXPECT_FLOAT_EQ (wheel.turn (1.0f, 0.0f, 20.0, mix), 1.0f);
    EXPECT_LT (wheel.turn (1.0f, -1.0f, 21.0, mix), 1.0f);
}

TEST (GainWheelTest, masterStopsAtItsLimitOverTheGainScale)
{
    GainWheel wheel;
    const GainLimits master { FilterMode::master, 50.0f, 12.0f };
    auto depth = 0.5f;

    for (int notch = 0; notch < 20; ++notch)
        depth = wheel.turn (depth, -1.0f, notch, master);

    EXPECT_NEAR (24.0f * (1.0f - depth) - 12.0f, 8.0f, 1e-4f);
}
