#pragma once

#include "dsp/simd/AlignedBuffer.h"

/** Delay of a whole number of samples for one or two channels in double precision.

    Reading and writing are one step: what was written `length` samples ago comes out as the new sample goes in.
    A length of 0 passes samples through. Storage is made once, for the longest delay. Input and output of a block may
    be the same memory. All methods but the constructor are real-time safe and belong to one thread. */
class DelayRing
{
public:
    DelayRing (int channelCount, int maxLength);

    /** Sets the delay in samples, at most the constructor's, and fills the ring with zeros. */
    void setLength (int samples) noexcept;
    [[nodiscard]] int length() const noexcept { return delay; }

    /** Fills the ring with zeros. */
    void clear() noexcept;

    /** One sample of the first channel. */
    [[nodiscard]] double process (double input) noexcept;

    /** One sample of both channels, in place. The ring must have two. */
    void process (double& left, double& right) noexcept;

    /** `count` samples of the first channel. A second channel keeps its samples but shares the advance. */
    void processSingle (const double* input, double* output, int count) noexcept;
    void processSingle (const float* input, double* output, int count) noexcept;

    /** `count` samples of both channels. The ring must have two. */
    void processStereo (const double* left, const double* right, double* outLeft, double* outRight, int count) noexcept;
    void processStereo (const float* left, const float* right, double* outLeft, double* outRight, int count) noexcept;

private:
    template <typename Sample>
    void processBlock (const Sample* const* input, double* const* output, int channelsInUse, int count) noexcept;
    [[nodiscard]] double* channel (int which) noexcept { return storage.data() + which * maxDelay; }
    void advance() noexcept;

    int channels = 1;
    int maxDelay = 0;
    int delay = 0;
    int index = 0;
    AlignedBuffer storage;
};
