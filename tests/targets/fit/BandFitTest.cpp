#include "targets/fit/BandFit.h"

#include "targets/fit/FitGoal.h"
#include "targets/fit/FitGrid.h"
#include "targets/fit/FitPowers.h"
#include "targets/fit/FitPrediction.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <tuple>

namespace
{
using testing::Each;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

constexpr auto silence = -std::numeric_limits<float>::infinity();
constexpr auto nothing = std::numeric_limits<float>::quiet_NaN();

/** A full mix that a brighter one is wanted of. */
FitTask mixTask (FilterMode mode = FilterMode::mix)
{
    FitTask task;
    task.lufs = -16.6f;
    task.bands = { -25.0f, -30.1f, -36.2f, -36.2f, -40.8f, -42.7f, -43.0f, -45.3f, -51.9f, -56.3f };
    task.adjustments = { -2.3f, 0.9f, 7.2f, 3.9f, 6.4f, 5.9f, 1.1f, -3.0f, -0.7f, 4.2f };
    task.sampleRate = 44100.0;
    task.mode = mode;
    return task;
}

std::vector<FitBand> bandsOf (const FittedBands& fitted)
{
    std::vector<FitBand> bands;

    for (const auto& band : fitted.bands)
        bands.push_back ({ static_cast<double> (band.frequency),
                           static_cast<double> (band.gain),
                           static_cast<double> (band.q),
                           band.shelf });

    return bands;
}

/** What becomes of a recording, closely looked at, through the filters as they will run. */
struct Outcome
{
    Outcome (const FitTask& task, const FittedBands& fitted)
        : prediction (HeardSpectrum (task.lufs, task.bands, task.sampleRate, frequencies), powersOf (task, fitted))
    {
    }

    [[nodiscard]] std::vector<double> powersOf (const FitTask& task, const FittedBands& fitted) const
    {
        const FilterResponse response (task.sampleRate, task.mode, task.phase, frequencies);
        auto bands = bandsOf (fitted);
        const auto high = response.highPowers (bands).value();
        std::erase_if (bands, [] (const FitBand& band) { return ! band.isLow(); });
        auto powers = FitPowers (response, bands).values;
        std::ranges::transform (powers, high, powers.begin(), std::multiplies());
        return powers;
    }

    /** The root of the mean square of what is left to adjust in the bands that are read. */
    [[nodiscard]] double left (const FitTask& task) const
    {
        auto sum = 0.0;
        auto count = 0.0;

        for (std::size_t band = 0; band + 1 < analysisBandCount; ++band)
            if (std::isfinite (task.adjustments[band]))
            {
                const auto rest =
                    static_cast<double> (task.adjustments[band]) + prediction.overall - prediction.bands[band];
                sum += rest * rest;
                ++count;
            }

        return std::sqrt (sum / count);
    }

