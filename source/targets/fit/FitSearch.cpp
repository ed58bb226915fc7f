#include "targets/fit/FitSearch.h"

#include "targets/fit/FitPowers.h"

#include <nlopt.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <span>
#include <type_traits>

namespace
{
/** The optimiser's numbers for a band: octaves above 1 kHz, gain in units of 6 dB, octaves of Q. */
constexpr std::size_t numbersPerBand = 3;
constexpr double originHz = 1000.0;
constexpr double gainUnitDb = 6.0;

/** A step of these numbers for slopes: small beside any bend, large beside the rounding of a band's settings, which are
    in single precision. */
constexpr double slopeStep = 0.002;

/** Distance of a band from the split of the sides, as a ratio, so that no step leads across. */
constexpr double splitMargin = 1.02;

/** Per dB squared of a band's gain, and per octave squared of Q above the free one. */
constexpr double sizeWeight = 0.002;
constexpr double narrowWeight = 0.1;
constexpr double freeQ = 1.4;

/** Where the search ends: evaluations, and the share of the cost that the last step took off. */
constexpr int mostEvaluations = 40;
constexpr double smallestShare = 1e-4;

using Numbers = std::span<const double>;

struct Bounds
{
    double low;
    double high;
};

Bounds frequencyBounds (const FitBand& band)
{
    if (band.highShelf)
        return { FitLimits::lowestShelfHz, FitLimits::highestShelfHz };

    return band.isLow() ? Bounds { FitLimits::lowestHz, lowPathLimitHz / splitMargin }
                        : Bounds { lowPathLimitHz * splitMargin, FitLimits::highestHz };
}

double octavesTooNarrow (const FitBand& band)
{
    return band.highShelf ? 0.0 : std::max (0.0, std::log2 (band.q / freeQ));
}

double sizeCost (const std::vector<FitBand>& bands)
{
    auto sum = 0.0;

    for (const auto& band : bands)
        sum +=
            sizeWeight * band.gainDb * band.gainDb + narrowWeight * octavesTooNarrow (band) * octavesTooNarrow (band);

    return sum;
}

/** The bands as numbers, their cost and its slopes. */
class Problem
{
public:
    Problem (const FilterResponse& filters, const FitCost& costs, const std::vector<FitBand>& start)
        : response (filters), cost (costs), like (start)
    {
    }

    [[nodiscard]] std::vector<double> numbers() const
    {
        std::vector<double> result;

        for (const auto& band : like)
            result.insert (result.end(),
                           { std::log2 (band.frequencyHz / originHz), band.gainDb / gainUnitDb, std::log2 (band.q) });

        return result;
    }

    [[nodiscard]] std::vector<FitBand> bandsOf (Numbers values) const
    {
        std::vector<FitBand> bands;

        for (std::size_t index = 0; index < like.size(); ++index)
            bands.push_back (bandOf (values.subspan (index * numbersPerBand, numbersPerBand), like[index].highShelf));

        return bands;
    }

    [[nodiscard]] double at (Numbers values, std::span<double> slopes) const
    {
        const auto bands = bandsOf (values);
        const FitPowers powers (response, bands);

        if (slopes.empty())
            return cost.of (powers.values, {}) + sizeCost (bands);

        std::vector<double> perPower (powers.values.size());
        const auto result = cost.of (powers.values, perPower) + sizeCost (bands);

        for (std::size_t index = 0; index < bands.size(); ++index)
        {
            const auto& band = bands[index];
            auto perSum = band.isLow() ? powers.perLow : powers.perHigh;
            std::ranges::transform (perSum, perPower, perSum.begin(), std::multiplies());

            const auto first = index * numbersPerBand;
            const auto own = values.subspan (first, numbersPerBand);

            for (std::size_t number = 0; number < numbersPerBand; ++number)
                slopes[first + number] = slopeOf (own, number, band.highShelf, powers.deviations[index], perSum);

            slopes[first + 1] += 2.0 * sizeWeight * band.gainDb * gainUnitDb;
            slopes[first + 2] += 2.0 * narrowWeight * octavesTooNarrow (band);
        }

        return result;
    }

private:
    static FitBand bandOf (Numbers values, bool highShelf)
    {
        return { originHz * std::exp2 (values[0]), gainUnitDb * values[1], std::exp2 (values[2]), highShelf };
    }

    [[nodiscard]] double slopeOf (Numbers own,
                                  std::size_t number,
                                  bool highShelf,
                                  const std::vector<double>& here,
                                  const std::vector<double>& perSum) const
    {
        if (highShelf && number == 2)
            return 0.0;

        std::vector<double> moved (own.begin(), own.end());
        moved[number] += slopeStep;
        const auto there = response.deviationOf (bandOf (moved, highShelf));
        auto slope = 0.0;

        for (std::size_t index = 0; index < perSum.size(); ++index)
            slope += perSum[index] * (there[index] - here[index]);

        return slope / slopeStep;
    }

    const FilterResponse& response;
    const FitCost& cost;
    const std::vector<FitBand>& like;
};

double objective (unsigned count, const double* values, double* slopes, void* problem)
{
    return static_cast<const Problem*> (problem)->at ({ values, count }, { slopes, slopes == nullptr ? 0 : count });
}
} // namespace

FitSearch::FitSearch (const FilterResponse& filters, const FitCost& costs, const FitLimits& limitsToKeep)
    : response (filters), cost (costs), limits (limitsToKeep)
{
}

double FitSearch::costOf (const std::vector<FitBand>& bands) const
{
    return cost.of (FitPowers (response, bands).values, {}) + sizeCost (bands);
}

std::vector<FitBand> FitSearch::improved (const std::vector<FitBand>& bands, Moves moves) const
{
    if (bands.empty())
        return bands;

    Problem problem (response, cost, bands);
    auto numbers = problem.numbers();
    std::vector<double> low, high;

    for (std::size_t index = 0; index < bands.size(); ++index)
    {
        const auto frequency = frequencyBounds (bands[index]);
        low.insert (low.end(),
                    { std::log2 (frequency.low / originHz), -limits.gainDb / gainUnitDb, std::log2 (limits.lowestQ) });
        high.insert (
            high.end(),
            { std::log2 (frequency.high / originHz), limits.gainDb / gainUnitDb, std::log2 (limits.highestQ) });
    }

    for (std::size_t index = 0; index < numbers.size(); ++index)
    {
        numbers[index] = std::clamp (numbers[index], low[index], high[index]);

        if (moves == Moves::gainsOnly && index % numbersPerBand != 1)
            low[index] = high[index] = numbers[index];
    }

    const std::unique_ptr<std::remove_pointer_t<nlopt_opt>, decltype (&nlopt_destroy)> optimiser (
        nlopt_create (NLOPT_LD_SLSQP, static_cast<unsigned> (numbers.size())), &nlopt_destroy);

    if (optimiser == nullptr)
        return bands;

    nlopt_set_lower_bounds (optimiser.get(), low.data());
    nlopt_set_upper_bounds (optimiser.get(), high.data());
    nlopt_set_min_objective (optimiser.get(), objective, &problem);
    nlopt_set_maxeval (optimiser.get(), mostEvaluations);
    nlopt_set_ftol_rel (optimiser.get(), smallestShare);

    auto least = 0.0;

    // A search that gave up on rounding has moved on all the same; what it made is judged by its cost.
    nlopt_optimize (optimiser.get(), numbers.data(), &least);
    const auto found = problem.bandsOf (numbers);
    return costOf (found) < costOf (bands) ? found : bands;
}
