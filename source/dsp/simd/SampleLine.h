#pragma once

#include "dsp/simd/AlignedBuffer.h"

/** The newest samples of one channel, with as many earlier ones before them as a filter looks back.

    Samples lie in one piece, so that a filter reads its past without wrapping. append() makes room for a block behind
    the past; only when the storage's end is reached is the past moved to the front again. All methods but the
    constructor are real-time safe and belong to one thread. */
class SampleLine
{
public:
    /** @param maxPast   the longest past that setPastLength may ask for
        @param maxBlock  the longest block that append may be asked for */
    SampleLine (int maxPast, int maxBlock);

    /** Sets how many samples of the past are kept, and clears them. */
    void setPastLength (int samples) noexcept;
    [[nodiscard]] int pastLength() const noexcept { return past; }

    /** Fills the past with zeros. */
    void clear() noexcept;

    /** Returns the place for the next `count` samples. The past lies before it, down to index -pastLength(), and at
        least `readableAround` doubles behind the block and before the past may be read, whatever they hold. */
    [[nodiscard]] double* append (int count) noexcept;

    /** The samples that the last append() gave, and before them the past. */
    [[nodiscard]] const double* newest() const noexcept { return storage.data() + blockStart; }

    /** Doubles on either side of block and past that vector code may load. */
    static constexpr int readableAround = 64;

private:
    int front = 0;
    int blockCapacity = 0;
    int past = 0;
    int blockStart = 0;
    int end = 0;
    AlignedBuffer storage;
};
