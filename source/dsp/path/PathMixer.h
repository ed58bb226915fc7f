#pragma once

#include "dsp/path/DelayRing.h"
#include "dsp/simd/AlignedBuffer.h"

/** The filtered results of a stereo block's paths, for PathMixer::mix. A path that did not run is not read. */
struct PathResults
{
    const double* stereoLeft = nullptr;
    const double* stereoRight = nullptr;
    const double* mid = nullptr;
    const double* side = nullptr;
};

/** Splits a stereo block into mid and side, and joins the results of the paths into left and right.

    Mid is (L + R) / 2 and side (R - L) / 2, so that left is mid - side and right mid + side; in double precision, so
    that flat mid and side filters give the input back to the bit. Each path holds the dry signal with its bands'
   effect; when both run, the dry signal, delayed like the paths, is taken out of the stereo path, which then adds only
   what it changed. That delay moves only while both paths run.

    All methods but the constructor are real-time safe and belong to the audio thread. */
class PathMixer
{
public:
    PathMixer();

    /** Longest block, in samples. */
    static constexpr int maxBlock = 8192 + 8;

    /** Sets the dry signal's delay, the paths' latency in samples, and fills it with zeros. */
    void setLatency (int samples) noexcept;

    /** Makes mid() and side() of `count` samples, and midLow() and sideLow() of `reducedCount`. */
    void split (const float* left,
                const float* right,
                int count,
                const double* lowLeft,
                const double* lowRight,
                int reducedCount) noexcept;

    [[nodiscard]] const double* mid() const noexcept { return midBlock.data(); }
    [[nodiscard]] const double* side() const noexcept { return sideBlock.data(); }
    [[nodiscard]] const double* midLow() const noexcept { return midLowBlock.data(); }
    [[nodiscard]] const double* sideLow() const noexcept { return sideLowBlock.data(); }

    /** Writes `count` samples to the two outputs. `left` and `right` are the unfiltered input, which the outputs must
        not overlap. With no path the outputs become zero. */
    void mix (const float* left,
              const float* right,
              const PathResults& results,
              int count,
              bool useStereo,
              bool useMidSide,
              float* outLeft,
              float* outRight) noexcept;

private:
    DelayRing dryDelay;
    AlignedBuffer midBlock { maxBlock };
    AlignedBuffer sideBlock { maxBlock };
    AlignedBuffer midLowBlock { maxBlock };
    AlignedBuffer sideLowBlock { maxBlock };
    AlignedBuffer dryLeft { maxBlock };
    AlignedBuffer dryRight { maxBlock };
};
