#include "targets/fit/BandFit.h"

#include "targets/DisplayCurve.h"
#include "targets/fit/FitGrid.h"
#include "targets/fit/FitGuard.h"
#include "targets/fit/FitHills.h"
#include "targets/fit/FitPowers.h"
#include "targets/fit/FitSearch.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace
{
using Bands = std::vector<FitBand>;

constexpr std::size_t mostBands = 10;
constexpr double pointsPerOctave = 16.0;

/** As for smart bands: less is not worth a band. */
constexpr double smallestWorkDb = 0.5;

/** What the meters may leave, as the mean of squares. */
constexpr double nearEnough = 0.01;

/** A band has its place if the cost without it is higher by more than this share. */
constexpr double smallestShare = 0.01;

/** Where the next band may stand: on one of the largest hills. */
constexpr std::size_t mostHills = 3;
constexpr double smallestOctaves = 0.2;

/** When the guard refuses, all gains shrink by this factor; at the end nothing is left of them. */
constexpr double shrinkFactor = 0.93;
constexpr int mostShrinks = 40;

/** Half of a gain's step. */
constexpr double noGainDb = 0.05;

double toTenths (double value)
{
    return 0.1 * std::round (10.0 * value);
}

/** Places bands one after the other, and lets all move whenever one has come. */
class Placement
{
public:
    explicit Placement (const FitTask& task)
        : limits (FitLimits::of (task.mode)),
          frequencies (fitGrid (pointsPerOctave)),
          spectrum (task.lufs, task.bands, task.sampleRate, frequencies),
          goal (task, frequencies),
          response (task.sampleRate, task.mode, task.phase, frequencies),
          cost (spectrum, goal, frequencies, response.lowestMeanDb()),
          search (response, cost, limits)
    {
    }

    [[nodiscard]] Bands run() const
    {
        Bands bands;

        if (goal.largestAdjustment() < smallestWorkDb)
            return bands;

        while (bands.size() < mostBands && remainder (bands) > nearEnough)
        {
            const auto more = withOneMore (bands);

            if (! more.has_value())
                break;

            bands = *more;
        }

        while (const auto fewer = withOneLess (bands))
            bands = *fewer;

        return inSteps (bands);
    }

private:
    /** The cheapest of several bands' sets, if it costs less than a limit. */
    [[nodiscard]] std::optional<Bands> cheapest (const std::vector<Bands>& choices, double limit) const
    {
        std::optional<Bands> best;

        for (const auto& choice : choices)
        {
            const auto moved = search.improved (choice, FitSearch::Moves::everything);

            if (const auto now = search.costOf (moved); now < limit)
            {
                limit = now;
                best = moved;
            }
        }

        return best;
    }

    [[nodiscard]] std::optional<Bands> withOneMore (const Bands& bands) const
    {
        std::vector<Bands> choices;

        for (const auto& candidate : candidates (bands))
        {
            choices.push_back (bands);
            choices.back().push_back (candidate);
        }

        return cheapest (choices, search.costOf (bands) * (1.0 - smallestShare));
    }

    [[nodiscard]] std::optional<Bands> withOneLess (const Bands& bands) const
    {
        std::vector<Bands> choices;

        for (std::size_t index = 0; index < bands.size(); ++index)
        {
            choices.push_back (bands);
            choices.back().erase (choices.back().begin() + static_cast<std::ptrdiff_t> (index));
        }

        return cheapest (choices, search.costOf (bands) * (1.0 + smallestShare));
    }

    /** Bells on the largest hills; at the top of the range shelves as well. */
    [[nodiscard]] Bands candidates (const Bands& bands) const
    {
        const auto hills = largestHills (bands);
        Bands result;

        for (const auto& hill : hills)
        {
            const auto octaves = std::max (std::log2 (hill.highHz / hill.lowHz), smallestOctaves);
            const auto gain = std::clamp (hill.gainDb, -limits.gainDb, limits.gainDb);
            const auto q =
                std::clamp (std::exp2 (0.5 * octaves) / (std::exp2 (octaves) - 1.0), limits.lowestQ, limits.highestQ);
            result.push_back ({ std::clamp (hill.peakHz, FitLimits::lowestHz, FitLimits::highestHz), gain, q, false });

            if (hill.reachesTop && hill.lowHz > FitLimits::lowestShelfHz)
                result.push_back ({ std::min (hill.lowHz, FitLimits::highestShelfHz), gain, 1.0, true });
        }

        return result;
    }

    [[nodiscard]] std::vector<FitHill> largestHills (const Bands& bands) const
    {
        const auto prediction = predictionOf (bands);
        const auto first = static_cast<std::size_t> (std::ranges::lower_bound (frequencies, FitLimits::lowestHz)
                                                     - frequencies.begin());
        const auto places = std::span (frequencies).subspan (first);
        auto hills = fitHills (places,
                               DisplayCurve::valuesAt (places, left (prediction)),
                               std::span (prediction.response).subspan (first));
        hills.resize (std::min (hills.size(), mostHills));
        return hills;
    }

    [[nodiscard]] FitPrediction predictionOf (const Bands& bands) const
    {
        return { spectrum, FitPowers (response, bands).values };
    }

    /** What is left to adjust, in dB; above the highest band as there. */
    [[nodiscard]] FitTask::Levels left (const FitPrediction& prediction) const
    {
        FitTask::Levels result {};

        for (std::size_t band = 0; band < result.size(); ++band)
            if (goal.counts (band) && std::isfinite (prediction.bands[band]))
                result[band] =
                    static_cast<float> (goal.adjustment (band) + prediction.overall - prediction.bands[band]);

        result.back() = result[result.size() - 2];
        return result;
    }

    /** Its mean square. */
    [[nodiscard]] double remainder (const Bands& bands) const
    {
        auto sum = 0.0;

        for (const auto value : left (predictionOf (bands)))
            sum += static_cast<double> (value) * static_cast<double> (value);

        return sum / static_cast<double> (analysisBandCount);
    }

    /** In the steps of frequency and Q; the gains move once more. */
    [[nodiscard]] Bands inSteps (Bands bands) const
    {
        for (auto& band : bands)
        {
            band.frequencyHz = 10.0 * std::round (0.1 * band.frequencyHz);
            band.q = band.highShelf ? 1.0 : toTenths (band.q);
        }

        return search.improved (bands, FitSearch::Moves::gainsOnly);
    }

    const FitLimits limits;
    const std::vector<double> frequencies;
    const HeardSpectrum spectrum;
    const FitGoal goal;
    const FilterResponse response;
    const FitCost cost;
    const FitSearch search;
};

/** The bands with as much of their gains as the guard admits, in steps. */
Bands admitted (const Bands& bands, const FitGuard& guard)
{
    auto share = 1.0;

    for (int shrink = 0; shrink < mostShrinks; ++shrink, share *= shrinkFactor)
    {
        auto scaled = bands;

        for (auto& band : scaled)
            band.gainDb = toTenths (share * band.gainDb);

        std::erase_if (scaled, [] (const FitBand& band) { return std::abs (band.gainDb) < noGainDb; });

        if (guard.admits (scaled))
            return scaled;
    }

    return {};
}

SmartBands::Setting settingOf (const FitBand& band)
{
    return { .frequency = static_cast<int> (std::lround (band.frequencyHz)),
             .gain = static_cast<float> (band.gainDb),
             .q = static_cast<float> (band.q),
             .shelf = band.highShelf };
}
} // namespace

FittedBands fitBands (const FitTask& task)
{
    FittedBands result;

    if (! std::isfinite (task.lufs))
        return result;

    const FitGuard guard (task);
    auto bands = admitted (Placement (task).run(), guard);
    std::ranges::stable_sort (bands, {}, &FitBand::frequencyHz);
    std::ranges::transform (bands, std::back_inserter (result.bands), settingOf);
    result.outputGainDb = bands.empty() ? 0.0f : static_cast<float> (guard.makeUpDb (bands));
    return result;
}
