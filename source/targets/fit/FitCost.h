#pragma once

#include "targets/fit/FitGoal.h"
#include "targets/fit/FitPrediction.h"

#include <span>
#include <vector>

/** How far a prediction is from a goal, as one number, and which way leads down.

    Mostly the squares of what the meters would leave to adjust. Beside them, with little weight, how far the response
    leaves the wanted curve between the meters, above 10 kHz by its mean alone, since no ear follows bends there; slopes
    that the curve has not; and, with much weight, whatever lies beyond the goal's limits, or makes the whole louder or
    softer. */
class FitCost
{
public:
    /** Both are for the same frequencies, which are rising, at equal steps of octaves, and are kept by reference.
        @param lowestMeanDb what the response's mean over frequency may not fall below */
    FitCost (const HeardSpectrum& spectrum,
             const FitGoal& goal,
             std::span<const double> frequenciesHz,
             double lowestMeanDb);

    /** @param slopes takes the cost's slope over each power factor, unless it is empty */
    [[nodiscard]] double of (std::span<const double> powers, std::span<double> slopes) const;

private:
    struct Sum;

    void addMeters (Sum& sum) const;
    void addCurve (Sum& sum) const;
    void addSlopes (Sum& sum) const;
    void addLimits (Sum& sum) const;
    void slopesOverPowers (const Sum& sum, std::span<const double> powers, std::span<double> slopes) const;

    const HeardSpectrum& spectrum;
    const FitGoal& goal;
    std::vector<double> curveWeights;
    std::vector<double> topWeights;
    std::vector<double> meanWeights;
    double lowestMean;
    double octave; ///< a step of the frequencies
};
