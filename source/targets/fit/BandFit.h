#pragma once

#include "targets/SmartBands.h"
#include "targets/fit/FitTask.h"

#include <vector>

/** Bands that were found by least squares. */
struct FittedBands
{
    std::vector<SmartBands::Setting> bands;

    /** The output gain in dB with which they are no jump in level, as predicted: within 12 dB. */
    float outputGainDb = 0.0f;
};

/** Finds up to ten bands whose gains, frequencies and Qs together bring what the meters read nearest to what is wanted,
    as far as can be told from the task's numbers without the recording.

    They keep the mode's limits and a Q of 2, stand in the steps of their parameters, leave no frequency more than 3 dB
    outside of what is wanted anywhere nor above 20 dB (15 at the ends of the range) or below -24, and lift no band in
    which there is nothing. There is none where no adjustment is as large as 0.5 dB, and none without a loudness. The
   same task gives the same bands. Takes some tenths of a second; allocates. Any thread. */
[[nodiscard]] FittedBands fitBands (const FitTask& task);
