#include "dsp/path/DelayRing.h"

#include "support/TestSignals.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{
TEST (DelayRingTest, delaysBySingleSamples)
{
    for (const auto length : { 0, 1, 2, 7, 100 })
    {
        DelayRing ring (1, 100);
        ring.setLength (length);

        for (int i = 0; i < 350; ++i)
            ASSERT_EQ (ring.process (i + 1.0), i < length ? 0.0 : i + 1.0 - length) << length;
    }
}

TEST (DelayRingTest, swapsBothChannelsInPlace)
{
    DelayRing ring (2, 5);
    ring.setLength (3);

    for (int i = 0; i < 20; ++i)
    {
        double left = i + 1.0;
        double right = -left;
        ring.process (left, right);
        ASSERT_EQ (left, i < 3 ? 0.0 : i - 2.0);
        ASSERT_EQ (right, -left);
    }
}

TEST (DelayRingTest, blocksOfAnyLengthDelayLikeSingleSamples)
{
    const auto left = noise (5000, 1);
    const auto right = noise (5000, 2);

    for (const auto length : { 0, 1, 13, 224, 1254 })
    {
        DelayRing ring (2, 1254);
        ring.setLength (length);
        std::vector<double> outLeft (left.size());
        std::vector<double> outRight (left.size());

        for (const auto& block : randomBlocks (5000, 1, 600, 3))
            ring.processStereo (left.data() + block.start,
                                right.data() + block.start,
                                outLeft.data() + block.start,
                                outRight.data() + block.start,
                                block.count);

        EXPECT_EQ (outLeft, delayedBy (left, length));
        EXPECT_EQ (outRight, delayedBy (right, length));
    }
}

TEST (DelayRingTest, blocksMayBeDelayedInPlace)
{
    auto samples = noise (1000, 4);
    const auto expected = delayedBy (samples, 17);
    DelayRing ring (1, 17);
    ring.setLength (17);

    for (const auto& block : randomBlocks (1000, 1, 40, 5))
        ring.processSingle (samples.data() + block.start, samples.data() + block.start, block.count);

    EXPECT_EQ (samples, expected);
}

TEST (DelayRingTest, takesSinglePrecisionInput)
{
    const auto input = toFloats (noise (300, 6));
    std::vector<double> output (input.size());
    DelayRing ring (1, 40);
    ring.setLength (40);
    ring.processSingle (input.data(), output.data(), 300);
    EXPECT_EQ (output, delayedBy (toDoubles (input), 40));
}

TEST (DelayRingTest, settingTheLengthAndClearingLeaveSilence)
{
    DelayRing ring (1, 10);
    ring.setLength (4);

    for (int i = 0; i < 6; ++i)
        static_cast<void> (ring.process (1.0));

    ring.setLength (5);
    EXPECT_EQ (ring.length(), 5);

    for (int i = 0; i < 5; ++i)
        EXPECT_EQ (ring.process (1.0), 0.0);

    EXPECT_EQ (ring.process (0.0), 1.0);
    ring.clear();
    EXPECT_EQ (ring.process (0.0), 0.0);
}

TEST (DelayRingTest, limitsTheLengthToItsStorage)
{
    DelayRing ring (2, 10);
    ring.setLength (11);
    EXPECT_EQ (ring.length(), 10);
    ring.setLength (-1);
    EXPECT_EQ (ring.length(), 0);
}
} // namespace
