#include "dsp/threads/AudioFifo.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <thread>
#include <vector>

namespace
{
TEST (AudioFifoTest, holdsOneSampleLessThanItsCapacity)
{
    AudioFifo fifo (1, 8);
    const std::vector<float> input { 1, 2, 3, 4, 5, 6, 7, 8, 9, 10 };
    const float* channels[] { input.data() };
    EXPECT_EQ (fifo.write (channels, 1, 10), 7);
    EXPECT_EQ (fifo.numReady(), 7);
    EXPECT_EQ (fifo.write (channels, 1, 1), 0);
}

TEST (AudioFifoTest, readsNoMoreThanIsThere)
{
    AudioFifo fifo (1, 8);
    const std::vector<float> input { 1, 2, 3 };
    std::vector<float> output (5, -1.0f);
    const float* inputs[] { input.data() };
    float* outputs[] { output.data() };
    fifo.write (inputs, 1, 3);
    EXPECT_EQ (fifo.read (outputs, 1, 5), 3);
    EXPECT_EQ (output, (std::vector<float> { 1, 2, 3, -1, -1 }));
    EXPECT_EQ (fifo.numReady(), 0);
}

TEST (AudioFifoTest, movesNothingWithAnotherChannelCount)
{
    AudioFifo fifo (2, 8);
    std::vector<float> samples { 1, 2, 3 };
    const float* inputs[] { samples.data(), samples.data() };
    float* outputs[] { samples.data(), samples.data() };
    EXPECT_EQ (fifo.write (inputs, 1, 3), 0);
    EXPECT_EQ (fifo.write (inputs, 2, 3), 3);
    EXPECT_EQ (fifo.read (outputs, 1, 3), 0);
    EXPECT_EQ (fifo.numReady(), 3);
}

TEST (AudioFifoTest, ignoresNegativeCounts)
{
    AudioFifo fifo (1, 8);
    float sample = 1.0f;
    const float* inputs[] { &sample };
    float* outputs[] { &sample };
    EXPECT_EQ (fifo.write (inputs, 1, -3), 0);
    EXPECT_EQ (fifo.read (outputs, 1, -3), 0);
    EXPECT_EQ (fifo.numReady(), 0);
}

TEST (AudioFifoTest, keepsBothChannelsInOrderThroughManyWraps)
{
    AudioFifo fifo (2, 37);
    std::mt19937 random (1);
    std::uniform_int_distribution<int> anyCount (0, 50);
    float nextIn = 0.0f;
    float nextOut = 0.0f;

    for (int round = 0; round < 2000; ++round)
    {
        std::array<float, 50> left {};
        std::array<float, 50> right {};
        const auto wanted = anyCount (random);

        for (std::size_t i = 0; i < left.size(); ++i)
        {
            left[i] = nextIn + static_cast<float> (i);
            right[i] = -left[i];
        }

        const float* inputs[] { left.data(), right.data() };
        const auto room = 36 - fifo.numReady();
        const auto written = fifo.write (inputs, 2, wanted);
        ASSERT_EQ (written, std::min (wanted, room));
        nextIn += static_cast<float> (written);

        float* outputs[] { left.data(), right.data() };
        const auto moved = fifo.read (outputs, 2, anyCount (random));

        for (int i = 0; i < moved; ++i, nextOut += 1.0f)
        {
            ASSERT_EQ (left[static_cast<std::size_t> (i)], nextOut);
            ASSERT_EQ (right[static_cast<std::size_t> (i)], -nextOut);
        }
    }
}

TEST (AudioFifoTest, clearAndDiscardEmptyTheRing)
{
    AudioFifo fifo (1, 8);
    const std::vector<float> input { 1, 2, 3, 4, 5 };
    const float* inputs[] { input.data() };
    fifo.write (inputs, 1, 5);
    fifo.clear();
    EXPECT_EQ (fifo.numReady(), 0);
    fifo.write (inputs, 1, 5);
    fifo.discardReady();
    EXPECT_EQ (fifo.numReady(), 0);
    EXPECT_EQ (fifo.write (inputs, 1, 5), 5);

    float first = 0.0f;
    float* outputs[] { &first };
    fifo.read (outputs, 1, 1);
    EXPECT_EQ (first, 1.0f);
}

TEST (AudioFifoTest, resizingGivesAnEmptyRingOfTheNewShape)
{
    AudioFifo fifo (1, 8);
    float sample = 1.0f;
    const float* inputs[] { &sample, &sample };
    fifo.write (inputs, 1, 1);
    fifo.resize (2, 3);
    EXPECT_EQ (fifo.numReady(), 0);
    EXPECT_EQ (fifo.channelCount(), 2);
    EXPECT_EQ (fifo.capacity(), 3);
    EXPECT_EQ (fifo.write (inputs, 2, 1), 1);
}

TEST (AudioFifoTest, handsEverySampleFromOneThreadToAnother)
{
    constexpr int total = 200000;
    AudioFifo fifo (1, 64);

    std::thread producer (
        [&fifo]
        {
            for (int sent = 0; sent < total;)
            {
                std::array<float, 17> block {};

                for (std::size_t i = 0; i < block.size(); ++i)
                    block[i] = static_cast<float> (sent) + static_cast<float> (i);

                const float* inputs[] { block.data() };
                const auto written = fifo.write (inputs, 1, std::min (17, total - sent));
                sent += written;

                if (written == 0)
                    std::this_thread::yield();
            }
        });

    int received = 0;
    int wrong = 0;

    while (received < total)
    {
        std::array<float, 23> block {};
        float* outputs[] { block.data() };
        const auto moved = fifo.read (outputs, 1, 23);

        for (int i = 0; i < moved; ++i)
            wrong += block[static_cast<std::size_t> (i)] == static_cast<float> (received + i) ? 0 : 1;

        received += moved;

        if (moved == 0)
            std::this_thread::yield();
    }

    producer.join();
    EXPECT_EQ (wrong, 0);
    EXPECT_EQ (fifo.numReady(), 0);
}
} // namespace
