#include "app/HeardResponse.h"
#include "targets/fit/FilterResponse.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace
{
constexpr std::array frequencies {
    60.0,   150.0,  320.0,  500.0,  640.0,  900.0,   1000.0,  1400.0,  1800.0,  2000.0,
    2500.0, 3000.0, 3600.0, 4000.0, 6000.0, 10000.0, 13000.0, 15000.0, 18000.0, 19500.0
};

const std::vector<FitBand> bands { { 480.0, 7.2, 2.0, false },  { 1250.0, -5.0, 0.7, false },
                                   { 2100.0, 4.0, 1.5, false }, { 5200.0, -6.0, 1.0, true },
                                   { 9000.0, 6.0, 1.2, false }, { 14000.0, -3.0, 0.5, false } };

struct ResponseCase
{
    double rate;
    FilterMode mode;
    FilterPhase phase;
    double toleranceDb;
};

/** What is predicted of the filters, and what an impulse through the whole plug-in comes out as. */
class PredictedResponseTest : public testing::TestWithParam<ResponseCase>
{
};

TEST_P (PredictedResponseTest, isWhatIsHeard)
{
    const auto& tested = GetParam();
    EqualiserSettings settings;
    settings.mode = tested.mode;
    settings.phase = tested.phase;

    for (const auto& band : bands)
    {
        // Master holds what is asked for at 4 dB.
        BandOption option;
        option.frequencyHz = static_cast<float> (band.frequencyHz);
        option.gainDb = static_cast<float> (band.gainDb * (tested.mode == FilterMode::master ? 0.5 : 1.0));
        option.q = static_cast<float> (std::max (0.5, band.q * (tested.mode == FilterMode::master ? 0.7 : 1.0)));
        option.highShelf = band.highShelf;
        settings.bands.push_back (option);
    }

    HeardResponse heard (tested.rate, 2, settings);
    const FilterResponse predicted (tested.rate, tested.mode, tested.phase, frequencies);
    std::vector<double> low (frequencies.size());
    std::vector<double> high (frequencies.size());
    std::vector<FitBand> held;

    for (const auto& option : settings.bands)
    {
        // As the parameters hold it.
        const FitBand band { static_cast<double> (option.frequencyHz),
                             0.1 * std::round (10.0 * static_cast<double> (option.gainDb)),
                             0.1 * std::round (10.0 * static_cast<double> (option.q)),
                             option.highShelf };
        const auto deviation = predicted.deviationOf (band);
        held.push_back (band);

        for (std::size_t index = 0; index < frequencies.size(); ++index)
            (band.isLow() ? low : high)[index] += deviation[index];
    }

    const auto highPowers = predicted.highPowers (held).value();

    for (std::size_t index = 0; index < frequencies.size(); ++index)
    {
        const auto inDecibels = [] (double power) { return 10.0 * std::log10 (power); };
        const auto level = heard.decibelsAt (HeardResponse::Signal::middle, frequencies[index]);
        EXPECT_NEAR (inDecibels (predicted.powerAt (index, low[index], high[index]).value), level, tested.toleranceDb)
            << frequencies[index];
        EXPECT_NEAR (inDecibels (predicted.powerAt (index, low[index], 0.0).value * highPowers[index]), level, 0.02)
            << frequencies[index];
    }
}

INSTANTIATE_TEST_SUITE_P (Filters,
                          PredictedResponseTest,
                          testing::Values (ResponseCase { 44100.0, FilterMode::mix, FilterPhase::linear, 0.02 },
                                           ResponseCase { 48000.0, FilterMode::master, FilterPhase::linear, 0.02 },
                                           ResponseCase { 96000.0, FilterMode::mix, FilterPhase::linear, 0.02 },
                                           ResponseCase { 96000.0, FilterMode::master, FilterPhase::linear, 0.02 },
                                           ResponseCase { 192000.0, FilterMode::mix, FilterPhase::linear, 0.02 },

                                           // The filter that is heard is half as long as the one that it is made from.
                                           ResponseCase { 48000.0, FilterMode::mix, FilterPhase::minimum, 0.3 },
                                           ResponseCase { 96000.0, FilterMode::master, FilterPhase::minimum, 2.0 }),
                          [] (const auto& tested)
                          {
                              return std::to_string (static_cast<int> (tested.param.rate))
                                     + (tested.param.mode == FilterMode::mix ? "Mix" : "Master")
                                     + (tested.param.phase == FilterPhase::linear ? "Linear" : "Minimum");
                          });
} // namespace
