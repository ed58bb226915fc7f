#pragma once

#include <atomic>
#include <vector>

/** Single-producer, single-consumer ring of audio samples, one or two channels.

    One thread writes, one thread reads; neither ever waits. Samples lie planar in single precision. The writer stores
    samples first and then publishes its index with release order; the reader takes that index with acquire order, and
    the same the other way round, so that a sample is never read before it is whole nor overwritten before it is read.
    One place always stays free: a ring of `capacity` holds `capacity` - 1 samples. */
class AudioFifo
{
public:
    AudioFifo (int channelCount, int capacity);

    AudioFifo (const AudioFifo&) = delete;
    AudioFifo& operator= (const AudioFifo&) = delete;

    /** Gives the ring a new shape and empties it. Allocates; only while neither side is at work. */
    void resize (int channelCount, int capacity);

    /** Empties the ring. Only while neither side is at work. */
    void clear() noexcept;

    [[nodiscard]] int channelCount() const noexcept { return channels; }
    [[nodiscard]] int capacity() const noexcept { return size; }

    /** Samples per channel that wait to be read. Either side; the other side may make it grow or shrink meanwhile.
        Real-time safe. */
    [[nodiscard]] int numReady() const noexcept;

    /** Copies up to `count` samples of each channel into the ring, and returns how many: at most
        `capacity` - 1 - numReady(), and 0 when `inputChannelCount` is not the ring's. Producer. Real-time safe. */
    int write (const float* const* input, int inputChannelCount, int count) noexcept;

    /** Moves up to `count` samples of each channel out of the ring, and returns how many; 0 when
        `outputChannelCount` is not the ring's. Consumer. Real-time safe. */
    int read (float* const* output, int outputChannelCount, int count) noexcept;

    /** Drops everything that waits. Consumer. Real-time safe. */
    void discardReady() noexcept;

private:
    [[nodiscard]] float* channel (int index) noexcept;
    [[nodiscard]] int distance (int from, int to) const noexcept;

    int channels = 0;
    int size = 0;
    std::vector<float> samples;
    std::atomic<int> readIndex { 0 };
    std::atomic<int> writeIndex { 0 };
};
