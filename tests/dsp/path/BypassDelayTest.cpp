#include "dsp/path/BypassDelay.h"

#include "support/RealTimeGuard.h"
#include "support/TestSignals.h"

#include <gtest/gtest.h>

namespace
{
std::vector<float> ramp (int count)
{
    std::vector<float> values (static_cast<std::size_t> (count));

    for (std::size_t index = 0; index < values.size(); ++index)
        values[index] = static_cast<float> (index + 1);

    return values;
}

std::vector<float> delayed (const std::vector<float>& signal, int samples)
{
    return toFloats (delayedBy (toDoubles (signal), samples));
}

void processInBlocks (BypassDelay& delay, std::vector<float>& left, std::vector<float>& right, int blockSize)
{
    for (std::size_t start = 0; start < left.size();)
    {
        const auto count = std::min (static_cast<std::size_t> (blockSize), left.size() - start);
        float* channels[] { left.data() + start, right.data() + start };
        delay.process (channels, 2, static_cast<int> (count));
        start += count;
    }
}

TEST (BypassDelayTest, delaysBothChannelsToTheBitWhateverTheBlocks)
{
    for (const auto length : { 1, 7, 174, 1412 })
        for (const auto blockSize : { 1, 5, 64, 3000 })
        {
            BypassDelay delay (1412);
            delay.setLength (length);
            auto left = ramp (3000);
            auto right = ramp (3000);
            std::reverse (right.begin(), right.end());
            const auto wantedLeft = delayed (left, length);
            const auto wantedRight = delayed (right, length);

            processInBlocks (delay, left, right, blockSize);
            EXPECT_EQ (left, wantedLeft) << length << " in blocks of " << blockSize;
            EXPECT_EQ (right, wantedRight) << length << " in blocks of " << blockSize;
        }
}

TEST (BypassDelayTest, aLengthOfZeroLeavesTheSamples)
{
    BypassDelay delay (100);
    auto values = ramp (50);
    float* channels[] { values.data() };
    delay.process (channels, 1, 50);
    EXPECT_EQ (values, ramp (50));
}

TEST (BypassDelayTest, aNewLengthClearsTheLinesAtTheNextBlock)
{
    BypassDelay delay (100);
    delay.setLength (10);
    auto first = ramp (20);
    float* firstChannels[] { first.data() };
    delay.process (firstChannels, 1, 20);

    delay.setLength (10);
    EXPECT_EQ (delay.length(), 10);
    auto second = ramp (20);
    float* secondChannels[] { second.data() };
    delay.process (secondChannels, 1, 20);
    EXPECT_EQ (second, delayed (ramp (20), 10)) << "nothing of the first block came back";
}

TEST (BypassDelayTest, limitsTheLengthToItsStorage)
{
    BypassDelay delay (10);
    delay.setLength (11);
    EXPECT_EQ (delay.length(), 10);
    delay.setLength (-1);
    EXPECT_EQ (delay.length(), 0);
}

TEST (BypassDelayTest, neitherLengthNorBlocksAllocateOrLock)
{
    BypassDelay delay (1412);
    auto values = ramp (64);
    float* channels[] { values.data() };
    const RealTimeGuard guard;

    for (const auto length : { 174, 1412, 0, 3 })
    {
        delay.setLength (length);
        delay.process (channels, 1, 64);
    }

    EXPECT_EQ (guard.allocations(), 0);
    EXPECT_EQ (guard.locks(), 0);
}

TEST (PublishedLengthTest, isTakenOnceAndTheSameLengthIsNewsAgain)
{
    PublishedLength length;
    EXPECT_FALSE (length.takeNew().has_value());
    length.publish (5);
    length.publish (6);
    EXPECT_EQ (length.latest(), 6);
    EXPECT_EQ (length.takeNew(), 6);
    EXPECT_FALSE (length.takeNew().has_value());
    length.publish (6);
    EXPECT_EQ (length.takeNew(), 6);
}
} // namespace
