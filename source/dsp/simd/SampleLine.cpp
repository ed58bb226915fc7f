#include "dsp/simd/SampleLine.h"

#include <algorithm>

namespace
{
// The line walks over at least this many samples before its past is moved back: moving costs little then, and the part
// of the storage in use stays small enough for the first-level cache.
constexpr int walkLength = 1024;

constexpr int doublesPerCacheLine = 8;

constexpr int roundedUp (int count) noexcept
{
    return (count + doublesPerCacheLine - 1) / doublesPerCacheLine * doublesPerCacheLine;
}
} // namespace

SampleLine::SampleLine (int maxPast, int maxBlock)
    : front (roundedUp (std::max (maxPast, 0)) + readableAround),
      blockCapacity (std::max (maxBlock, walkLength)),
      storage (front + blockCapacity + readableAround)
{
    clear();
}

void SampleLine::setPastLength (int samples) noexcept
{
    past = std::clamp (samples, 0, front - readableAround);
    clear();
}

void SampleLine::clear() noexcept
{
    blockStart = front;
    end = front;
    std::fill_n (storage.data(), front, 0.0);
}

double* SampleLine::append (int count) noexcept
{
    count = std::clamp (count, 0, blockCapacity);

    if (end + count > front + std::max (count, walkLength))
    {
        std::copy_n (storage.data() + end - past, past, storage.data() + front - past);
        end = front;
    }

    blockStart = end;
    end += count;
    return storage.data() + blockStart;
}
