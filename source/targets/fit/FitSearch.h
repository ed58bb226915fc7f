#pragma once

#include "targets/fit/FilterResponse.h"
#include "targets/fit/FitCost.h"
#include "targets/fit/FitLimits.h"

#include <vector>

/** Moves bands to where their cost is least. The same bands lead to the same ones. Allocates. */
class FitSearch
{
public:
    /** All three are kept by reference. */
    FitSearch (const FilterResponse& response, const FitCost& cost, const FitLimits& limits);

    /** What bands cost, with a little for their size: of those that sound alike the smaller and broader ones are
     * better.
     */
    [[nodiscard]] double costOf (const std::vector<FitBand>& bands) const;

    enum class Moves
    {
        everything,
        gainsOnly
    };

    /** Moves all bands together, each on its side of 1500 Hz and within the limits, and never to a higher cost. */
    [[nodiscard]] std::vector<FitBand> improved (const std::vector<FitBand>& bands, Moves moves) const;

private:
    const FilterResponse& response;
    const FitCost& cost;
    const FitLimits& limits;
};
