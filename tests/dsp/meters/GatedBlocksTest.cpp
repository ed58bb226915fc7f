#include "dsp/meters/GatedBlocks.h"

#include "dsp/meters/LoudnessScale.h"
#include "support/LiteralMeter.h"

#include <gtest/gtest.h>

#include <random>

namespace
{
constexpr int capacity = 3000;

/** Powers that the gates may meet: silence, both sides of the first gate to the last float, and music. */
float anyPower (std::mt19937& generator)
{
    static const auto gate = orvik::smallestPowerAbove (-70.0f);
    const float edges[] { 0.0f, std::nextafter (gate, 0.0f), gate, std::nextafter (gate, 1.0f) };
    const auto choice = std::uniform_int_distribution<std::size_t> (0, 7) (generator);
    return choice < std::size (edges) ? edges[choice] : std::uniform_real_distribution<float> (0.0f, 1.0f) (generator);
}

TEST (GatedBlocksTest, storeAndLoudnessAreThoseOfLogarithmsAndExchangesFromBothEnds)
{
    std::mt19937 generator (1);
    orvik::GatedBlocks<capacity> blocks;
    LiteralMeter literal (1000.0, 0, capacity);
    std::size_t writeIndex = 0;

    for (int round = 0; round < 60; ++round)
    {
        // Sometimes all of the store is new, sometimes a few blocks in an order that the last gate left.
        const auto newBlocks = round % 3 == 0 ? capacity : round;

        for (int i = 0; i < newBlocks; ++i)
        {
            const auto power = anyPower (generator);
            blocks.add (power);
            literal.blocks[writeIndex] = power;
            writeIndex = (writeIndex + 1) % capacity;
        }

        const auto loudness = blocks.gatedLoudness();
        literal.runGate();
        ASSERT_TRUE (std::equal (blocks.powers().begin(), blocks.powers().end(), literal.blocks.begin()))
            << "in round " << round;
        ASSERT_TRUE (loudness.has_value());
        EXPECT_NEAR (*loudness, literal.gatedValue(), 1.0e-5f);
    }
}

TEST (GatedBlocksTest, aBlockOnTheFirstGateItselfDoesNotCount)
{
    orvik::GatedBlocks<capacity> blocks;
    const auto smallest = orvik::smallestPowerAbove (-70.0f);

    blocks.fill (std::nextafter (smallest, 0.0f));
    EXPECT_FALSE (blocks.gatedLoudness().has_value());

    blocks.add (smallest);
    EXPECT_EQ (blocks.gatedLoudness(), orvik::loudnessOf (smallest));
}
} // namespace