    const std::vector<double> frequencies = fitGrid (64.0);
    const FitPrediction prediction;
};

double leftWithout (const FitTask& task)
{
    return Outcome (task, {}).left (task);
}

/** Recordings and targets of all kinds, also unreasonable ones. */
class BandFitPropertyTest : public testing::TestWithParam<std::tuple<FilterMode, FilterPhase, unsigned>>
{
protected:
    [[nodiscard]] static FitTask randomTask()
    {
        std::mt19937 random (std::get<2> (GetParam()));
        const auto between = [&random] (double low, double high)
        { return static_cast<float> (std::uniform_real_distribution<double> (low, high) (random)); };

        FitTask task;
        task.mode = std::get<0> (GetParam());
        task.phase = std::get<1> (GetParam());
        task.sampleRate = std::array { 44100.0, 48000.0, 96000.0 }[random() % 3];
        task.lufs = between (-30.0, -10.0);
        const auto spread = static_cast<double> (between (1.0, 12.0));
        auto level = task.lufs - between (3.0, 12.0);

        for (std::size_t band = 0; band < analysisBandCount; ++band)
        {
            task.bands[band] = level > -68.0f ? level : silence;
            task.adjustments[band] = level > -68.0f ? between (-spread, spread) : nothing;
            level -= between (-2.0, 8.0);
        }

        return task;
    }
};

TEST_P (BandFitPropertyTest, keepsEveryLimit)
{
    const auto task = randomTask();
    const auto fitted = fitBands (task);
    const auto master = task.mode == FilterMode::master;
    EXPECT_LE (fitted.bands.size(), 10u);

    for (const auto& band : fitted.bands)
    {
        EXPECT_LE (std::abs (band.gain), master ? 4.0f : 12.0f);
        EXPECT_GE (std::abs (band.gain), 0.1f);
        EXPECT_GE (band.q, 0.5f);
        EXPECT_LE (band.q, master ? 1.5f : 2.0f);
        EXPECT_GE (band.frequency, band.shelf ? 1600 : 320);
        EXPECT_LE (band.frequency, 20000);
        EXPECT_EQ (band.frequency % 10, 0);
    }

    auto highest = 0.0;
    auto lowest = 0.0;

    for (std::size_t band = 0; band + 1 < analysisBandCount; ++band)
        if (std::isfinite (task.adjustments[band]))
        {
            highest = std::max (highest, static_cast<double> (task.adjustments[band]));
            lowest = std::min (lowest, static_cast<double> (task.adjustments[band]));
        }

    const Outcome outcome (task, fitted);

    // With the output gain that comes with the bands, and without.
    const auto outputGain = static_cast<double> (fitted.outputGainDb);

    for (std::size_t index = 0; index < outcome.frequencies.size(); ++index)
    {
        const auto [lower, higher] =
            std::minmax ({ outcome.prediction.response[index], outcome.prediction.response[index] + outputGain });

        // Between the points that were looked at a filter may ripple by a few hundredths.
        EXPECT_GE (lower, std::max (lowest - 3.0, -24.0) - 0.1) << outcome.frequencies[index];
        EXPECT_LE (higher, std::min (highest + 3.0, 20.0) + 0.1) << outcome.frequencies[index];
    }

    for (std::size_t index = 0; index < outcome.frequencies.size(); ++index)
    {
        auto silent = false;

        for (std::size_t band = 0; band + 1 < analysisBandCount; ++band)
        {
            const auto centre = static_cast<double> (analysisCentresHz[band]);
            silent = silent
                     || (! std::isfinite (task.bands[band])
                         && std::abs (std::log2 (outcome.frequencies[index] / centre)) < 0.3);
        }

        if (silent)
        {
            EXPECT_LE (outcome.prediction.response[index], 0.4) << outcome.frequencies[index];
        }
    }

    const auto heardWholly = task.lufs >= -28.0f && std::isfinite (task.bands[8]);
    EXPECT_LE (std::abs (outcome.prediction.overall + static_cast<double> (fitted.outputGainDb)),
               heardWholly ? 0.1 : 3.1);
    EXPECT_LE (std::abs (fitted.outputGainDb), 12.0f);
    EXPECT_LE (outcome.left (task), leftWithout (task));
}

INSTANTIATE_TEST_SUITE_P (Tasks,
                          BandFitPropertyTest,
                          testing::Combine (testing::Values (FilterMode::mix, FilterMode::master),
                                            testing::Values (FilterPhase::linear, FilterPhase::minimum),
                                            testing::Range (1u, 7u)),
                          [] (const auto& tested)
                          {
                              return std::string (std::get<0> (tested.param) == FilterMode::mix ? "mix" : "master")
                                     + (std::get<1> (tested.param) == FilterPhase::linear ? "Linear" : "Minimum")
                                     + std::to_string (std::get<2> (tested.param));
                          });

TEST (BandFitTest, bringsAMixNearItsTarget)
{
    for (const auto mode : { FilterMode::mix, FilterMode::master })
    {
        const auto task = mixTask (mode);
        EXPECT_LT (Outcome (task, fitBands (task)).left (task), 0.12 * leftWithout (task));
    }
}

TEST (BandFitTest, noNarrowBandStandsForABroadWish)
{
    auto task = mixTask();
    task.adjustments = { -3, -2, -1, 0, 1, 2, 3, 4, 5, 5 };
    const Outcome outcome (task, fitBands (task));
    constexpr auto quarterOctave = 16;

    for (std::size_t index = quarterOctave; index < outcome.frequencies.size(); ++index)
        EXPECT_LT (std::abs (outcome.prediction.response[index] - outcome.prediction.response[index - quarterOctave]),
                   2.5)
            << outcome.frequencies[index];
}

TEST (BandFitTest, theAmountSaysHowFarTheWayGoes)
{
    auto task = mixTask();
    const auto whole = leftWithout (task);
    task.amountPercent = 50.0f;
    EXPECT_NEAR (Outcome (task, fitBands (task)).left (task), 0.5 * whole, 0.1 * whole);
    task.amountPercent = 0.0f;
    EXPECT_THAT (fitBands (task).bands, IsEmpty());
}

TEST (BandFitTest, whereNothingIsWantedThereIsNoBand)
{
    auto task = mixTask();
    task.adjustments.fill (0.0f);
    EXPECT_THAT (fitBands (task).bands, IsEmpty());
    task.adjustments.fill (0.4f);
    EXPECT_THAT (fitBands (task).bands, IsEmpty());
    task.adjustments.fill (nothing);
    EXPECT_THAT (fitBands (task).bands, IsEmpty());
    EXPECT_EQ (fitBands (task).outputGainDb, 0.0f);
}

TEST (BandFitTest, withoutAReadingThereIsNoBand)
{
    auto task = mixTask();
    task.lufs = silence;
    task.bands.fill (silence);
    task.adjustments.fill (nothing);
    EXPECT_THAT (fitBands (task).bands, IsEmpty());
}

TEST (BandFitTest, theSameTaskGivesTheSameBands)
{
    const auto asText = [] (const FittedBands& fitted)
    {
        std::vector<std::tuple<int, float, float, bool>> rows;

        for (const auto& band : fitted.bands)
            rows.emplace_back (band.frequency, band.gain, band.q, band.shelf);

        return rows;
    };

    const auto first = asText (fitBands (mixTask()));
    EXPECT_THAT (first, Not (IsEmpty()));
    EXPECT_EQ (asText (fitBands (mixTask())), first);
}

TEST (BandFitTest, oneWishTakesFewBands)
{
    auto task = mixTask();
    task.adjustments = { 0, 0, 0, 0, 2, 5, 2, 0, 0, 0 };
    EXPECT_LE (fitBands (task).bands.size(), 4u);
}
} // namespace
