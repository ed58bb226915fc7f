#include "targets/fit/FitHills.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace
{
/** No cut leaves less of an amplitude. */
constexpr double leastAmplitude = 0.1;

double amplitudeOf (double decibels)
{
    return std::pow (10.0, 0.05 * decibels);
}

/** The hill from `start` up to `end`. */
FitHill hillBetween (std::span<const double> frequenciesHz,
                     std::span<const double> errorDb,
                     std::span<const double> responseDb,
                     std::size_t start,
                     std::size_t end)
{
    const auto height = [&] (std::size_t index) { return std::abs (errorDb[index]); };
    auto peak = start;
    FitHill hill;

    for (auto index = start; index < end; ++index)
    {
        hill.area += height (index);

        if (height (index) > height (peak))
            peak = index;
    }

    auto low = peak;
    auto high = peak;

    while (low > start && height (low) > 0.5 * height (peak))
        --low;

    while (high + 1 < end && height (high) > 0.5 * height (peak))
        ++high;

    const auto missing = amplitudeOf (responseDb[peak] + errorDb[peak]) - amplitudeOf (responseDb[peak]);
    hill.gainDb = 20.0 * std::log10 (std::max (1.0 + missing, leastAmplitude));
    hill.peakHz = frequenciesHz[peak];
    hill.lowHz = frequenciesHz[low];
    hill.highHz = frequenciesHz[high];
    hill.reachesTop = end == errorDb.size();
    return hill;
}
} // namespace

std::vector<FitHill>
fitHills (std::span<const double> frequenciesHz, std::span<const double> errorDb, std::span<const double> responseDb)
{
    std::vector<FitHill> hills;

    for (std::size_t start = 0; start < errorDb.size();)
    {
        auto end = start + 1;

        while (end < errorDb.size() && (errorDb[end] > 0.0) == (errorDb[start] > 0.0))
            ++end;

        hills.push_back (hillBetween (frequenciesHz, errorDb, responseDb, start, end));
        start = end;
    }

    std::ranges::stable_sort (hills, std::ranges::greater(), &FitHill::area);
    return hills;
}
