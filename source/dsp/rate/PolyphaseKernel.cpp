#include "dsp/rate/PolyphaseKernel.h"

#include "dsp/rate/RateFilterTable.h"
#include "dsp/simd/SimdLanes.h"
#include "dsp/simd/SimdLevel.h"

#include <algorithm>

namespace
{
/** Sums of all channels that run at once: enough independent ones to hide the latency of an addition. */
template <int channelCount>
constexpr int sumsAtOnce = 8 / channelCount;

/** Adds up the lanes of a vector: always the halves, then their halves. */
template <int lanes>
SOLVANE_ALWAYS_INLINE double total (const typename SimdLanes<lanes>::Vector& vector) noexcept
{
    double values[extent (lanes)];
    lanesAt<lanes> (values) = vector;

    for (int width = lanes / 2; width > 0; width /= 2)
        for (int i = 0; i < width; ++i)
            values[i] += values[i + width];

    return values[0];
}

/** Writes the totals of as many vectors as they have lanes, with the additions of total() in each. */
template <int lanes>
SOLVANE_ALWAYS_INLINE void storeTotals (const typename SimdLanes<lanes>::Vector* s, double* output) noexcept
{
    using Vector = typename SimdLanes<lanes>::Vector;

    if constexpr (lanes == 2)
    {
        lanesAt<2> (output) = __builtin_shufflevector (s[0], s[1], 0, 2) + __builtin_shufflevector (s[0], s[1], 1, 3);
    }
    else if constexpr (lanes == 4)
    {
        const Vector even =
            __builtin_shufflevector (s[0], s[2], 0, 1, 4, 5) + __builtin_shufflevector (s[0], s[2], 2, 3, 6, 7);
        const Vector odd =
            __builtin_shufflevector (s[1], s[3], 0, 1, 4, 5) + __builtin_shufflevector (s[1], s[3], 2, 3, 6, 7);
        lanesAt<4> (output) =
            __builtin_shufflevector (even, odd, 0, 4, 2, 6) + __builtin_shufflevector (even, odd, 1, 5, 3, 7);
    }
    else
    {
        Vector halves[4];

        for (int i = 0; i < 4; ++i)
            halves[i] = __builtin_shufflevector (s[i], s[i + 4], 0, 1, 2, 3, 8, 9, 10, 11)
                        + __builtin_shufflevector (s[i], s[i + 4], 4, 5, 6, 7, 12, 13, 14, 15);

        Vector quarters[2];

        for (int i = 0; i < 2; ++i)
            quarters[i] = __builtin_shufflevector (halves[i], halves[i + 2], 0, 1, 8, 9, 4, 5, 12, 13)
                          + __builtin_shufflevector (halves[i], halves[i + 2], 2, 3, 10, 11, 6, 7, 14, 15);

        lanesAt<8> (output) = __builtin_shufflevector (quarters[0], quarters[1], 0, 8, 2, 10, 4, 12, 6, 14)
                              + __builtin_shufflevector (quarters[0], quarters[1], 1, 9, 3, 11, 5, 13, 7, 15);
    }
}

/** The products of neighbouring outputs, in as many sums for each. */
template <int lanes, int factor, int channelCount, int outputCount>
SOLVANE_ALWAYS_INLINE void addProducts (const RateFilterTable& table,
                                        const double* const* oldest,
                                        typename SimdLanes<lanes>::Vector* sums) noexcept
{
    using Vector = typename SimdLanes<lanes>::Vector;
    constexpr auto step = std::max (lanes, factor);
    constexpr auto outputsPerStep = step / factor;

    // Two lanes come with too few registers for a window, and with loads that seldom cross a cache line.
    if constexpr (lanes == 2)
    {
        for (int k = 0; k < table.feedForwardCount; k += lanes)
        {
            const Vector coefficients = lanesAt<lanes> (table.decimating.data() + k);

            for (int i = 0; i < outputCount; ++i)
                for (int c = 0; c < channelCount; ++c)
                    sums[i * channelCount + c] += coefficients * lanesAt<lanes> (oldest[c] + i * factor + k);
        }

        return;
    }

    for (int part = 0; part < step; part += lanes)
    {
        // A step on brings each output to the input of the next ones: what they loaded moves down to it.
        Vector window[extent (outputCount)][extent (channelCount)];

        for (int i = 0; i < outputCount - outputsPerStep; ++i)
            for (int c = 0; c < channelCount; ++c)
                window[i + outputsPerStep][c] = lanesAt<lanes> (oldest[c] + part + i * factor);

        for (int k = part; k < table.feedForwardCount; k += step)
        {
            const Vector coefficients = lanesAt<lanes> (table.decimating.data() + k);

            for (int c = 0; c < channelCount; ++c)
            {
                for (int i = 0; i < outputCount - outputsPerStep; ++i)
                    window[i][c] = window[i + outputsPerStep][c];

                for (int i = std::max (outputCount - outputsPerStep, 0); i < outputCount; ++i)
                    window[i][c] = lanesAt<lanes> (oldest[c] + i * factor + k);

                for (int i = 0; i < outputCount; ++i)
                    sums[i * channelCount + c] += coefficients * window[i][c];
            }
        }
    }
}

/** `outputCount` neighbouring outputs: a dot product each, whose coefficients are loaded once for all of them. */
template <int lanes, int factor, int channelCount, int outputCount>
SOLVANE_ALWAYS_INLINE void
decimateTile (const RateFilterTable& table, const double* const* input, double* output, int start) noexcept
{
    using Vector = typename SimdLanes<lanes>::Vector;
    const double* oldest[extent (channelCount)];
    Vector sums[extent (outputCount * channelCount)];

    for (int c = 0; c < channelCount; ++c)
        oldest[c] = input[c] + start * factor - (table.feedForwardCount - 1);

    for (auto& sum : sums)
        sum = Vector {};

    addProducts<lanes, factor, channelCount, outputCount> (table, oldest, sums);

    if constexpr (outputCount * channelCount % lanes == 0)
    {
        for (int i = 0; i < outputCount * channelCount; i += lanes)
            storeTotals<lanes> (sums + i, output + start * channelCount + i);
    }
    else
    {
        for (int i = 0; i < outputCount * channelCount; ++i)
            output[start * channelCount + i] = total<lanes> (sums[i]);
    }
}

template <int lanes, int factor, int channelCount>
SOLVANE_ALWAYS_INLINE void
decimate (const RateFilterTable& table, const double* const* input, double* output, int outputCount) noexcept
{
    constexpr auto most = sumsAtOnce<channelCount>;
    auto start = 0;

    for (; start + most <= outputCount; start += most)
        decimateTile<lanes, factor, channelCount, most> (table, input, output, start);

    for (; start < outputCount; ++start)
        decimateTile<lanes, factor, channelCount, 1> (table, input, output, start);
}

/** `stepCount` vectors of one channel's outputs that need the same coefficients, since they start at the same phase.
    Input values whose distance is a whole step meet the same vectors of input, so these are loaded once for four. */
template <int lanes, int factor, int stepCount>
SOLVANE_ALWAYS_INLINE void
interpolateTile (const RateFilterTable& table, const double* held, double* output, int phase, int kept) noexcept
{
    using Vector = typename SimdLanes<lanes>::Vector;
    constexpr auto step = std::max (lanes, factor);
    constexpr auto valuesPerStep = step / factor;
    constexpr auto valuesAtOnce = 4;
    const auto* coefficients = table.interpolating.data() + phase;
    Vector sums[extent (stepCount)];

    for (auto& sum : sums)
        sum = Vector {};

    for (int part = 0; part < valuesPerStep; ++part)
    {
        auto i = part;

        for (; i + (valuesAtOnce - 1) * valuesPerStep < table.branchTapCount; i += valuesAtOnce * valuesPerStep)
        {
            Vector group[valuesAtOnce];

            for (int t = 0; t < valuesAtOnce; ++t)
                group[t] = lanesAt<lanes> (coefficients + (i + t * valuesPerStep) * RateFilterTable::branchWidth);

#pragma GCC unroll 16
            for (int place = stepCount - 1; place > -valuesAtOnce; --place)
            {
                Vector input = lanesAt<lanes> (held + phase + place * step - i * factor);
                SOLVANE_KEEP_IN_REGISTER (input);

#pragma GCC unroll 4
                for (int t = 0; t < valuesAtOnce; ++t)
                    if (place + t >= 0 && place + t < stepCount)
                        sums[place + t] += group[t] * input;
            }
        }

        for (; i < table.branchTapCount; i += valuesPerStep)
        {
            const Vector one = lanesAt<lanes> (coefficients + i * RateFilterTable::branchWidth);

            for (int s = 0; s < stepCount; ++s)
                sums[s] += one * lanesAt<lanes> (held + phase + s * step - i * factor);
        }
    }

    for (int s = 0; s < stepCount; ++s)
        storeLanes<lanes> (sums[s], output + phase + s * step, kept - phase - s * step);
}

template <int lanes, int factor>
SOLVANE_ALWAYS_INLINE void
interpolate (const RateFilterTable& table, const double* held, double* output, int inputCount) noexcept
{
    constexpr auto step = std::max (lanes, factor);
    constexpr auto most = 8;
    const auto end = inputCount * factor;
    auto start = 0;

    for (; end - start > most / 2 * step; start += most * step)
        for (int phase = 0; phase < step; phase += lanes)
            interpolateTile<lanes, factor, most> (table, held + start, output + start, phase, end - start);

    if (start < end)
        for (int phase = 0; phase < step; phase += lanes)
            interpolateTile<lanes, factor, most / 2> (table, held + start, output + start, phase, end - start);
}

template <int lanes>
SOLVANE_ALWAYS_INLINE void decimateAny (const RateFilterTable& table,
                                        const double* const* input,
                                        double* output,
                                        int channelCount,
                                        int outputCount) noexcept
{
    if (table.factor == 4)
    {
        if (channelCount == 2)
            decimate<lanes, 4, 2> (table, input, output, outputCount);
        else
            decimate<lanes, 4, 1> (table, input, output, outputCount);
    }
    else
    {
        if (channelCount == 2)
            decimate<lanes, 8, 2> (table, input, output, outputCount);
        else
            decimate<lanes, 8, 1> (table, input, output, outputCount);
    }
}

template <int lanes>
SOLVANE_ALWAYS_INLINE void interpolateAny (const RateFilterTable& table,
                                           const double* const* held,
                                           double* const* output,
                                           int channelCount,
                                           int inputCount) noexcept
{
    for (int c = 0; c < channelCount; ++c)
    {
        if (table.factor == 4)
            interpolate<lanes, 4> (table, held[c], output[c], inputCount);
        else
            interpolate<lanes, 8> (table, held[c], output[c], inputCount);
    }
}

#if SOLVANE_HAS_FUNCTION_VERSIONS
SOLVANE_TARGET_V3 void decimateV3 (const RateFilterTable& table,
                                   const double* const* input,
                                   double* output,
                                   int channelCount,
                                   int outputCount) noexcept
{
    decimateAny<4> (table, input, output, channelCount, outputCount);
}

SOLVANE_TARGET_V4 void decimateV4 (const RateFilterTable& table,
                                   const double* const* input,
                                   double* output,
                                   int channelCount,
                                   int outputCount) noexcept
{
    decimateAny<8> (table, input, output, channelCount, outputCount);
}

SOLVANE_TARGET_V3 void interpolateV3 (const RateFilterTable& table,
                                      const double* const* held,
                                      double* const* output,
                                      int channelCount,
                                      int inputCount) noexcept
{
    interpolateAny<4> (table, held, output, channelCount, inputCount);
}

SOLVANE_TARGET_V4 void interpolateV4 (const RateFilterTable& table,
                                      const double* const* held,
                                      double* const* output,
                                      int channelCount,
                                      int inputCount) noexcept
{
    interpolateAny<8> (table, held, output, channelCount, inputCount);
}
#endif
} // namespace

namespace PolyphaseKernel
{
void decimatingSums (const RateFilterTable& table,
                     const double* const* input,
                     double* output,
                     int channelCount,
                     int outputCount) noexcept
{
#if SOLVANE_HAS_FUNCTION_VERSIONS
    switch (simdLevel())
    {
        case SimdLevel::v4:
            return decimateV4 (table, input, output, channelCount, outputCount);
        case SimdLevel::v3:
            return decimateV3 (table, input, output, channelCount, outputCount);
        case SimdLevel::baseline:
            break;
    }
#endif

    decimateAny<2> (table, input, output, channelCount, outputCount);
}

void interpolatingSums (const RateFilterTable& table,
                        const double* const* held,
                        double* const* output,
                        int channelCount,
                        int inputCount) noexcept
{
#if SOLVANE_HAS_FUNCTION_VERSIONS
    switch (simdLevel())
    {
        case SimdLevel::v4:
            return interpolateV4 (table, held, output, channelCount, inputCount);
        case SimdLevel::v3:
            return interpolateV3 (table, held, output, channelCount, inputCount);
        case SimdLevel::baseline:
            break;
    }
#endif

    interpolateAny<2> (table, held, output, channelCount, inputCount);
}
} // namespace PolyphaseKernel
