#include "dsp/threads/AudioFifo.h"

#include <algorithm>
#include <cstddef>

AudioFifo::AudioFifo (int channelCount, int capacity)
{
    resize (channelCount, capacity);
}

void AudioFifo::resize (int channelCount, int capacity)
{
    channels = std::clamp (channelCount, 1, 2);
    size = std::max (capacity, 1);
    samples.assign (static_cast<std::size_t> (channels) * static_cast<std::size_t> (size), 0.0f);
    clear();
}

void AudioFifo::clear() noexcept
{
    readIndex.store (0, std::memory_order_relaxed);
    writeIndex.store (0, std::memory_order_release);
}

int AudioFifo::numReady() const noexcept
{
    return distance (readIndex.load (std::memory_order_acquire), writeIndex.load (std::memory_order_acquire));
}

int AudioFifo::write (const float* const* input, int inputChannelCount, int count) noexcept
{
    if (inputChannelCount != channels)
        return 0;

    const auto start = writeIndex.load (std::memory_order_relaxed);
    const auto room = size - 1 - distance (readIndex.load (std::memory_order_acquire), start);
    const auto moved = std::clamp (count, 0, room);
    const auto firstSpan = std::min (moved, size - start);

    for (int c = 0; c < channels; ++c)
    {
        std::copy_n (input[c], firstSpan, channel (c) + start);
        std::copy_n (input[c] + firstSpan, moved - firstSpan, channel (c));
    }

    const auto end = start + moved;
    writeIndex.store (end < size ? end : end - size, std::memory_order_release);
    return moved;
}

int AudioFifo::read (float* const* output, int outputChannelCount, int count) noexcept
{
    if (outputChannelCount != channels)
        return 0;

    const auto start = readIndex.load (std::memory_order_relaxed);
    const auto ready = distance (start, writeIndex.load (std::memory_order_acquire));
    const auto moved = std::clamp (count, 0, ready);
    const auto firstSpan = std::min (moved, size - start);

    for (int c = 0; c < channels; ++c)
    {
        std::copy_n (channel (c) + start, firstSpan, output[c]);
        std::copy_n (channel (c), moved - firstSpan, output[c] + firstSpan);
    }

    const auto end = start + moved;
    readIndex.store (end < size ? end : end - size, std::memory_order_release);
    return moved;
}

void AudioFifo::discardReady() noexcept
{
    readIndex.store (writeIndex.load (std::memory_order_acquire), std::memory_order_release);
}

float* AudioFifo::channel (int index) noexcept
{
    return samples.data() + static_cast<std::ptrdiff_t> (index) * size;
}

int AudioFifo::distance (int from, int to) const noexcept
{
    const auto difference = to - from;
    return difference < 0 ? difference + size : difference;
}
