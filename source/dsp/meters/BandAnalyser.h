#pragma once

#include "dsp/meters/BandFilterBank.h"
#include "dsp/meters/LUFSProcessor.h"
#include "dsp/rate/ReducedRate.h"

#include <array>
#include <atomic>
#include <cstddef>

/** How many bands the analysis knows, and where they lie. */
constexpr std::size_t analysisBandCount = 10;
constexpr std::array<float, analysisBandCount> analysisCentresHz { 320.0f,  640.0f,  1000.0f,  2000.0f,  3000.0f,
                                                                   4000.0f, 6000.0f, 10000.0f, 15000.0f, 18000.0f };

/** Index of the first centre above a frequency. */
constexpr std::size_t firstBandAbove (double limitHz) noexcept
{
    std::size_t band = 0;

    while (band < analysisBandCount && ! (static_cast<double> (analysisCentresHz[band]) > limitHz))
        ++band;

    return band;
}

/** The bands before this one are measured at the reduced rate, the others at the full rate. */
constexpr std::size_t lowBandCount = firstBandAbove (lowPathLimitHz);

/** The level that everything starts from after a reset. */
constexpr float resetLevelDb = -70.0f;

/** Measures the level of ten fixed bands, each through a band-pass and a gated loudness meter without K-weighting.

    The low bands take the signal at the reduced rate, the high bands at the full rate. The two halves share nothing,
    so that two threads may run one each. Levels may be read from any thread.
    Besides `prepareBands` every call is real-time safe and flushes denormals for its length. */
class BandAnalyser
{
public:
    /** Which returns of a meter become its band's level. A meter returns minus infinity until something has passed its
        gate: while music runs the old level is better than none, but for a whole recording it is the result. */
    enum class Storing
    {
        readingsOnly,
        everyReturn
    };

    explicit BandAnalyser (Storing rule = Storing::readingsOnly) noexcept;

    /** Designs the filters, prepares the meters and resets both. The levels stay. Allocates. Neither half may run.
        Rates in Hz. */
    void prepareBands (double lowRate, double fullRate);

    /** Resets all ten meters to -70 dB; filters and levels stay. */
    void resetBands() noexcept;

    /** `resetBands` for the half that one thread runs. */
    void resetLowBands() noexcept;
    void resetHighBands() noexcept;

    /** Sets every level. Any thread. */
    void fillLevels (float levelDb) noexcept;

    /** Measures `count` frames of the signal at the reduced or at the full rate, any count. `right` is null for mono.
     */
    void processLow (const float* left, const float* right, int count) noexcept;
    void processHigh (const float* left, const float* right, int count) noexcept;

    /** Levels in dB on the loudness scale. Relaxed: a reader may see bands of two passes. The last is measured like the
        others; who wants it extrapolated writes over it. */
    std::array<std::atomic<float>, analysisBandCount> bandLevels;

private:
    void resetMeters (std::size_t first, std::size_t end) noexcept;
    void process (orvik::BandFilterBank& bank,
                  std::size_t firstBand,
                  std::size_t endBand,
                  const float* left,
                  const float* right,
                  int count) noexcept;

    Storing storing;
    orvik::BandFilterBank lowBank;
    std::array<orvik::BandFilterBank, 2> highBanks;
    std::array<orvik::LUFSProcessor<3000>, analysisBandCount> bandLoudness;
};
