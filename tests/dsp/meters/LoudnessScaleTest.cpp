#include "dsp/meters/LoudnessScale.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace
{
float stepped (float value, int floats)
{
    for (; floats > 0; --floats)
        value = std::nextafter (value, std::numeric_limits<float>::infinity());

    for (; floats < 0; ++floats)
        value = std::nextafter (value, 0.0f);

    return value;
}

TEST (LoudnessScaleTest, hasTheOffsetOfTheRecommendation)
{
    EXPECT_FLOAT_EQ (orvik::loudnessOf (1.0f), -0.691f);
    EXPECT_FLOAT_EQ (orvik::loudnessOf (0.1f), -10.691f);
    EXPECT_EQ (orvik::loudnessOf (0.0f), -std::numeric_limits<float>::infinity());
}

TEST (LoudnessScaleTest, resetLevelOfSeventyDoesNotPassTheGateOfSeventy)
{
    const auto power = orvik::powerOfResetLevel (-70.0f);
    EXPECT_FLOAT_EQ (power, static_cast<float> (std::pow (10.0, -6.9309)));
    EXPECT_FALSE (orvik::loudnessOf (power) > -70.0f);
    EXPECT_LT (power, orvik::smallestPowerAbove (-70.0f));
}

TEST (LoudnessScaleTest, comparingPowersDecidesAsComparingLevels)
{
    std::mt19937 random (20240601);
    std::uniform_real_distribution<float> levels (-70.0f, 10.0f);

    for (int i = 0; i < 3000; ++i)
    {
        const auto level = i == 0 ? -70.0f : levels (random);
        const auto smallest = orvik::smallestPowerAbove (level);

        for (int step = -300; step <= 300; step += (std::abs (step) < 20 ? 1 : 7))
        {
            const auto power = stepped (smallest, step);
            ASSERT_EQ (power >= smallest, orvik::loudnessOf (power) > level) << level << " dB, step " << step;
        }
    }
}

// Where the exponent of the power changes, the logarithm puts its result together from other parts.
TEST (LoudnessScaleTest, levelNeverFallsWhereThePowersExponentChanges)
{
    for (int exponent = -30; exponent <= 4; ++exponent)
    {
        auto power = stepped (std::ldexp (1.0f, exponent), -2000);
        auto level = orvik::loudnessOf (power);

        for (int step = 0; step < 4000; ++step)
        {
            power = stepped (power, 1);
            const auto next = orvik::loudnessOf (power);
            ASSERT_GE (next, level) << power;
            level = next;
        }
    }
}
} // namespace
