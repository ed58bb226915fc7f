#pragma once

#include "dsp/design/FirLengths.h"
#include "dsp/path/DelayRing.h"
#include "dsp/path/FirConvolver.h"
#include "dsp/path/RingFir.h"
#include "dsp/rate/RateConverter.h"
#include "dsp/simd/AlignedBuffer.h"

#include <span>

/** The taps that one BlockPath runs. Each set must have the length that configureLengths() gave its filter (the solo
    set always `soloTapCount`); a set of another length leaves its filter as it is. */
struct PathTaps
{
    std::span<const double> low;
    std::span<const double> linearHigh;
    std::span<const double> minimum;
    std::span<const double> solo;
};

/** The audio side of one block processor: runs blocks of one or two channels through its filters.

    The low bands act at the reduced rate, and only what they change is interpolated back and added to the input, which
    has waited in a pure delay: with flat low taps the correction is exactly 0, and the rate conversion's own filters
    never touch the signal itself. The high bands are one FIR at the host's rate on the sum. While a band is soloed, the
    solo filter alone runs, on the input.

    Everything is sized for the largest lengths and blocks by the constructor; all other methods are real-time safe and
    belong to the audio thread. Tap lengths of zero samples, as before the first configureLengths(), give silence. */
class BlockPath
{
public:
    BlockPath();

    static constexpr int maxBlock = RateConverter::maxBlock;

    /** Sets filter and delay lengths. All pasts, tails and delays become zero, and all taps but those of the solo
        filter, so that new ones must follow through setTaps(). */
    void configureLengths (const FirLengths& lengths) noexcept;

    /** Takes the host's rate in Hz, builds the rate conversion's filters with zero state and calls resetSolo(). */
    void prepare (double sampleRateHz) noexcept;

    /** Fills the solo filter's past with zeros. */
    void resetSolo() noexcept;

    /** Hands new taps to the filters between two blocks, without a fade. */
    void setTaps (const PathTaps& taps) noexcept;

    /** Filters `count` samples, at most maxBlock and a multiple of the decimation factor; the low-rate inputs are the
        same samples decimated. Above 96 kHz the linear filter runs whatever `phase` says. */
    void processStereo (const float* left,
                        const float* right,
                        const double* lowLeft,
                        const double* lowRight,
                        int count,
                        bool soloActive,
                        FilterPhase phase) noexcept;

    /** The same for one channel, which uses the left side's filters and delivers in outputLeft(). */
    void processSingle (const float* input, const double* low, int count, bool soloActive, FilterPhase phase) noexcept;
    void processSingle (const double* input, const double* low, int count, bool soloActive, FilterPhase phase) noexcept;

    [[nodiscard]] const double* outputLeft() const noexcept { return output[0].data(); }
    [[nodiscard]] const double* outputRight() const noexcept { return output[1].data(); }

private:
    template <typename Sample>
    void process (const Sample* const* input,
                  const double* const* low,
                  int channelCount,
                  int count,
                  bool soloActive,
                  FilterPhase phase) noexcept;
    template <typename Sample>
    void runSolo (const Sample* const* input, int channelCount, int count) noexcept;
    void makeCorrection (const double* const* low, int channelCount, int reducedCount) noexcept;
    template <typename Sample>
    void runHigh (FirConvolver& fir, const Sample* const* input, int channelCount, int count) noexcept;

    double sampleRate = 0.0;
    FirConvolver lowFir;
    FirConvolver linearHighFir;
    FirConvolver minimumHighFir;
    RingFir soloFir;
    DelayRing dryDelay;
    DelayRing lowDelay;
    RateConverter rateConverter;
    AlignedBuffer lowCorrection[2];
    AlignedBuffer delayedLow[2];
    AlignedBuffer output[2];
};
