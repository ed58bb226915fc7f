#pragma once

#include "dsp/filters/BiQuad.h"

namespace orvik
{
/** The two K-weighting filters of ITU-R BS.1770 for two channels, a high shelf and then a high-pass.

    The coefficients follow the analogue prototype, mapped to the actual rate, and are rounded to single precision.
    One thread at a time; everything is real-time safe. Denormals are the caller's affair. */
class KWeighting
{
public:
    /** Computes the coefficients of all four sections. The histories stay. @param sampleRate in Hz, above 0 */
    void prepare (double sampleRate) noexcept;

    /** Zeroes the histories. */
    void clear() noexcept;

    [[nodiscard]] float stereoPower (float left, float right) noexcept;
    [[nodiscard]] float monoPower (float sample) noexcept;

    /** Weights `count` frames and writes their powers: what `stereoPower`, or `monoPower` where `right` is null,
        returns one by one, to the bit. A history that is no longer finite after the block is cleared. */
    void powers (const float* left, const float* right, float* output, int count) noexcept;

    BiQuad<float> shelfLeft;
    BiQuad<float> shelfRight;
    BiQuad<float> highPassLeft;
    BiQuad<float> highPassRight;
};

/** A signal to be weighted: two channels, or one where `right` is null, with room for the powers. */
struct WeightedSignal
{
    KWeighting& weighting;
    const float* left;
    const float* right;
    float* powers;
};

/** Weights two signals, both stereo or both mono, side by side in the lanes of one vector, for little more than the
    price of one: the recursion's latency, not its arithmetic, is what a meter costs. Each gets what
    `KWeighting::powers` gives, to the bit. Real-time safe. */
void kWeightedPowers (const WeightedSignal& first, const WeightedSignal& second, int count) noexcept;
} // namespace orvik
