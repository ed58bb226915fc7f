#pragma once

#include <array>
#include <cstddef>

/** Coefficients of one rate conversion filter, b[0..order] and a[0..order] of a single direct-form section. */
template <int order>
struct RateFilterSection
{
    std::array<double, static_cast<std::size_t> (order) + 1> numerator;
    std::array<double, static_cast<std::size_t> (order) + 1> denominator;
};

/** The section for factor 4: 0.01 dB flat up to 0.1 of the rate, 120 dB down from 0.125. */
extern const RateFilterSection<24> rateFilterByFour;

/** The section for factor 8: 0.18 dB flat up to 0.035 of the rate, 120 dB down from 0.065, 1.006 at 0 Hz. */
extern const RateFilterSection<16> rateFilterByEight;

/** A section b(z) / a(z) in the form in which it runs, where the recursion steps at the reduced rate.

    With c(z) the product of a(w z) over the factor's roots of unity w other than 1, a(z) c(z) holds powers of z^factor
    alone, so b(z) / a(z) = b(z) c(z) / d(z^factor) is a FIR at the host's rate and a recursion at the reduced rate. It
    is the same transfer function, and none of it is split into sections; the product is formed at compile time in twice
    the precision of a double. Decimation needs the FIR's kept samples alone, and in interpolation all but every
   factor-th of its inputs are zero.

    The reason is round-off. The section's own poles crowd so closely that the direct forms lose up to two thirds of a
    double's digits; raised to the factor-th power they stand apart. Error in dB of full scale against extended
    precision, for a 1 kHz sine of amplitude 1 and for noise of 0.3 rms, as benchmarks/RateFilterRoundOff.cpp prints it:

        order  direction      signal   form I  form II  transposed  this form
           24  decimation     sine       -127     -176        -125       -205
           24  decimation     noise      -143     -142        -140       -218
           24  interpolation  sine       -128     -172        -126       -254
           24  interpolation  noise      -137     -136        -136       -213
           16  decimation     sine        -81      -94         -80       -282
           16  decimation     noise       -99     -100         -97       -294
           16  interpolation  sine        -82      -94         -80       -313
           16  interpolation  noise       -91      -90         -90       -286 */
struct RateFilterTable
{
    static constexpr int maxOrder = 20;
    static constexpr int maxFeedForwardCount = 128;
    static constexpr int maxBranchTapCount = 23;
    static constexpr int branchWidth = 8;
    static constexpr int framesAtOnce = 4;

    /** Results that the recursions look back: coefficients that vanish in the rounding are left out. */
    static constexpr int orderByFour = 20;
    static constexpr int orderByEight = 16;

    int factor = 0;
    int order = 0;

    /** Values of `decimating` in use, a multiple of 8. */
    int feedForwardCount = 0;

    /** Input samples per output of an interpolation. */
    int branchTapCount = 0;

    /** d(z)'s coefficient of the result k steps back at framesAtOnce + k, and zeros on either side, so that
        framesAtOnce values can be loaded from k = 1 - framesAtOnce on. The one at k = 0 counts as 0 here. */
    std::array<double, framesAtOnce + maxOrder + framesAtOnce> recursive {};

    /** The same for two interleaved channels: each coefficient twice. */
    alignas (64) std::array<double, 2 * (framesAtOnce + maxOrder + framesAtOnce)> recursiveInPairs {};

    /** The FIR for decimation, oldest sample's coefficient first. */
    alignas (64) std::array<double, maxFeedForwardCount> decimating {};

    /** The FIR for interpolation, times the factor that makes up for the zeros between samples: the coefficients of
        the factor phases for input sample `i` before the newest start at i * branchWidth, repeated to fill the width.
     */
    alignas (64) std::array<double, maxBranchTapCount * branchWidth> interpolating {};
};

extern const RateFilterTable rateTableByFour;
extern const RateFilterTable rateTableByEight;
