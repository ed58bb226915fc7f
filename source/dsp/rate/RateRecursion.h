#pragma once

#include "dsp/rate/RateFilterTable.h"

#include <array>

/** The newest results of one channel's recursion, the newest last. */
using RecursionState = std::array<double, RateFilterTable::maxOrder>;

/** Runs a rate filter's recursion at the reduced rate in place: each value becomes itself less the coefficients times
    the `order` results before it, taken off from the oldest to the newest. One or two channels lie interleaved in
    `frames`, each with its own state.

    The same bits come out whatever the level of vector code, the count per call, or the number of channels.
    Real-time safe. */
void runRecursion (const RateFilterTable& table,
                   double* frames,
                   int frameCount,
                   RecursionState* const* states,
                   int channelCount) noexcept;
