#pragma once

#include "dsp/rate/RateFilterSet.h"
#include "dsp/simd/AlignedBuffer.h"

/** Decimation by 4 or 8, by host rate, and interpolation back by the same factor.

    44.1, 48, 88.2 and 96 kHz have the factor 4 and the filter of order 24, 176.4 and 192 kHz the factor 8 and order 16.
    Any other rate has no filter: the one of the last listed rate stays. As long as there is none, conversion is skipped
    and the outputs hold zeros. Filters keep their state from block to block until buildFilters makes it zero.

    A block has at most `maxBlock` samples at the host's rate, and a multiple of decimationFactor(); what goes beyond is
    left out. Everything is allocated by the constructor; all other methods are real-time safe. One thread at a time. */
class RateConverter
{
public:
    RateConverter();

    static constexpr int maxBlock = 8192;

    /** Host rate in Hz, for the next buildFilters(). */
    void setSampleRate (double rateHz) noexcept { sampleRate = rateHz; }

    /** Takes the filters of the sample rate, with zero state; nothing happens for a rate that has none. */
    void buildFilters() noexcept;

    /** The factor of the filters in use, or 0 while there are none. */
    [[nodiscard]] int decimationFactor() const noexcept;

    /** Decimates `count` samples into outputLeft() and outputRight(). */
    void decimateStereo (const float* left, const float* right, int count) noexcept;

    /** Decimates `count` samples into outputLeft(). */
    void decimateSingle (const float* input, int count) noexcept;

    /** Interpolates `reducedCount` samples at the reduced rate into interpolatedLeft() and interpolatedRight(). */
    void interpolateStereo (const double* left, const double* right, int reducedCount) noexcept;

    /** Interpolates `reducedCount` samples at the reduced rate into interpolatedLeft(). */
    void interpolateSingle (const double* input, int reducedCount) noexcept;

    [[nodiscard]] const double* outputLeft() const noexcept { return output[0].data(); }
    [[nodiscard]] const double* outputRight() const noexcept { return output[1].data(); }
    [[nodiscard]] const double* interpolatedLeft() const noexcept { return interpolated[0].data(); }
    [[nodiscard]] const double* interpolatedRight() const noexcept { return interpolated[1].data(); }

private:
    void decimate (const float* const* input, int channelCount, int count) noexcept;
    void interpolate (const double* const* input, int channelCount, int reducedCount) noexcept;

    double sampleRate = 0.0;
    RateFilterSet filters { maxBlock };
    AlignedBuffer output[2] { AlignedBuffer (maxBlock), AlignedBuffer (maxBlock) };
    AlignedBuffer interpolated[2] { AlignedBuffer (maxBlock), AlignedBuffer (maxBlock) };
};
