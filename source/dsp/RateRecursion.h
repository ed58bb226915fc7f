#pragma once

struct RateFilterTable;

/** Runs a rate filter's recursion at the reduced rate in place: each value becomes itself less the coefficients times
    the `order` results before it, taken off from the oldest to the newest. One or two channels lie interleaved, and
    RateFilterTable::maxOrder earlier frames of results lie before `frames`.

    The same bits come out whatever the level of vector code, the count per call, or the number of channels.
    Real-time safe. */
void runRecursion (const RateFilterTable& table, double* frames, int channelCount, int frameCount) noexcept;
