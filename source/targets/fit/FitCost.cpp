#include "targets/fit/FitCost.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>

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
constexpr double freeLoudnessDb = 3.0;

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

double FitCost::of (std::span<const double> powers, std::span<double> slopes) const
{
    const FitPrediction prediction (spectrum, powers);
    const auto& response = prediction.response;
    const auto& wanted = goal.curve();
    const auto count = response.size();

    // Slopes of the cost over the meters' changes and over the response in dB; at the end over the powers.
    std::array<double, analysisBandCount> perBand {};
    auto perOverall = 0.0;
    std::vector<double> perResponse (count);
    auto cost = 0.0;

    for (std::size_t band = 0; band < analysisBandCount; ++band)
        if (goal.counts (band) && std::isfinite (prediction.bands[band]))
        {
            const auto rest = prediction.bands[band] - prediction.overall - goal.adjustment (band);
            cost += rest * rest;
            perBand[band] += 2.0 * rest;
            perOverall -= 2.0 * rest;
        }

    auto topRest = 0.0;

    for (std::size_t index = 0; index < count; ++index)
    {
        const auto rest = response[index] - prediction.overall - wanted[index];
        cost += curveWeights[index] * rest * rest;
        perResponse[index] += 2.0 * curveWeights[index] * rest;
        perOverall -= 2.0 * curveWeights[index] * rest;
        topRest += topWeights[index] * rest;

        const auto margin = goal.isSilent (index) ? 0.0 : limitMarginDb;
        const auto floor = goal.floor() + limitMarginDb;
        const auto ceiling = goal.ceiling (index) - margin;
        const auto beyond = outside (response[index], floor, ceiling);
        const auto beyondLevelled = outside (response[index] - prediction.overall, floor, ceiling);
        cost += limitWeight * octave * (beyond * beyond + beyondLevelled * beyondLevelled);
        perResponse[index] += 2.0 * limitWeight * octave * (beyond + beyondLevelled);
        perOverall -= 2.0 * limitWeight * octave * beyondLevelled;
    }

    cost += topWeight * topRest * topRest;

    for (std::size_t index = 0; index < count; ++index)
    {
        perResponse[index] += 2.0 * topWeight * topRest * topWeights[index];
        perOverall -= 2.0 * topWeight * topRest * topWeights[index];
    }

    for (std::size_t index = 1; index < count; ++index)
    {
        const auto own = (response[index] - response[index - 1]) / octave;
        const auto asked = (wanted[index] - wanted[index - 1]) / octave;
        const auto beyond = outside (own, std::min (asked, 0.0) - freeSlopeDb, std::max (asked, 0.0) + freeSlopeDb);
        cost += slopeWeight * octave * beyond * beyond;
        perResponse[index] += 2.0 * slopeWeight * beyond;
        perResponse[index - 1] -= 2.0 * slopeWeight * beyond;
    }

    const auto louder = outside (prediction.overall, -freeLoudnessDb, freeLoudnessDb);
    cost += loudnessWeight * louder * louder;
    perOverall += 2.0 * loudnessWeight * louder;

    const auto mean = std::inner_product (response.begin(), response.end(), meanWeights.begin(), 0.0);
    const auto tooLow = std::min (mean - lowestMean, 0.0);
    cost += limitWeight * tooLow * tooLow;

    for (std::size_t index = 0; index < count; ++index)
        perResponse[index] += 2.0 * limitWeight * tooLow * meanWeights[index];

    if (slopes.empty())
        return cost;

    const auto powerOf = [] (double change) { return std::pow (10.0, 0.1 * change); };
    const auto spread = [&] (const HeardSpectrum::Shares& shares, double perChange, double change)
    {
        const auto factor = perChange * decibelsPerNeper / powerOf (change);

        for (std::size_t index = 0; index < count; ++index)
            slopes[index] += factor * shares[index];
    };

    for (std::size_t index = 0; index < count; ++index)
        slopes[index] = perResponse[index] * decibelsPerNeper / std::max (powers[index], leastPower);

    spread (spectrum.overall(), perOverall, prediction.overall);

    for (std::size_t band = 0; band < analysisBandCount; ++band)
        if (perBand[band] != 0.0)
            spread (spectrum.band (band), perBand[band], prediction.bands[band]);

    return cost;
}
