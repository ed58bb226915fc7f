#pragma once

#include "dsp/simd/AlignedBuffer.h"
#include "dsp/simd/SampleLine.h"

#include <array>
#include <span>

/** Direct-form FIR of the solo path, for one or two channels that share its taps.

    Unlike in a FirConvolver, new taps act at once on the samples that went in before them. The taps start at zero, so a
    first solo is silent until its filter arrives. Everything is sized by the constructor; all other methods are
    real-time safe and belong to one thread. */
class RingFir
{
public:
    RingFir (int channelCount, int tapCount, int maxBlock);

    /** Fills the past with zeros; the taps stay. */
    void reset() noexcept;

    /** Replaces the taps. A span of another length than the constructor's `tapCount` is ignored. */
    void setTaps (std::span<const double> newTaps) noexcept;

    /** The place for the next `count` input samples of a channel, at most the constructor's `maxBlock`. Each channel
        of the following run() must be filled so. */
    [[nodiscard]] double* nextInput (int channel, int count) noexcept;

    /** Filters the `count` samples that nextInput() took for the first `channelsInUse` channels. */
    void run (double* const* output, int channelsInUse, int count) noexcept;

private:
    int channelCount = 1;
    bool symmetric = true;
    AlignedBuffer tapValues;
    std::array<SampleLine, 2> lines;
};
