#pragma once

#include <array>
#include <cstddef>
#include <span>

namespace orvik
{
/** The filters of up to four analysis bands on two channels, side by side in the lanes of a vector.

    Each band and channel runs a low-pass of Q 0.5411961, one of 1.306563, and two high-passes of the same Qs, all at
    the band's centre: a band-pass of order eight with slopes of fourth order and 6 dB of loss at its centre, which a
    gain of 2 makes good. The output is the power of the channels' sum of squares in single precision, as four sections
    of VariableQ2ndOrder<double> one after the other give it for each channel, but for the rounding of doubles.
    One thread at a time. All calls are real-time safe. */
class BandFilterBank
{
public:
    static constexpr std::size_t bandCount = 4;

    /** Designs the filters and zeroes their histories. Missing centres leave their bands silent.

        @param centresHz  at most `bandCount`, each below half the rate
        @param sampleRate in Hz */
    void prepare (std::span<const float> centresHz, float sampleRate) noexcept;

    /** Zeroes the histories. */
    void clear() noexcept;

    /** Filters `count` frames. A history that is no longer finite afterwards is cleared.

        @param left, right the channels; `right` is null for mono, and its filters then stand still
        @param powers      one row for each band, with room for `count` values */
    void
    process (const float* left, const float* right, const std::array<float*, bandCount>& powers, int count) noexcept;

    static constexpr std::size_t sectionCount = 4;
    static constexpr std::size_t laneCount = 8;

    /** Left channels in the first four lanes, right channels in the others. */
    using Lanes = std::array<double, laneCount>;

    /** One section of every lane, with a numerator of (1, +-2, 1): the sections' b0 go into one gain behind the last,
        and each section's past outputs are the past inputs of the next. */
    struct alignas (64) Section
    {
        Lanes a1 {};
        Lanes a2 {};
        Lanes sum1 {}; ///< of the last two inputs, or their difference in a high-pass
        Lanes y1 {};
        Lanes y2 {};
    };

    struct alignas (64) State
    {
        std::array<Section, sectionCount> sections;
        Lanes x1 {};
        Lanes gain {};
    };

private:
    State state;
};
} // namespace orvik
