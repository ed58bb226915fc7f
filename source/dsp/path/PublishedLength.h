#pragma once

#include <atomic>
#include <optional>

/** A length that any thread sets and the audio thread takes over at the start of its next block.

    Setting the same length again counts as news too, since whoever takes it over clears a line with it. Real-time safe.
 */
class PublishedLength
{
public:
    /** Any thread. @param samples 0 or more */
    void publish (int samples) noexcept
    {
        auto last = published.load (std::memory_order_relaxed);

        while (! published.compare_exchange_weak (last, { samples, last.generation + 1 }, std::memory_order_relaxed))
        {
        }
    }

    /** What was published last. Any thread. */
    [[nodiscard]] int latest() const noexcept { return published.load (std::memory_order_relaxed).samples; }

    /** The length, if one was published since the last call. Audio thread. */
    [[nodiscard]] std::optional<int> takeNew() noexcept
    {
        const auto current = published.load (std::memory_order_relaxed);

        if (current.generation == takenGeneration)
            return std::nullopt;

        takenGeneration = current.generation;
        return current.samples;
    }

private:
    struct Value
    {
        int samples = 0;
        unsigned generation = 0;
    };

    std::atomic<Value> published { Value {} };
    unsigned takenGeneration = 0;
};
