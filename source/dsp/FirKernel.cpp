#include "dsp/FirKernel.h"

#include "dsp/SimdLanes.h"
#include "dsp/SimdLevel.h"

#include <algorithm>

namespace
{
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

/** Takes the taps whose numbers leave the same remainder by the vector's width one after the other, some at a time.
    Their inputs lie whole vectors apart, so that a vector serves as many sums once it is loaded: nearly every load
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

#pragma GCC unroll 32
        for (int place = vectorCount - 1; place > -tapsAtOnce; --place)
        {
#pragma GCC unroll 2
            for (int c = 0; c < channelCount; ++c)
            {
                Vector input = lanesAt<lanes> (tile.input[c] + place * lanes - k);
                SOLVANE_KEEP_IN_REGISTER (input);

#pragma GCC unroll 16
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

/** Fills whole tiles from `start` on, as far as the block goes.
    @returns where they end */
template <typename Order, int lanes, int channelsAtOnce, int vectorCount>
SOLVANE_ALWAYS_INLINE int fillWhole (const FirJob& job, int start) noexcept
{
    constexpr auto tileLength = vectorCount * lanes;
    const auto end = start + (job.sampleCount - start) / tileLength * tileLength;

    for (int c = 0; c < job.channelCount; c += channelsAtOnce)
        for (int from = start; from < end; from += tileLength)
            fillTile<Order, lanes, channelsAtOnce, vectorCount> (job, c, from, tileLength);

    return end;
}

/** Fills what remains, of both channels at once, in tiles that reach past the block. */
template <typename Order, int lanes>
SOLVANE_ALWAYS_INLINE void fillRest (const FirJob& job, int start) noexcept
{
    constexpr auto vectorCount = 4;
    constexpr auto tileLength = vectorCount * lanes;

    for (; start < job.sampleCount; start += tileLength)
    {
        const auto kept = std::min (job.sampleCount - start, tileLength);

        if (job.channelCount == 2)
            fillTile<Order, lanes, 2, vectorCount> (job, 0, start, kept);
        else
            fillTile<Order, lanes, 1, vectorCount> (job, 0, start, kept);
    }
}

// The shapes of the tiles were found by measuring. A machine that begins two multiplications with additions per cycle,
// each of which takes four, needs more than eight sums under way to be kept busy, since they do not come round evenly;
// how many fit is a question of registers.

template <typename Order>
void convolveBaseline (const FirJob& job) noexcept
{
    const auto start = fillWhole<Order, 2, 1, 8> (job, 0);
    fillRest<Order, 2> (job, start);
}

#if SOLVANE_HAS_FUNCTION_VERSIONS
SOLVANE_TARGET_V3 void convolveV3 (const FirJob& job) noexcept
{
    auto start = fillWhole<DiagonalOrder<2>, 4, 1, 12> (job, 0);
    start = fillWhole<DiagonalOrder<4>, 4, 1, 8> (job, start);
    fillRest<DiagonalOrder<4>, 4> (job, start);
}

SOLVANE_TARGET_V4 void convolveV4 (const FirJob& job) noexcept
{
    auto start = job.channelCount == 2 ? fillWhole<DiagonalOrder<6>, 8, 2, 8> (job, 0)
                                       : fillWhole<DiagonalOrder<6>, 8, 1, 16> (job, 0);
    start = fillWhole<DiagonalOrder<6>, 8, 1, 8> (job, start);
    fillRest<DiagonalOrder<6>, 8> (job, start);
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

    if (job.symmetric)
        convolveBaseline<FoldedOrder> (job);
    else
        convolveBaseline<DirectOrder> (job);
}
