#include "core/references/TrackAudition.h"

#include <algorithm>
#include <thread>

namespace
{
void copy (const TrackSamples& track, int position, float* const* channels, int channelCount, int count) noexcept
{
    const auto* left = track.left + position;
    const auto* right = track.right != nullptr ? track.right + position : nullptr;

    if (channelCount == 2 || right == nullptr)
        std::copy_n (left, count, channels[0]);
    else
        for (int i = 0; i < count; ++i)
            channels[0][i] = (left[i] + right[i]) * 0.5f;

    if (channelCount == 2 && right != nullptr)
        std::copy_n (right, count, channels[1]);
}
} // namespace

void TrackAudition::waitUntilUnused() const noexcept
{
    while (inUse)
        std::this_thread::yield();
}

bool TrackAudition::play (float* const* channels, int channelCount, int sampleCount) noexcept
{
    if (! isPlaying.load (std::memory_order_relaxed))
        return false;

    // Both in the one order that all threads agree on: whoever replaces the track and then finds the mark clear knows
    // that a later block sees the new one.
    inUse = true;
    auto* const track = selected.load();
    const auto isHeard = track != nullptr && track->loaded.load (std::memory_order_acquire);

    if (isHeard)
    {
        const auto samples = track->samples();
        auto position = track->playPosition.load (std::memory_order_relaxed);
        const auto isAtEnd = position < 0 || position >= samples.count - sampleCount;

        if (! isAtEnd)
            copy (samples, position, channels, channelCount, sampleCount);

        // Where the user has gone meanwhile is where the next block begins.
        track->playPosition.compare_exchange_strong (
            position, isAtEnd ? 0 : position + sampleCount, std::memory_order_relaxed);
    }

    inUse.store (false, std::memory_order_release);
    return isHeard;
}
