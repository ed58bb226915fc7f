#include "targets/fit/FitPowers.h"

#include <algorithm>
#include <functional>

FitPowers::FitPowers (const FilterResponse& response, const std::vector<FitBand>& bands)
    : values (response.size()), perLow (response.size()), perHigh (response.size())
{
    std::vector<double> low (response.size());
    std::vector<double> high (response.size());

    for (const auto& band : bands)
    {
        auto& sums = band.isLow() ? low : high;
        deviations.push_back (response.deviationOf (band));
        std::ranges::transform (sums, deviations.back(), sums.begin(), std::plus());
    }

    for (std::size_t index = 0; index < values.size(); ++index)
    {
        const auto power = response.powerAt (index, low[index], high[index]);
        values[index] = power.value;
        perLow[index] = power.perLow;
        perHigh[index] = power.perHigh;
    }
}
