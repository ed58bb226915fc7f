#include "dsp/path/FirKernel.h"

#include "dsp/simd/SimdLanes.h"
#include "dsp/simd/SimdLevel.h"

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

/** Adds what one tap contributes to all sums of the tile, with inputs straight from memory. */
template <int lanes, int channelCount, int vectorCount>
SOLVANE_ALWAYS_INLINE void addTap (const FirJob& job, int k, Tile<lanes, channelCount, vectorCount>& tile) noexcept
{
    const auto tap = job.taps[k];

    for (int c = 0; c < channelCount; ++c)
        for (int v = 0; v < vectorCount; ++v)
            tile.sums[c][v] += tap * lanesAt<lanes> (tile.input[c] + v * lanes - k);
}

/** Takes the taps one by one. */
struct DirectOrder
{
    template <int lanes, int channelCount, int vectorCount>
    static SOLVANE_ALWAYS_INLINE void add (const FirJob& job, Tile<lanes, channelCount, vectorCount>& tile) noexcept
    {
        for (int k = 0; k < job.tapCount; ++k)
            addTap (job, k, tile);
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
                addTap (job, k, tile);
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

/** Adds the two inputs that share a tap first. That saves a multiplication where the machine cannot do it together with
    an addition, and elsewhere turns half of the work into plain additions, which many machines can begin beside two
    multiplications with additions. Taps that lie whole vectors apart are taken together here too: both their newer and
    their older inputs are then vectors that the others need as well. The taps must be symmetric. A unit impulse still
    gives the input itself: all other terms are 0. */
template <int tapsAtOnce>
struct FoldedOrder
{
    template <int lanes, int channelCount, int vectorCount>
    static SOLVANE_ALWAYS_INLINE void add (const FirJob& job, Tile<lanes, channelCount, vectorCount>& tile) noexcept
    {
        const auto last = job.tapCount - 1;
        const auto half = job.tapCount / 2;

        for (int remainder = 0; remainder < std::min (lanes, half); ++remainder)
        {
            auto k = remainder;

            for (; k + (tapsAtOnce - 1) * lanes < half; k += tapsAtOnce * lanes)
                for (int c = 0; c < channelCount; ++c)
                    addGroup<lanes> (job.taps + k, tile.input[c] - k, tile.input[c] - (last - k), tile.sums[c]);

            for (; k < half; k += lanes)
                for (int c = 0; c < channelCount; ++c)
                    FoldedOrder<1>::template addGroup<lanes> (
                        job.taps + k, tile.input[c] - k, tile.input[c] - (last - k), tile.sums[c]);
        }

        if (job.tapCount % 2 == 1)
            addTap (job, half, tile);
    }

    /** From tap to tap the newer input lies one vector earlier, the older one a vector later. */
    template <int lanes, typename Vector, std::size_t vectorCount>
    static SOLVANE_ALWAYS_INLINE void
    addGroup (const double* taps, const double* newer, const double* older, Vector (&sums)[vectorCount]) noexcept
    {
        Vector newerOnes[extent (tapsAtOnce)]; // for each tap
        Vector olderOnes[extent (tapsAtOnce)];
        double group[extent (tapsAtOnce)];

#pragma GCC unroll 8
        for (int t = 0; t < tapsAtOnce; ++t)
            group[t] = taps[t * lanes];

#pragma GCC unroll 8
        for (int t = 1; t < tapsAtOnce; ++t)
        {
            load<lanes> (newer - t * lanes, newerOnes[t]);
            load<lanes> (older + (t - 1) * lanes, olderOnes[t]);
        }

#pragma GCC unroll 16
        for (auto& sum : sums)
        {
#pragma GCC unroll 8
            for (int t = 1; t < tapsAtOnce; ++t)
                olderOnes[t - 1] = olderOnes[t];

            load<lanes> (newer, newerOnes[0]);
            load<lanes> (older + (tapsAtOnce - 1) * lanes, olderOnes[tapsAtOnce - 1]);

#pragma GCC unroll 8
            for (int t = 0; t < tapsAtOnce; ++t)
            {
                const Vector pair = newerOnes[t] + olderOnes[t];
                sum += group[t] * pair;
            }

#pragma GCC unroll 8
            for (int t = tapsAtOnce - 1; t > 0; --t)
                newerOnes[t] = newerOnes[t - 1];

            newer += lanes;
            older += lanes;
        }
    }

    template <int lanes, typename Vector>
    static SOLVANE_ALWAYS_INLINE void load (const double* address, Vector& vector) noexcept
    {
        vector = lanesAt<lanes> (address);
        SOLVANE_KEEP_IN_REGISTER (vector);
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
    if (job.symmetric)
    {
        const auto start = fillWhole<FoldedOrder<3>, 4, 1, 8> (job, 0);
        fillRest<FoldedOrder<3>, 4> (job, start);
        return;
    }

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
        convolveBaseline<FoldedOrder<3>> (job);
    else
        convolveBaseline<DirectOrder> (job);
}
