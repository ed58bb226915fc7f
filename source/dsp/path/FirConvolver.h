#pragma once

#include "dsp/simd/AlignedBuffer.h"
#include "dsp/simd/SampleLine.h"

#include <array>
#include <span>

/** Runs one FIR over blocks of one or two channels that share its taps.

    What is heard is overlap-add block convolution: when taps are replaced between two blocks, the new ones see only
    what comes after, and the tail of the old ones over what came before rings out into the following blocks. While
    taps stay, the convolution runs in direct form over past and block, so that the output does not depend on how the
    signal is cut into blocks. Channels that a run leaves out keep their past and tail for the next run that has them.

    Everything is sized by the constructor; all other methods are real-time safe and belong to one thread. */
class FirConvolver
{
public:
    FirConvolver (int channelCount, int maxTapCount, int maxBlock);

    /** Sets the length; taps, past and tails become zero. A filter of 0 taps gives silence. */
    void setTapCount (int count) noexcept;
    [[nodiscard]] int tapCount() const noexcept { return taps; }

    /** Fills past and tails with zeros; the taps stay. */
    void reset() noexcept;

    /** Replaces the taps from the next sample on. Equal taps change nothing; a span of another length than tapCount()
        is ignored. Costs one convolution over tapCount() - 1 samples. */
    void setTaps (std::span<const double> newTaps) noexcept;

    /** The place for the next `count` input samples of a channel, at most the constructor's `maxBlock`. Each channel
        of the following run() must be filled so. */
    [[nodiscard]] double* nextInput (int channel, int count) noexcept { return line (channel).append (count); }

    /** Filters the `count` samples that nextInput() took for the first `channelsInUse` channels. */
    void run (double* const* output, int channelsInUse, int count) noexcept;

    /** Copies `count` samples in and filters them. Input and output may be the same memory. */
    void run (const double* const* input, double* const* output, int channelsInUse, int count) noexcept;

private:
    struct Channel
    {
        Channel (int maxTapCount, int maxBlock);

        SampleLine line;
        AlignedBuffer tail;
        int tailStart = 0;
        int tailCount = 0;
    };

    [[nodiscard]] SampleLine& line (int index) noexcept { return channels[static_cast<std::size_t> (index)].line; }
    void turnPastIntoTail() noexcept;
    static void addTail (Channel& channel, double* output, int count) noexcept;

    int channelCount = 1;
    int taps = 0;
    bool symmetric = true;
    AlignedBuffer tapValues;
    AlignedBuffer tailScratch;
    std::array<Channel, 2> channels;
};
