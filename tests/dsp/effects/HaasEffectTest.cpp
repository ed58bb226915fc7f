#include "dsp/effects/HaasEffect.h"
#include "support/RealTimeGuard.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <vector>

namespace
{
constexpr int rate = 48000;

float sineAt (int index, double frequencyHz, double amplitude)
{
    return static_cast<float> (amplitude * std::sin (2.0 * std::numbers::pi * frequencyHz * index / rate));
}

TEST (HaasEffectTest, passesTheInputUntilItIsEnabled)
{
    HaasEffect effect (rate);

    for (int i = 0; i < 1000; ++i)
        EXPECT_EQ (effect.process (sineAt (i, 440.0, 0.5), 1.0f), sineAt (i, 440.0, 0.5));

    EXPECT_EQ (effect.readAndClearPeak(), 0.0f);
}

TEST (HaasEffectTest, returnsTheDelayedSignalLessTheDirectOne)
{
    HaasEffect effect (rate);
    effect.setEnabled (true);
    std::vector<float> outputs;

    // Far above the threshold the gate is open. 15 ms are 720 samples, and the reading place lies three more behind.
    for (int i = 0; i < 4000; ++i)
        outputs.push_back (effect.process (sineAt (i, 300.0, 0.8), 0.0f));

    EXPECT_NEAR (effect.gateGainDb(), 0.0f, 1e-3f);

    for (int i = 2000; i < 4000; ++i)
        ASSERT_NEAR (
            outputs[static_cast<std::size_t> (i)], sineAt (i - 723, 300.0, 0.8) - sineAt (i, 300.0, 0.8), 2e-3f)
            << i;
}

TEST (HaasEffectTest, wetLevelScalesTheDelayedSignalAlone)
{
    HaasEffect effect (rate);
    effect.setEnabled (true);
    effect.setWetLevelDb (-20.0f);
    auto output = 0.0f;

    for (int i = 0; i < 4000; ++i)
        output = effect.process (sineAt (i, 300.0, 0.8), 0.0f);

    EXPECT_NEAR (output, 0.1f * sineAt (3999 - 723, 300.0, 0.8) - sineAt (3999, 300.0, 0.8), 2e-3f);
}

TEST (HaasEffectTest, readsBetweenSamplesWithACubicThatIsExactForALine)
{
    HaasEffect effect (rate);
    effect.setEnabled (true);
    effect.setThresholdDb (-200.0f);
    effect.setDelayMs (10.0f + 0.25f * 1000.0f / static_cast<float> (rate));
    auto output = 0.0f;

    for (int i = 0; i < 2000; ++i)
        output = effect.process (0.001f * static_cast<float> (i), 0.0f);

    // 480.25 samples and three; the gate's gain is 1 throughout, as the threshold lies below all levels.
    EXPECT_NEAR (output, -0.001f * 483.25f, 2e-4f);
}

TEST (HaasEffectTest, gateShutsBelowTheThresholdAndOpensAboveIt)
{
    for (const auto& [level, expectedDb] : { std::pair { -30.0, 0.0 }, std::pair { -75.0, -45.0 } })
    {
        HaasEffect effect (rate);
        effect.setEnabled (true);
        const auto input = static_cast<float> (std::pow (10.0, level / 20.0));

        for (int i = 0; i < 2 * rate; ++i)
            effect.process (input, 0.0f);

        // The detector's recursion rounds in single precision.
        EXPECT_NEAR (effect.gateGainDb(), expectedDb, 0.05) << level;
    }
}

TEST (HaasEffectTest, kneeIsAParabolaThatLeavesTheStraightPartSmoothly)
{
    for (const auto level : { -61.5, -60.0, -58.0, -57.6 })
    {
        HaasEffect effect (rate);
        effect.setEnabled (true);
        const auto input = static_cast<float> (std::pow (10.0, level / 20.0));

        for (int i = 0; i < 4 * rate; ++i)
            effect.process (input, 0.0f);

        EXPECT_NEAR (effect.gateGainDb(), -9.9 * (level + 57.5) * (level + 57.5), 0.05) << level;
    }
}

TEST (HaasEffectTest, sideChainDrivesTheGateWhenItIsUsed)
{
    HaasEffect effect (rate);
    effect.setEnabled (true);
    effect.setUseSideChain (true);

    for (int i = 0; i < rate; ++i)
        effect.process (0.5f, 0.0f);

    EXPECT_NEAR (effect.gateGainDb(), 0.0f, 0.01f) << "silence is mapped to silence: no gain to take away";

    for (int i = 0; i < rate; ++i)
        effect.process (0.0f, 3.0e-4f);

    EXPECT_LT (effect.gateGainDb(), -40.0f);
    EXPECT_NEAR (effect.readAndClearPeak(), 3.0e-4f, 1e-6f);
    EXPECT_EQ (effect.readAndClearPeak(), 0.0f);
}

TEST (HaasEffectTest, delayGlidesEvenlyAndStaysWithinItsRange)
{
    HaasEffect effect (rate, 50.0f);
    effect.setEnabled (true);
    EXPECT_EQ (effect.delayMs(), 15.0f);

    effect.setDelayMs (25.0f, 10);

    for (int i = 1; i <= 10; ++i)
    {
        effect.process (0.1f, 0.0f);
        EXPECT_NEAR (effect.delayMs(), i < 10 ? 15.0f + static_cast<float> (i) : 25.0f, 1e-4f);
    }

    for (const auto& [wanted, expected] : { std::pair { 80.0f, 50.0f }, std::pair { -3.0f, 0.0f } })
    {
        effect.setDelayMs (wanted);
        effect.process (0.1f, 0.0f);
        EXPECT_EQ (effect.delayMs(), expected);
    }
}

TEST (HaasEffectTest, everyDelayInTheRangeReadsWithinTheLine)
{
    for (const auto sampleRate : { 8000, 44100, 192000 })
    {
        HaasEffect effect (sampleRate, 5.0f);
        effect.setEnabled (true);
        effect.setThresholdDb (-200.0f);

        for (int step = 0; step <= 500; ++step)
        {
            effect.setDelayMs (0.01f * static_cast<float> (step));

            for (int i = 0; i < 7; ++i)
                ASSERT_LE (std::abs (effect.process (0.5f, 0.0f)), 1.0f);
        }

        for (int i = 0; i < 2000; ++i)
            effect.process (0.5f, 0.0f);

        EXPECT_NEAR (effect.process (0.5f, 0.0f), 0.0f, 1e-4f);
    }
}

TEST (HaasEffectTest, processingDoesNotAllocate)
{
    HaasEffect effect (rate);
    effect.setEnabled (true);
    const RealTimeGuard guard;

    for (int i = 0; i < 1000; ++i)
        effect.process (0.5f, 0.0f);

    EXPECT_EQ (guard.allocations(), 0);
}
} // namespace
