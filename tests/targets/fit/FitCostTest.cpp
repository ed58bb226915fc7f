#include "targets/fit/FitCost.h"

#include "targets/fit/FitGrid.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace
{
constexpr auto silence = -std::numeric_limits<float>::infinity();

/** A task with something of everything: peaks, dips, and a band without a reading. */
FitTask task()
{
    FitTask result;
    result.lufs = -18.0f;
    result.bands = { -25.0f, -30.0f, -34.0f, -36.0f, -40.0f, -42.0f, -43.0f, -47.0f, silence, silence };
    result.adjustments = { 2.0f, -3.0f, 1.0f, 6.0f, -4.0f, 0.0f, 3.0f, -5.0f, silence, silence };
    return result;
}

/** Costs of one task. */
struct Costs
{
    explicit Costs (double lowestMeanDb = -std::numeric_limits<double>::infinity())
        : cost (spectrum, goal, frequencies, lowestMeanDb)
    {
    }

    [[nodiscard]] double of (const std::vector<double>& powers) const { return cost.of (powers, {}); }

    /** The same factor of power everywhere, in dB. */
    [[nodiscard]] double ofLevel (double decibels) const
    {
        return of (std::vector (frequencies.size(), std::pow (10.0, 0.1 * decibels)));
    }

    const std::vector<double> frequencies = fitGrid (16.0);
    const HeardSpectrum spectrum { task().lufs, task().bands, task().sampleRate, frequencies };
    const FitGoal goal { task(), frequencies };
    const FitCost cost;
};

TEST (FitCostTest, itsSlopesAreThoseOfItsDifferences)
{
    const Costs costs (-2.0);

    // With a loudness that is kept, and with one that the output gain makes up for.
    for (const auto shift : { 0.0, -6.0 })
    {
        std::mt19937 random (17);
        std::uniform_real_distribution<double> level (-12.0, 9.0);
        std::vector<double> powers;

        for (std::size_t index = 0; index < costs.frequencies.size(); ++index)
            powers.push_back (std::pow (10.0, 0.1 * (level (random) + shift)));

        std::vector<double> slopes (powers.size());
        EXPECT_EQ (costs.cost.of (powers, slopes), costs.of (powers));

        for (std::size_t index = 0; index < powers.size(); index += 3)
        {
            const auto step = 1e-5 * powers[index];
            auto more = powers;
            auto less = powers;
            more[index] += step;
            less[index] -= step;
            const auto difference = (costs.of (more) - costs.of (less)) / (2.0 * step);
            EXPECT_NEAR (slopes[index], difference, 1e-4 * std::max (1.0, std::abs (difference))) << index;
        }
    }
}

TEST (FitCostTest, theWantedCurveCostsLessThanNothingDone)
{
    const Costs costs;
    std::vector<double> wanted;

    for (const auto level : costs.goal.curve())
        wanted.push_back (std::pow (10.0, 0.1 * level));

    EXPECT_LT (costs.of (wanted), 0.5 * costs.ofLevel (0.0));
}

TEST (FitCostTest, liftingWhereNothingIsIsDear)
{
    const Costs costs;
    std::vector<double> powers;

    // As slowly as slopes are free.
    for (const auto frequency : costs.frequencies)
        powers.push_back (std::pow (10.0, 0.1 * 6.0 * std::clamp (std::log2 (frequency / 7000.0), 0.0, 1.0)));

    EXPECT_GT (costs.of (powers), costs.ofLevel (0.0) + 100.0);
}

/** All but the silence falls by 6 dB, of which the output gain gives back what is more than 3. */
TEST (FitCostTest, liftingWhereNothingIsByTheOutputGainIsDearToo)
{
    const Costs costs;
    std::vector<double> powers;

    for (const auto frequency : costs.frequencies)
        powers.push_back (std::pow (10.0, 0.1 * 6.0 * (std::clamp (std::log2 (frequency / 5500.0), 0.0, 1.0) - 1.0)));

    EXPECT_GT (costs.of (powers), costs.ofLevel (-6.0) + 100.0);
}

TEST (FitCostTest, bendsThatNobodyAskedForAreDear)
{
    const Costs costs;
    std::vector<double> powers;

    for (std::size_t index = 0; index < costs.frequencies.size(); ++index)
        powers.push_back (std::pow (10.0, index % 2 == 0 ? 0.1 : -0.1));

    EXPECT_GT (costs.of (powers), costs.ofLevel (0.0) + 50.0);
}

TEST (FitCostTest, aMeanThatNoFilterCanHaveIsDear)
{
    const Costs linear;
    const Costs minimum (-6.0);
    EXPECT_EQ (linear.ofLevel (-4.0), minimum.ofLevel (-4.0));
    EXPECT_GT (minimum.ofLevel (-7.0), linear.ofLevel (-7.0) + 10.0);
}
} // namespace
