#include "dsp/FirKernel.h"

#include "dsp/SimdLanes.h"
#include "dsp/SimdLevel.h"

#include <algorithm>

namespace
{
/** Outputs of all channels that are summed at once: enough independent sums to hide the latency of an addition. */
template <int channelCount>
constexpr int vectorsAtOnce = 8 / channelCount;

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

/** Takes the taps whose numbers leave the same remainder by the vector's width one after the other. Their inputs lie
    whole vectors apart, so each vector that is loaded serves as many taps as the tile has vectors: with wide vectors,
    nearly every load crosses a cache line, and loads would be the limit. */
struct SlidingOrder
{
    template <int lanes, int channelCount, int vectorCount>
    static SOLVANE_ALWAYS_INLINE void add (const FirJob& job, Tile<lanes, channelCount, vectorCount>& tile) noexcept
    {
        using Vector = typename SimdLanes<lanes>::Vector;

        for (int remainder = 0; remainder < std::min (lanes, job.tapCount); ++remainder)
        {
            Vector window[extent (channelCount)][extent (vectorCount)];

            for (int c = 0; c < channelCount; ++c)
                for (int v = 0; v < vectorCount; ++v)
                    window[c][v] = lanesAt<lanes> (tile.input[c] + v * lanes - remainder);

            auto k = remainder;

            // The window turns in place: what the last vector of the tile has used up makes room for the next load.
            for (; k + (vectorCount - 1) * lanes < job.tapCount; k += vectorCount * lanes)
            {
#pragma GCC unroll 8
                for (int turn = 0; turn < vectorCount; ++turn)
                {
                    const auto tap = job.taps[k + turn * lanes];

                    for (int c = 0; c < channelCount; ++c)
                    {
                        for (int v = 0; v < vectorCount; ++v)
                            tile.sums[c][v] += tap * window[c][(v - turn + vectorCount) % vectorCount];

                        window[c][vectorCount - 1 - turn] = lanesAt<lanes> (tile.input[c] - k - (turn + 1) * lanes);
                    }
                }
            }

            for (; k < job.tapCount; k += lanes)
            {
                const auto tap = job.taps[k];

                for (int c = 0; c < channelCount; ++c)
                {
                    for (int v = 0; v < vectorCount; ++v)
                        tile.sums[c][v] += tap * window[c][v];

                    for (int v = vectorCount - 1; v > 0; --v)
                        window[c][v] = window[c][v - 1];

                    window[c][0] = lanesAt<lanes> (tile.input[c] - k - lanes);
                }
            }
        }
    }
};

/** Fills `vectorCount` vectors of outputs from `start` on, of which `kept` samples are written. */
template <typename Order, int lanes, int channelCount, int vectorCount>
SOLVANE_ALWAYS_INLINE void fillTile (const FirJob& job, int start, int kept) noexcept
{
    Tile<lanes, channelCount, vectorCount> tile;

    for (int c = 0; c < channelCount; ++c)
    {
        tile.input[c] = job.input[c] + start;

        for (int v = 0; v < vectorCount; ++v)
            tile.sums[c][v] = typename SimdLanes<lanes>::Vector {};
    }

    Order::add (job, tile);

    for (int c = 0; c < channelCount; ++c)
    {
        auto* output = job.output[c] + start;

        for (int v = 0; v < vectorCount; ++v)
            storeLanes<lanes> (tile.sums[c][v], output + v * lanes, kept - v * lanes);
    }
}

template <typename Order, int lanes, int channelCount>
SOLVANE_ALWAYS_INLINE void fillChannels (const FirJob& job) noexcept
{
    constexpr auto most = vectorsAtOnce<channelCount>;
    auto start = 0;

    for (; job.sampleCount - start >= most * lanes; start += most * lanes)
        fillTile<Order, lanes, channelCount, most> (job, start, most * lanes);

    // What remains is written from a tile that reads past the block.
    const auto remaining = job.sampleCount - start;

    if (remaining > most / 2 * lanes)
        fillTile<Order, lanes, channelCount, most> (job, start, remaining);
    else if (remaining > 0)
        fillTile<Order, lanes, channelCount, most / 2> (job, start, remaining);
}

template <typename Order, int lanes>
SOLVANE_ALWAYS_INLINE void fill (const FirJob& job) noexcept
{
    if (job.channelCount == 2)
        fillChannels<Order, lanes, 2> (job);
    else if (job.channelCount == 1)
        fillChannels<Order, lanes, 1> (job);
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
    fill<DirectOrder, 4> (job);
}
SOLVANE_TARGET_V4 void convolveV4 (const FirJob& job) noexcept
{
    fill<SlidingOrder, 8> (job);
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
