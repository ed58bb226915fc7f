#include "dsp/FirKernel.h"

#include "dsp/SimdLanes.h"
#include "dsp/SimdLevel.h"

#include <algorithm>

namespace
{
/** Vectors of outputs that are summed at once: enough independent sums to hide the latency of an addition. */
constexpr int vectorsAtOnce = 8;

template <int lanes, int channelCount, int vectorCount>
struct Tile
{
    using Vector = typename SimdLanes<lanes>::Vector;

    Vector sums[extent (channelCount)][extent (vectorCount)];
    const double* input[extent (channelCount)];
};

/** Takes the taps one by one: each serves all sums of the tile, and inputs come straight from memory. */
struct DirectOrder
{
    template <int lanes, int channelCount, int vectorCount>
    static SOLVANE_ALWAYS_INLINE void add (const FirJob& job, Tile<lanes, channelCount, vectorCount>& tile) noexcept
    {
        for (int k = 0; k < job.tapCount; ++k)
        {
            const auto tap = job.taps[k];

            for (int c = 0; c < channelCount; ++c)
                for (int v = 0; v < vectorCount; ++v)
                    tile.sums[c][v] += tap * lanesAt<lanes> (tile.input[c] + v * lanes - k);
        }
    }
};

/** Adds the two inputs that share a tap first, which saves a multiplication where the machine cannot do it together
    with an addition. The taps must be symmetric. A unit impulse still gives the input itself: all other terms are 0. */
struct FoldedOrder
{
    template <int lanes, int channelCount, int vectorCount>
    static SOLVANE_ALWAYS_INLINE void add (const FirJob& job, Tile<lanes, channelCount, vectorCount>& tile) noexcept
    {
        using Vector = typename SimdLanes<lanes>::Vector;
        const auto last = job.tapCount - 1;

        for (int k = 0; k < job.tapCount / 2; ++k)
        {
            const auto tap = job.taps[k];

            for (int c = 0; c < channelCount; ++c)
            {
                for (int v = 0; v < vectorCount; ++v)
                {
                    const auto* newest = tile.input[c] + v * lanes;
                    const Vector pair = lanesAt<lanes> (newest - k) + lanesAt<lanes> (newest - (last - k));
                    tile.sums[c][v] += tap * pair;
                }
            }
        }

        if (job.tapCount % 2 == 1)
        {
            const auto tap = job.taps[job.tapCount / 2];

            for (int c = 0; c < channelCount; ++c)
                for (int v = 0; v < vectorCount; ++v)
                    tile.sums[c][v] += tap * lanesAt<lanes> (tile.input[c] + v * lanes - job.tapCount / 2);
        }
    }
};

/** Takes the taps whose numbers leave the same remainder by the vector's width one after the other, four at a time.
    Their inputs lie whole vectors apart, so that a vector serves up to four sums once it is loaded: nearly every load
    of a wide vector crosses a cache line, and loads would be the limit otherwise. */
template <int tapsAtOnce>
struct DiagonalOrder
{
    template <int lanes, int channelCount, int vectorCount>
    static SOLVANE_ALWAYS_INLINE void add (const FirJob& job, Tile<lanes, channelCount, vectorCount>& tile) noexcept
    {
        for (int remainder = 0; remainder < std::min (lanes, job.tapCount); ++remainder)
        {
            auto k = remainder;

            for (; k + (tapsAtOnce - 1) * lanes < job.tapCount; k += tapsAtOnce * lanes)
                addGroup (job.taps + k, k, tile);

            for (; k < job.tapCount; k += lanes)
            {
                const auto tap = job.taps[k];

                for (int c = 0; c < channelCount; ++c)
                    for (int v = 0; v < vectorCount; ++v)
                        tile.sums[c][v] += tap * lanesAt<lanes> (tile.input[c] + v * lanes - k);
            }
        }
    }

