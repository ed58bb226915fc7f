#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

/** Times are CPU times of the calling thread, so that what other threads and programs do at the same moment counts only
    where it slows this one down. */
namespace Measurement
{
/** CPU time that the calling thread has used, in seconds. */
[[nodiscard]] double threadSeconds() noexcept;

/** The value below which this fraction of the values lies. Values may be in any order; none gives 0. */
[[nodiscard]] double quantile (std::vector<double> values, double fraction);
[[nodiscard]] inline double median (std::vector<double> values)
{
    return quantile (std::move (values), 0.5);
}

/** Something that is measured beside others. */
struct Entrant
{
    std::string name;

    /** One turn, which handles `unitsPerTurn` units, such as sample frames. */
    std::function<void()> turn;
    double unitsPerTurn = 1.0;

    /** Filled in by the race: nanoseconds per unit, one value for each round. */
    std::vector<double> nanoseconds;

    [[nodiscard]] double medianNanoseconds() const { return median (nanoseconds); }
};

/** Lets every entrant take a turn in each round, after a round that does not count, so that a change of the machine's
    speed meets all of them alike. Before each turn that is timed comes one that is not: a core needs some tenths of a
    millisecond to bring its widest vectors to full speed, and who ran before must not decide about that. */
void race (std::span<Entrant> entrants, int rounds);
} // namespace Measurement
