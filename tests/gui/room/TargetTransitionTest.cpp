#include "gui/room/TargetTransition.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <vector>

namespace
{
constexpr int frames = 12;
constexpr int pulseFrames = 50;
const std::vector<double> first { 1.0, -2.0 };
const std::vector<double> second { 13.0, 4.0 };

struct TargetTransitionTest : testing::Test
{
    TargetTransition transition { frames, pulseFrames };
};
} // namespace

TEST_F (TargetTransitionTest, goesToNewValuesInTwelveEvenSteps)
{
    transition.restart (first);

    for (int frame = 1; frame <= frames; ++frame)
    {
        EXPECT_TRUE (transition.advance (second));
        EXPECT_NEAR (transition.value (0), 1.0 + frame, 1e-12);
        EXPECT_NEAR (transition.value (1), -2.0 + 0.5 * frame, 1e-12);
    }

    EXPECT_FALSE (transition.advance (second));
    EXPECT_EQ (transition.value (0), 13.0);
}

TEST_F (TargetTransitionTest, restsWhileTheValuesStay)
{
    transition.restart (first);

    for (int frame = 0; frame < 3 * frames; ++frame)
        EXPECT_FALSE (transition.advance (first));

    EXPECT_EQ (transition.value (1), -2.0);
}

TEST_F (TargetTransitionTest, valuesThatComeUnderwayAreTakenUpAtTheEnd)
{
    const std::vector<double> third { 25.0, 0.0 };
    transition.restart (first);
    transition.advance (second);
    int steps = 1;

    while (transition.advance (third))
        ++steps;

    EXPECT_EQ (steps, 2 * frames);
    EXPECT_EQ (transition.value (0), 25.0);
}

TEST_F (TargetTransitionTest, aRestartStandsAtTheValuesAtOnce)
{
    transition.restart (first);
    transition.advance (second);
    transition.restart (second);
    EXPECT_EQ (transition.value (0), 13.0);
    EXPECT_FALSE (transition.advance (second));
}

TEST_F (TargetTransitionTest, anotherNumberOfRowsRestarts)
{
    transition.restart (first);
    EXPECT_TRUE (transition.advance (std::vector { 7.0, 8.0, 9.0 }));
    ASSERT_EQ (transition.size(), 3u);
    EXPECT_EQ (transition.value (2), 9.0);
    EXPECT_FALSE (transition.advance (std::vector { 7.0, 8.0, 9.0 }));
}

TEST_F (TargetTransitionTest, thePulseSwellsTwiceInItsPeriod)
{
    EXPECT_EQ (transition.pulseAlpha(), 0.0f);

    for (int frame = 1; frame < pulseFrames; ++frame)
    {
        transition.advancePulse();
        EXPECT_NEAR (transition.pulseAlpha(), std::abs (std::sin (frame * 4.0 * std::numbers::pi / 100.0)), 1e-6);
    }

    transition.advancePulse();
    EXPECT_EQ (transition.pulseAlpha(), 0.0f);
}

TEST_F (TargetTransitionTest, aWholePulseLeavesTheCurveAtNoGain)
{
    transition.restart (first);

    for (int frame = 0; frame < pulseFrames - 1; ++frame)
        transition.advancePulse();

    EXPECT_EQ (transition.value (0), 1.0);
    transition.advancePulse();
    EXPECT_EQ (transition.value (0), 0.0);

    // From there the measured target sets out.
    EXPECT_TRUE (transition.advance (second));
    EXPECT_NEAR (transition.value (0), 13.0 / frames, 1e-12);
}

TEST_F (TargetTransitionTest, aStoppedPulseBeginsAnew)
{
    transition.advancePulse();
    transition.stopPulse();
    EXPECT_EQ (transition.pulseAlpha(), 0.0f);
}
