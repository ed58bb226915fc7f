#pragma once

#include "targets/fit/FilterResponse.h"

#include <vector>

/** What bands together do to power, at each of a response's frequencies, with the slopes over the sums of the two
   sides' amplitudes. */
struct FitPowers
{
    FitPowers (const FilterResponse& response, const std::vector<FitBand>& bands);

    /** What each band adds to its side's sum. */
    std::vector<std::vector<double>> deviations;

    std::vector<double> values;
    std::vector<double> perLow;
    std::vector<double> perHigh;
};
