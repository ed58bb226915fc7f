#include "targets/fit/FitPrediction.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace
{
/** -90 dB: a null is deep enough there, and has a slope out of it. */
constexpr double leastPower = 1e-9;

double decibelsOf (double power)
{
    return 10.0 * std::log10 (std::max (power, leastPower));
}

double changeOf (const HeardSpectrum::Shares& shares, std::span<const double> powers)
{
    return decibelsOf (std::inner_product (shares.begin(), shares.end(), powers.begin(), 0.0));
}
} // namespace

FitPrediction::FitPrediction (const HeardSpectrum& spectrum, std::span<const double> powers)
    : overall (changeOf (spectrum.overall(), powers)), response (powers.size())
{
    for (std::size_t band = 0; band < bands.size(); ++band)
        bands[band] = spectrum.band (band).empty() ? std::numeric_limits<double>::quiet_NaN()
                                                   : changeOf (spectrum.band (band), powers);

    std::ranges::transform (powers, response.begin(), decibelsOf);
}
