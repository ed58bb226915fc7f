#include "dsp/rate/RateRecursion.h"

#include "dsp/simd/SimdLanes.h"
#include "dsp/simd/SimdLevel.h"

#include <algorithm>
#include <cstring>

namespace
{
constexpr int framesAtOnce = RateFilterTable::framesAtOnce;
constexpr int pastFrames = RateFilterTable::maxOrder;

/** Frames between two moves of the past to the front: long enough to make moving cheap, short enough for the cache. */
constexpr int framesPerRun = 128;

/** All lanes repeat the frame of one or two channels that starts at lane `first`. */
template <int channelCount, int lanes, int first>
SOLVANE_ALWAYS_INLINE void repeat (const typename SimdLanes<lanes>::Vector& from,
                                   typename SimdLanes<lanes>::Vector& repeated) noexcept
{
    constexpr auto second = first + channelCount - 1;

    if constexpr (channelCount == lanes)
        repeated = from;
    else if constexpr (lanes == 2)
        repeated = __builtin_shufflevector (from, from, first, second);
    else if constexpr (lanes == 4)
        repeated = __builtin_shufflevector (from, from, first, second, first, second);
    else
        repeated = __builtin_shufflevector (from, from, first, second, first, second, first, second, first, second);
}

/** Runs four frames at once. Earlier results are kept once for every lane, and are taken off all four frames in one
    step: the coefficients run on from lane to lane, and are 0 for frames that lie too far behind the result. What the
    four owe each other follows one by one. Each lane thus subtracts in the plain order, oldest result first. */
template <int order, int channelCount, int lanes>
class FourFrames
{
public:
    SOLVANE_ALWAYS_INLINE explicit FourFrames (const RateFilterTable& table) noexcept
        : coefficients (channelCount == 2 ? table.recursiveInPairs.data() : table.recursive.data())
    {
    }

    /** Finishes the frames in place, and writes each result, repeated in all lanes, to `results`, before which the
        results of earlier frames lie. */
    SOLVANE_ALWAYS_INLINE void run (double* frames, double* results) const noexcept
    {
        Vector values[extent (vectorCount)];

        for (int v = 0; v < vectorCount; ++v)
            values[v] = lanesAt<lanes> (frames + v * lanes);

#pragma GCC unroll 24
        for (int k = order; k > 0; --k)
        {
            const Vector known = lanesAt<lanes> (results - k * lanes);

            for (int v = 0; v < vectorCount; ++v)
                values[v] -= lanesAt<lanes> (coefficients + (framesAtOnce + k) * channelCount + v * lanes) * known;
        }

        Vector finished[framesAtOnce];
        repeat<channelCount, lanes, 0> (values[0], finished[0]);
        repeat<channelCount, lanes, 1 % framesPerVector * channelCount> (values[1 / framesPerVector], finished[1]);
        repeat<channelCount, lanes, 2 % framesPerVector * channelCount> (values[2 / framesPerVector], finished[2]);
        repeat<channelCount, lanes, 3 % framesPerVector * channelCount> (values[3 / framesPerVector], finished[3]);

#pragma GCC unroll 4
        for (int frame = 0; frame < framesAtOnce; ++frame)
        {
#pragma GCC unroll 4
            for (int k = frame; k > 0; --k)
                finished[frame] -= coefficients[(framesAtOnce + k) * channelCount] * finished[frame - k];

            lanesAt<lanes> (results + frame * lanes) = finished[frame];

            for (int c = 0; c < channelCount; ++c)
                frames[frame * channelCount + c] = finished[frame][c];
        }
    }

private:
    using Vector = typename SimdLanes<lanes>::Vector;
    static constexpr int vectorCount = framesAtOnce * channelCount / lanes;
    static constexpr int framesPerVector = lanes / channelCount;

    const double* coefficients;
};

template <int order, int channelCount, int lanes>
SOLVANE_ALWAYS_INLINE void
runFrames (const RateFilterTable& table, double* frames, int frameCount, RecursionState* const* states) noexcept
{
    const FourFrames<order, channelCount, lanes> fourFrames (table);
    alignas (64) double storage[extent ((pastFrames + framesPerRun) * lanes)];
    auto* results = storage + pastFrames * lanes;

    for (int i = 0; i < pastFrames; ++i)
        for (int lane = 0; lane < lanes; ++lane)
            storage[i * lanes + lane] = (*states[lane % channelCount])[extent (i)];

    auto done = 0;

    while (done < frameCount)
    {
        if (results == storage + (pastFrames + framesPerRun) * lanes)
        {
            std::memcpy (storage, results - pastFrames * lanes, sizeof (double) * extent (pastFrames * lanes));
            results = storage + pastFrames * lanes;
        }

        // The last step may run over frames behind the end; what is not kept there is not looked at again.
        const auto kept = std::min (framesAtOnce, frameCount - done);
        auto* group = frames + done * channelCount;

        if (kept == framesAtOnce)
        {
            fourFrames.run (group, results);
        }
        else
        {
            double padded[extent (framesAtOnce * channelCount)] {};
            std::copy_n (group, kept * channelCount, padded);
            fourFrames.run (padded, results);
            std::copy_n (padded, kept * channelCount, group);
        }

        results += kept * lanes;
        done += kept;
    }

    for (int i = 0; i < pastFrames; ++i)
        for (int c = 0; c < channelCount; ++c)
            (*states[c])[extent (i)] = results[(i - pastFrames) * lanes + c];
}

template <int lanes>
SOLVANE_ALWAYS_INLINE void runAny (const RateFilterTable& table,
                                   double* frames,
                                   int frameCount,
                                   RecursionState* const* states,
                                   int channelCount) noexcept
{
    constexpr auto singleLanes = std::min (lanes, framesAtOnce);

    if (table.order == RateFilterTable::orderByFour)
    {
        if (channelCount == 2)
            runFrames<RateFilterTable::orderByFour, 2, lanes> (table, frames, frameCount, states);
        else
            runFrames<RateFilterTable::orderByFour, 1, singleLanes> (table, frames, frameCount, states);
    }
    else
    {
        if (channelCount == 2)
            runFrames<RateFilterTable::orderByEight, 2, lanes> (table, frames, frameCount, states);
        else
            runFrames<RateFilterTable::orderByEight, 1, singleLanes> (table, frames, frameCount, states);
    }
}

#if SOLVANE_HAS_FUNCTION_VERSIONS
SOLVANE_TARGET_V3 void runV3 (const RateFilterTable& table,
                              double* frames,
                              int frameCount,
                              RecursionState* const* states,
                              int channelCount) noexcept
{
    runAny<4> (table, frames, frameCount, states, channelCount);
}

SOLVANE_TARGET_V4 void runV4 (const RateFilterTable& table,
                              double* frames,
                              int frameCount,
                              RecursionState* const* states,
                              int channelCount) noexcept
{
    runAny<8> (table, frames, frameCount, states, channelCount);
}
#endif
} // namespace

void runRecursion (const RateFilterTable& table,
                   double* frames,
                   int frameCount,
                   RecursionState* const* states,
                   int channelCount) noexcept
{
#if SOLVANE_HAS_FUNCTION_VERSIONS
    switch (simdLevel())
    {
        case SimdLevel::v4:
            return runV4 (table, frames, frameCount, states, channelCount);
        case SimdLevel::v3:
            return runV3 (table, frames, frameCount, states, channelCount);
        case SimdLevel::baseline:
            break;
    }
#endif

    runAny<2> (table, frames, frameCount, states, channelCount);
}
