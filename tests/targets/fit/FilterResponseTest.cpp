#include "targets/fit/FilterResponse.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace
{
constexpr std::array frequencies { 50.0, 320.0, 1000.0, 3000.0, 8000.0, 15000.0 };

FilterResponse responseIn (FilterMode mode, FilterPhase phase = FilterPhase::linear)
{
    return { 48000.0, mode, phase, frequencies };
}

double decibels (const FilterResponse& response, std::size_t index, double low, double high)
{
    return 10.0 * std::log10 (response.powerAt (index, low, high).value);
}

TEST (FilterResponseTest, withoutBandsNothingChanges)
{
    const auto response = responseIn (FilterMode::mix);

    for (std::size_t index = 0; index < response.size(); ++index)
        EXPECT_EQ (response.powerAt (index, 0.0, 0.0).value, 1.0);
}

TEST (FilterResponseTest, aBandHasItsGainAtItsFrequency)
{
    const auto response = responseIn (FilterMode::mix);
    const auto low = response.deviationOf ({ 1000.0, 6.0, 1.0, false });
    const auto high = response.deviationOf ({ 8000.0, -6.0, 1.0, false });
    EXPECT_NEAR (decibels (response, 2, low[2], 0.0), 6.0, 0.1);
    EXPECT_NEAR (decibels (response, 4, 0.0, high[4]), -6.0, 0.1);
}

TEST (FilterResponseTest, aLowBandEndsWithTheReducedRate)
{
    const auto response = responseIn (FilterMode::mix);
    const auto low = response.deviationOf ({ 1000.0, 12.0, 0.5, false });
    EXPECT_GT (decibels (response, 2, low[2], 0.0), 11.0);
    EXPECT_NEAR (decibels (response, 4, low[4], 0.0), 0.0, 0.01);
    EXPECT_NEAR (decibels (response, 5, low[5], 0.0), 0.0, 0.01);
}

TEST (FilterResponseTest, thePowersSlopesAreThoseOfItsDifferences)
{
    const auto response = responseIn (FilterMode::master);
    constexpr auto step = 1e-6;

    for (std::size_t index = 0; index < response.size(); ++index)
    {
        const auto power = [&] (double low, double high) { return response.powerAt (index, low, high).value; };
        const auto at = response.powerAt (index, 0.4, -0.3);
        EXPECT_NEAR (at.perLow, (power (0.4 + step, -0.3) - power (0.4 - step, -0.3)) / (2.0 * step), 1e-6);
        EXPECT_NEAR (at.perHigh, (power (0.4, -0.3 + step) - power (0.4, -0.3 - step)) / (2.0 * step), 1e-6);
    }
}

TEST (FilterResponseTest, broadDeepCutsCanBeMadeInLinearPhaseAlone)
{
    const std::vector<FitBand> bands { { 3000.0, -12.0, 1.0, true } };
    const auto canBeMade = [] (FilterPhase phase, const std::vector<FitBand>& asked)
    { return responseIn (FilterMode::mix, phase).highPowers (asked).has_value(); };

    EXPECT_TRUE (canBeMade (FilterPhase::linear, bands));
    EXPECT_FALSE (canBeMade (FilterPhase::minimum, bands));
    EXPECT_TRUE (canBeMade (FilterPhase::minimum, { { 3000.0, -3.0, 1.0, true } }));
    EXPECT_TRUE (canBeMade (FilterPhase::minimum, { { 1000.0, -12.0, 0.5, false } }));
}

TEST (FilterResponseTest, theHighSideOfTheLinearPhaseIsWhatTheSumsSay)
{
    const auto response = responseIn (FilterMode::mix);
    const std::vector<FitBand> bands { { 3000.0, -6.0, 1.0, false }, { 8000.0, 4.0, 1.0, true } };
    const auto powers = response.highPowers (bands).value();
    const auto first = response.deviationOf (bands[0]);
    const auto second = response.deviationOf (bands[1]);

    for (std::size_t index = 0; index < response.size(); ++index)
        EXPECT_NEAR (powers[index], response.powerAt (index, 0.0, first[index] + second[index]).value, 1e-9);
}
} // namespace
