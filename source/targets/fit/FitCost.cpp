#include "targets/fit/FitCost.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <utility>

namespace
{
/** Per octave of the curve, beside 1 for each meter. */
constexpr double curveWeight = 0.05;
constexpr double curveLowHz = 280.0;
constexpr double curveHighHz = 10000.0;

/** Of the mean above. */
constexpr double topWeight = 0.1;

/** Per octave, for dB per octave beyond what the curve has and this. */
constexpr double slopeWeight = 0.05;
constexpr double freeSlopeDb = 6.0;

/** Per octave, for what lies beyond the limits; these lie a little inside the goal's, since a penalty gives way. */
constexpr double limitWeight = 60.0;
constexpr double limitMarginDb = 0.7;

constexpr double loudnessWeight = 0.02;
constexpr double softLoudnessDb = 3.0;
constexpr double keptLoudnessWeight = 2.0;

constexpr double decibelsPerNeper = 4.342944819032518;
constexpr double leastPower = 1e-9;

/** A penalty's root: how far a value lies outside of a range. */
double outside (double value, double low, double high)
{
    return value < low ? value - low : value > high ? value - high : 0.0;
}
} // namespace

FitCost::FitCost (const HeardSpectrum& spectrumToUse,
                  const FitGoal& goalToReach,
                  std::span<const double> frequenciesHz,
                  double lowestMeanDb)
    : spectrum (spectrumToUse),
      goal (goalToReach),
      lowestMean (lowestMeanDb + limitMarginDb),
      octave (std::log2 (frequenciesHz[1] / frequenciesHz[0]))
{
    auto topCount = 0.0;

    for (const auto hz : frequenciesHz)
    {
        curveWeights.push_back (hz >= curveLowHz && hz <= curveHighHz ? curveWeight * octave : 0.0);
        topWeights.push_back (hz > curveHighHz ? 1.0 : 0.0);
        topCount += topWeights.back();
    }

    for (auto& weight : topWeights)
        weight /= std::max (topCount, 1.0);

    // At equal steps of octaves a point stands for as much as its frequency is high.
    const auto sum = std::accumulate (frequenciesHz.begin(), frequenciesHz.end(), 0.0);

    for (const auto hz : frequenciesHz)
        meanWeights.push_back (hz / sum);
}

/** Squares that add up, with the slopes of their sum over the meters' changes and over the response in dB. */
struct FitCost::Sum
{
    explicit Sum (FitPrediction predicted)
        : prediction (std::move (predicted)), perResponse (prediction.response.size())
    {
    }

    /** A square, and the slope of it over what is squared. */
    double add (double weight, double rest) noexcept
    {
        cost += weight * rest * rest;
        return 2.0 * weight * rest;
    }

    const FitPrediction prediction;
    double cost = 0.0;
    std::array<double, analysisBandCount> perBand {};
    double perOverall = 0.0;
    std::vector<double> perResponse;
};

double FitCost::of (std::span<const double> powers, std::span<double> slopes) const
{
    Sum sum (FitPrediction (spectrum, powers));
    addMeters (sum);
    addCurve (sum);
    addSlopes (sum);
    addLimits (sum);

    if (! slopes.empty())
        slopesOverPowers (sum, powers, slopes);

    return sum.cost;
}

void FitCost::addMeters (Sum& sum) const
{
    const auto& prediction = sum.prediction;

    for (std::size_t band = 0; band < analysisBandCount; ++band)
        if (goal.counts (band) && std::isfinite (prediction.bands[band]))
        {
            const auto slope = sum.add (1.0, prediction.bands[band] - prediction.overall - goal.adjustment (band));
            sum.perBand[band] += slope;
            sum.perOverall -= slope;
        }
}

void FitCost::addCurve (Sum& sum) const
{
    const auto& response = sum.prediction.response;
    auto topRest = 0.0;

    for (std::size_t index = 0; index < response.size(); ++index)
    {
        const auto rest = response[index] - sum.prediction.overall - goal.curve()[index];
        const auto slope = sum.add (curveWeights[index], rest);
        sum.perResponse[index] += slope;
        sum.perOverall -= slope;
        topRest += topWeights[index] * rest;
    }

    const auto slope = sum.add (topWeight, topRest);
    sum.perOverall -= slope;

    for (std::size_t index = 0; index < response.size(); ++index)
        sum.perResponse[index] += slope * topWeights[index];
}

void FitCost::addSlopes (Sum& sum) const
{
    const auto& response = sum.prediction.response;
    const auto& wanted = goal.curve();

    for (std::size_t index = 1; index < response.size(); ++index)
    {
        const auto own = (response[index] - response[index - 1]) / octave;
        const auto asked = (wanted[index] - wanted[index - 1]) / octave;
        const auto slope =
            sum.add (slopeWeight * octave,
                     outside (own, std::min (asked, 0.0) - freeSlopeDb, std::max (asked, 0.0) + freeSlopeDb))
            / octave;
        sum.perResponse[index] += slope;
        sum.perResponse[index - 1] -= slope;
    }
}

void FitCost::addLimits (Sum& sum) const
{
    const auto& response = sum.prediction.response;
    const auto overall = sum.prediction.overall;
    const auto kept = overall < 0.0 ? goal.keptDropDb() : goal.keptRiseDb();
    const auto floor = goal.floor() + limitMarginDb;
    const auto makeUp = goal.makeUpDb (overall);
    const auto makeUpSlope = makeUp == 0.0 ? 0.0 : -1.0;

    for (std::size_t index = 0; index < response.size(); ++index)
    {
        const auto ceiling = goal.ceiling (index) - (goal.isSilent (index) ? 0.0 : limitMarginDb);
        sum.perResponse[index] += sum.add (limitWeight * octave, outside (response[index], floor, ceiling));

        // With the output gain as well.
        const auto slope = sum.add (limitWeight * octave, outside (response[index] + makeUp, floor, ceiling));
        sum.perResponse[index] += slope;
        sum.perOverall += slope * makeUpSlope;
    }

    // Of a change that may be kept there is better none that may not, which the output gain would bend off.
    sum.perOverall += kept == 0.0 ? sum.add (loudnessWeight, outside (overall, -softLoudnessDb, softLoudnessDb))
                                  : sum.add (keptLoudnessWeight, outside (overall, -kept, kept));

    const auto mean = std::inner_product (response.begin(), response.end(), meanWeights.begin(), 0.0);
    const auto slope = sum.add (limitWeight, std::min (mean - lowestMean, 0.0));

    for (std::size_t index = 0; index < response.size(); ++index)
        sum.perResponse[index] += slope * meanWeights[index];
}

void FitCost::slopesOverPowers (const Sum& sum, std::span<const double> powers, std::span<double> slopes) const
{
    for (std::size_t index = 0; index < slopes.size(); ++index)
        slopes[index] = sum.perResponse[index] * decibelsPerNeper / std::max (powers[index], leastPower);

    const auto spread = [&slopes] (const HeardSpectrum::Shares& shares, double perChange, double change)
    {
        const auto factor = perChange * decibelsPerNeper / std::pow (10.0, 0.1 * change);

        for (std::size_t index = 0; index < slopes.size(); ++index)
            slopes[index] += factor * shares[index];
    };

    spread (spectrum.overall(), sum.perOverall, sum.prediction.overall);

    for (std::size_t band = 0; band < analysisBandCount; ++band)
        if (sum.perBand[band] != 0.0)
            spread (spectrum.band (band), sum.perBand[band], sum.prediction.bands[band]);
}
