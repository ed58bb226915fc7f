#include "Measurement.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <ctime>

double Measurement::threadSeconds() noexcept
{
    timespec time {};
    clock_gettime (CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double> (time.tv_sec) + 1.0e-9 * static_cast<double> (time.tv_nsec);
}

double Measurement::quantile (std::vector<double> values, double fraction)
{
    if (values.empty())
        return 0.0;

    std::sort (values.begin(), values.end());
    return values[static_cast<std::size_t> (std::lround (fraction * static_cast<double> (values.size() - 1)))];
}

void Measurement::race (std::span<Entrant> entrants, int rounds)
{
    for (int round = -1; round < rounds; ++round)
        for (auto& entrant : entrants)
        {
            entrant.turn();

            const auto start = threadSeconds();
            entrant.turn();
            const auto seconds = threadSeconds() - start;

            if (round >= 0)
                entrant.nanoseconds.push_back (1.0e9 * seconds / entrant.unitsPerTurn);
        }
}
