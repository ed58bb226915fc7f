#pragma once

#include "dsp/rate/RateFilterTable.h"
#include "dsp/rate/RateRecursion.h"
#include "dsp/simd/AlignedBuffer.h"
#include "dsp/simd/SampleLine.h"

#include <array>

/** State of one rate conversion filter over one channel. */
struct IirChannel
{
    explicit IirChannel (int maxBlock) : line (RateFilterTable::maxFeedForwardCount, maxBlock) {}

    /** The FIR's input at the host's rate: what comes in, or each reduced sample held for factor samples. */
    SampleLine line;

    RecursionState results {};
};

/** The four filters of a RateConverter: channels 0 and 1 decimate left and right, 2 and 3 interpolate left and right.
    Each keeps its state from block to block, and the state of channels that a call leaves out stays as it is.
    All methods but the constructor are real-time safe and belong to one thread. */
class RateFilterSet
{
public:
    explicit RateFilterSet (int maxBlock);

    /** Chooses the filter and zeroes all state. */
    void prepare (const RateFilterTable& newTable) noexcept;

    /** Null until prepared. */
    [[nodiscard]] const RateFilterTable* table() const noexcept { return filter; }

    /** `count`, a multiple of the factor, samples of each channel; the first of every factor samples is kept. */
    void decimate (const float* const* input, double* const* output, int channelCount, int count) noexcept;

    /** factor * `reducedCount` samples of each channel. */
    void interpolate (const double* const* input, double* const* output, int channelCount, int reducedCount) noexcept;

private:
    void runReduced (int firstChannel, int channelCount, int frameCount) noexcept;

    const RateFilterTable* filter = nullptr;
    std::array<IirChannel, 4> channels;

    /** Interleaved frames at the reduced rate, for the recursion. */
    AlignedBuffer reducedFrames;
};