    /** Each sum takes its taps in the order of their numbers: what it needs for the next lies one vector earlier. */
    template <int lanes, int channelCount, int vectorCount>
    static SOLVANE_ALWAYS_INLINE void
    addGroup (const double* taps, int k, Tile<lanes, channelCount, vectorCount>& tile) noexcept
    {
        using Vector = typename SimdLanes<lanes>::Vector;
        double group[extent (tapsAtOnce)];

        for (int t = 0; t < tapsAtOnce; ++t)
            group[t] = taps[t * lanes];

#pragma GCC unroll 16
        for (int place = vectorCount - 1; place > -tapsAtOnce; --place)
        {
#pragma GCC unroll 2
            for (int c = 0; c < channelCount; ++c)
            {
                Vector input = lanesAt<lanes> (tile.input[c] + place * lanes - k);
                SOLVANE_KEEP_IN_REGISTER (input);

#pragma GCC unroll 8
                for (int t = 0; t < tapsAtOnce; ++t)
                    if (place + t >= 0 && place + t < vectorCount)
                        tile.sums[c][place + t] += group[t] * input;
            }
        }
    }
};

/** Fills `vectorCount` vectors of outputs of the channels from `firstChannel` on, of which `kept` samples each are
    written. */
template <typename Order, int lanes, int channelCount, int vectorCount>
SOLVANE_ALWAYS_INLINE void fillTile (const FirJob& job, int firstChannel, int start, int kept) noexcept
{
    Tile<lanes, channelCount, vectorCount> tile;

    for (int c = 0; c < channelCount; ++c)
    {
        tile.input[c] = job.input[firstChannel + c] + start;

        for (int v = 0; v < vectorCount; ++v)
            tile.sums[c][v] = typename SimdLanes<lanes>::Vector {};
    }

    Order::add (job, tile);

    for (int c = 0; c < channelCount; ++c)
        for (int v = 0; v < vectorCount; ++v)
            storeLanes<lanes> (tile.sums[c][v], job.output[firstChannel + c] + start + v * lanes, kept - v * lanes);
}

/** Whole tiles of one channel after the other, and then what remains of both at once, in tiles that reach past the
    block. */
template <typename Order, int lanes>
SOLVANE_ALWAYS_INLINE void fill (const FirJob& job) noexcept
{
    constexpr auto tileLength = vectorsAtOnce * lanes;
    const auto whole = job.sampleCount / tileLength * tileLength;

    for (int c = 0; c < job.channelCount; ++c)
        for (int start = 0; start < whole; start += tileLength)
            fillTile<Order, lanes, 1, vectorsAtOnce> (job, c, start, tileLength);

    for (int start = whole; start < job.sampleCount; start += tileLength / 2)
    {
        const auto kept = std::min (job.sampleCount - start, tileLength / 2);

        if (job.channelCount == 2)
            fillTile<Order, lanes, 2, vectorsAtOnce / 2> (job, 0, start, kept);
        else
            fillTile<Order, lanes, 1, vectorsAtOnce / 2> (job, 0, start, kept);
    }
}

void convolveBaseline (const FirJob& job) noexcept
{
    constexpr int lanes = 2;

    if (job.symmetric)
        fill<FoldedOrder, lanes> (job);
    else
        fill<DirectOrder, lanes> (job);
}

#if SOLVANE_HAS_FUNCTION_VERSIONS
SOLVANE_TARGET_V3 void convolveV3 (const FirJob& job) noexcept
{
    fill<DiagonalOrder<4>, 4> (job);
}
SOLVANE_TARGET_V4 void convolveV4 (const FirJob& job) noexcept
{
    fill<DiagonalOrder<6>, 8> (job);
}
#endif
} // namespace

void convolve (const FirJob& job) noexcept
{
#if SOLVANE_HAS_FUNCTION_VERSIONS
    switch (simdLevel())
    {
        case SimdLevel::v4:
            return convolveV4 (job);
        case SimdLevel::v3:
            return convolveV3 (job);
        case SimdLevel::baseline:
            break;
    }
#endif

    convolveBaseline (job);
}
