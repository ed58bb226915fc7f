#pragma once

#include "targets/fit/HeardSpectrum.h"

#include <array>
#include <span>
#include <vector>

/** What the meters would read more or less behind an equaliser: from its power factors and what the meters hear. */
struct FitPrediction
{
    /** @param powers the equaliser's factor at each of the spectrum's frequencies */
    FitPrediction (const HeardSpectrum& spectrum, std::span<const double> powers);

    /** Changes in dB. */
    double overall = 0.0;

    /** Not a number for a band without a reading. */
    std::array<double, analysisBandCount> bands {};

    /** The equaliser itself, in dB. */
    std::vector<double> response;
};
