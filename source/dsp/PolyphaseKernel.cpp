#include "dsp/PolyphaseKernel.h"

#include "dsp/RateFilterTable.h"
#include "dsp/SimdLanes.h"
#include "dsp/SimdLevel.h"

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

/** `outputCount` neighbouring outputs: a dot product each, whose coefficients are loaded once for all of them. */
template <int lanes, int channelCount, int outputCount>
SOLVANE_ALWAYS_INLINE void
decimateTile (const RateFilterTable& table, const double* const* input, double* output, int start) noexcept
{
    using Vector = typename SimdLanes<lanes>::Vector;
    Vector sums[extent (outputCount)][extent (channelCount)];
    const double* oldest[extent (channelCount)];

    for (int c = 0; c < channelCount; ++c)
        oldest[c] = input[c] + start * table.factor - (table.feedForwardCount - 1);

    for (int i = 0; i < outputCount; ++i)
        for (int c = 0; c < channelCount; ++c)
            sums[i][c] = Vector {};

    for (int k = 0; k < table.feedForwardCount; k += lanes)
    {
        const Vector coefficients = lanesAt<lanes> (table.decimating.data() + k);

        for (int i = 0; i < outputCount; ++i)
            for (int c = 0; c < channelCount; ++c)
                sums[i][c] += coefficients * lanesAt<lanes> (oldest[c] + i * table.factor + k);
    }

    for (int i = 0; i < outputCount; ++i)
        for (int c = 0; c < channelCount; ++c)
            output[(start + i) * channelCount + c] = total<lanes> (sums[i][c]);
}

template <int lanes, int channelCount>
SOLVANE_ALWAYS_INLINE void
decimate (const RateFilterTable& table, const double* const* input, double* output, int outputCount) noexcept
{
    constexpr auto most = sumsAtOnce<channelCount>;
    auto start = 0;

    for (; start + most <= outputCount; start += most)
        decimateTile<lanes, channelCount, most> (table, input, output, start);

    for (; start < outputCount; ++start)
        decimateTile<lanes, channelCount, 1> (table, input, output, start);
}

/** `stepCount` vectors of outputs that need the same coefficients, since they start at the same phase. */
template <int lanes, int factor, int channelCount, int stepCount>
SOLVANE_ALWAYS_INLINE void interpolateTile (const RateFilterTable& table,
                                            const double* const* held,
                                            double* const* output,
                                            int start,
                                            int phase,
                                            int end) noexcept
{
    using Vector = typename SimdLanes<lanes>::Vector;
    constexpr auto step = std::max (lanes, factor);
    Vector sums[extent (channelCount)][extent (stepCount)];

    for (int c = 0; c < channelCount; ++c)
        for (int s = 0; s < stepCount; ++s)
            sums[c][s] = Vector {};

    for (int i = 0; i < table.branchTapCount; ++i)
    {
        const Vector coefficients =
            lanesAt<lanes> (table.interpolating.data() + i * RateFilterTable::branchWidth + phase);

        for (int c = 0; c < channelCount; ++c)
            for (int s = 0; s < stepCount; ++s)
                sums[c][s] += coefficients * lanesAt<lanes> (held[c] + start + phase + s * step - i * factor);
    }

    for (int c = 0; c < channelCount; ++c)
    {
        for (int s = 0; s < stepCount; ++s)
        {
            const auto first = start + phase + s * step;

            storeLanes<lanes> (sums[c][s], output[c] + first, end - first);
        }
    }
}

template <int lanes, int factor, int channelCount>
SOLVANE_ALWAYS_INLINE void
interpolate (const RateFilterTable& table, const double* const* held, double* const* output, int inputCount) noexcept
{
    constexpr auto step = std::max (lanes, factor);
    constexpr auto most = sumsAtOnce<channelCount>;
    const auto end = inputCount * factor;

    for (int start = 0; start < end; start += most * step)
    {
        for (int phase = 0; phase < step; phase += lanes)
        {
            if (end - start > most / 2 * step)
                interpolateTile<lanes, factor, channelCount, most> (table, held, output, start, phase, end);
            else
                interpolateTile<lanes, factor, channelCount, most / 2> (table, held, output, start, phase, end);
        }
    }
}

template <int lanes>
SOLVANE_ALWAYS_INLINE void decimateAny (const RateFilterTable& table,
                                        const double* const* input,
                                        double* output,
                                        int channelCount,
                                        int outputCount) noexcept
{
    if (channelCount == 2)
        decimate<lanes, 2> (table, input, output, outputCount);
    else
        decimate<lanes, 1> (table, input, output, outputCount);
}

template <int lanes>
SOLVANE_ALWAYS_INLINE void interpolateAny (const RateFilterTable& table,
                                           const double* const* held,
                                           double* const* output,
                                           int channelCount,
                                           int inputCount) noexcept
{
    if (table.factor == 4)
    {
        if (channelCount == 2)
            interpolate<lanes, 4, 2> (table, held, output, inputCount);
        else
            interpolate<lanes, 4, 1> (table, held, output, inputCount);
    }
    else
    {
        if (channelCount == 2)
            interpolate<lanes, 8, 2> (table, held, output, inputCount);
        else
            interpolate<lanes, 8, 1> (table, held, output, inputCount);
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
