#include "dsp/RateRecursion.h"

#include "dsp/RateFilterTable.h"
#include "dsp/SimdLanes.h"
#include "dsp/SimdLevel.h"

#include <cstddef>

namespace
{
constexpr int framesAtOnce = RateFilterTable::framesAtOnce;

/** One frame: the plain order of subtractions that the groups below follow in each of their lanes. */
template <int order, int channelCount>
SOLVANE_ALWAYS_INLINE void runFrame (const RateFilterTable& table, double* frame) noexcept
{
    for (int c = 0; c < channelCount; ++c)
    {
        auto value = frame[c];

        for (int k = order; k > 0; --k)
            value -= table.recursive[static_cast<std::size_t> (k)] * frame[c - k * channelCount];

        frame[c] = value;
    }
}

/** Four frames at once. Results that are known already are taken off all four, and a coefficient of 0 takes nothing
    off where a frame's own past does not reach so far back; what the four owe each other follows one by one. */
template <int order, int channelCount, int lanes>
SOLVANE_ALWAYS_INLINE void runFourFrames (const RateFilterTable& table, double* frames) noexcept
{
    using Vector = typename SimdLanes<lanes>::Vector;
    constexpr auto vectorCount = framesAtOnce * channelCount / lanes;
    const auto* coefficients = channelCount == 2 ? table.recursiveInPairs.data() : table.recursive.data();
    Vector values[extent (vectorCount)];

    for (int v = 0; v < vectorCount; ++v)
        values[v] = lanesAt<lanes> (frames + v * lanes);

#pragma GCC unroll 24
    for (int k = order; k > 0; --k)
    {
        const auto* known = frames - k * channelCount;
        Vector repeated;

        for (int lane = 0; lane < lanes; ++lane)
            repeated[lane] = known[lane % channelCount];

        for (int v = 0; v < vectorCount; ++v)
            values[v] -= lanesAt<lanes> (coefficients + k * channelCount + v * lanes) * repeated;
    }

    for (int v = 0; v < vectorCount; ++v)
        lanesAt<lanes> (frames + v * lanes) = values[v];

    for (int frame = 1; frame < framesAtOnce; ++frame)
        for (int k = frame; k > 0; --k)
            for (int c = 0; c < channelCount; ++c)
                frames[frame * channelCount + c] -=
                    table.recursive[static_cast<std::size_t> (k)] * frames[(frame - k) * channelCount + c];
}

template <int order, int channelCount, int lanes>
SOLVANE_ALWAYS_INLINE void runFrames (const RateFilterTable& table, double* frames, int frameCount) noexcept
{
    auto frame = 0;

    for (; frame + framesAtOnce <= frameCount; frame += framesAtOnce)
        runFourFrames<order, channelCount, lanes> (table, frames + frame * channelCount);

    for (; frame < frameCount; ++frame)
        runFrame<order, channelCount> (table, frames + frame * channelCount);
}

template <int lanes>
SOLVANE_ALWAYS_INLINE void
runAny (const RateFilterTable& table, double* frames, int channelCount, int frameCount) noexcept
{
    constexpr auto singleLanes = lanes < framesAtOnce ? lanes : framesAtOnce;

    if (table.order == 24)
    {
        if (channelCount == 2)
            runFrames<24, 2, lanes> (table, frames, frameCount);
        else
            runFrames<24, 1, singleLanes> (table, frames, frameCount);
    }
    else
    {
        if (channelCount == 2)
            runFrames<16, 2, lanes> (table, frames, frameCount);
        else
            runFrames<16, 1, singleLanes> (table, frames, frameCount);
    }
}

#if SOLVANE_HAS_FUNCTION_VERSIONS
SOLVANE_TARGET_V3 void runV3 (const RateFilterTable& table, double* frames, int channelCount, int frameCount) noexcept
{
    runAny<4> (table, frames, channelCount, frameCount);
}

SOLVANE_TARGET_V4 void runV4 (const RateFilterTable& table, double* frames, int channelCount, int frameCount) noexcept
{
    runAny<8> (table, frames, channelCount, frameCount);
}
#endif
} // namespace

void runRecursion (const RateFilterTable& table, double* frames, int channelCount, int frameCount) noexcept
{
#if SOLVANE_HAS_FUNCTION_VERSIONS
    switch (simdLevel())
    {
        case SimdLevel::v4:
            return runV4 (table, frames, channelCount, frameCount);
        case SimdLevel::v3:
            return runV3 (table, frames, channelCount, frameCount);
        case SimdLevel::baseline:
            break;
    }
#endif

    runAny<2> (table, frames, channelCount, frameCount);
}
