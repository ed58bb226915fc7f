#include "dsp/meters/HopWindow.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>

namespace
{
struct Lengths
{
    int window;
    int hop;
};

class HopWindowTest : public testing::TestWithParam<Lengths>
{
protected:
    /** Multiples of 2^-20, whose sums are exact in double precision in any order. */
    static std::vector<float> exactPowers (std::size_t count)
    {
        std::mt19937 random (7);
        std::uniform_int_distribution<int> numerators (0, 1 << 20);
        std::vector<float> powers (count);

        for (auto& power : powers)
            power = std::ldexp (static_cast<float> (numerators (random)), -20);

        return powers;
    }

    static double plainSum (const std::vector<float>& values, std::size_t end, int window)
    {
        auto sum = 0.0;

        for (int i = 0; i < window && static_cast<std::size_t> (i) < end; ++i)
            sum += static_cast<double> (values[end - 1 - static_cast<std::size_t> (i)]);

        return sum;
    }
};

TEST_P (HopWindowTest, readsThePlainSumOfTheWindowAtEveryHop)
{
    const auto [window, hop] = GetParam();
    const auto powers = exactPowers (static_cast<std::size_t> (4 * window + 3 * hop));
    orvik::HopWindow<orvik::SumOfPowers> sums;
    sums.prepare (window, hop);

    for (std::size_t i = 0; i < powers.size(); ++i)
    {
        sums.push (powers[i]);

        if ((i + 1) % static_cast<std::size_t> (hop) == 0)
        {
            ASSERT_EQ (sums.read(), plainSum (powers, i + 1, window)) << i;
        }
    }
}

TEST_P (HopWindowTest, readsTheLargestSampleOfTheWindowAtEveryHop)
{
    const auto [window, hop] = GetParam();
    std::mt19937 random (8);
    std::uniform_real_distribution<float> distribution (-1.0f, 1.0f);
    std::vector<float> samples (static_cast<std::size_t> (4 * window));

    for (auto& sample : samples)
        sample = std::pow (distribution (random), 5.0f);

    orvik::HopWindow<orvik::LargestSample> peaks;
    peaks.prepare (window, hop);

    for (int i = 0; i < static_cast<int> (samples.size()); ++i)
    {
        peaks.push (samples[static_cast<std::size_t> (i)]);

        if ((i + 1) % hop == 0)
        {
            auto largest = 0.0f;

            for (int k = std::max (0, i + 1 - window); k <= i; ++k)
                largest = std::max (largest, std::abs (samples[static_cast<std::size_t> (k)]));

            ASSERT_EQ (peaks.read(), static_cast<double> (largest)) << i;
        }
    }
}

TEST_P (HopWindowTest, fillMakesTheWindowHoldOneValueFromAnyPosition)
{
    const auto [window, hop] = GetParam();

    for (const auto position : { 0, hop / 3, hop - 1 })
    {
        orvik::HopWindow<orvik::SumOfPowers> sums;
        sums.prepare (window, hop);
        sums.fill (0.25f, position);

        for (int i = position; i < hop; ++i)
            sums.push (1.0f);

        // The window ends with the new values; what the fill left is all that is older.
        EXPECT_EQ (sums.positionInHop(), 0);
        const auto fresh = std::min (hop - position, window);
        EXPECT_EQ (sums.read(), fresh + 0.25 * (window - fresh)) << position;
    }
}

TEST_P (HopWindowTest, blocksGiveTheSameBitsAsSingleValues)
{
    const auto [window, hop] = GetParam();
    std::mt19937 random (9);
    std::lognormal_distribution<float> powers (-4.0f, 3.0f);
    std::uniform_int_distribution<int> lengths (0, 2 * hop + 3);

    orvik::HopWindow<orvik::SumOfPowers> single;
    orvik::HopWindow<orvik::SumOfPowers> block;
    single.prepare (window, hop);
    block.prepare (window, hop);
    std::vector<float> values;

    for (int taken = 0; taken < 6 * window; taken += static_cast<int> (values.size()) + 1)
    {
        // Every block ends with its hop, so that the window may be read.
        const auto length = lengths (random);
        const auto rest = (hop - (block.positionInHop() + length) % hop) % hop;
        values.resize (static_cast<std::size_t> (length + rest));

        for (auto& value : values)
            value = powers (random);

        block.push (values.data(), length);
        block.push (values.data() + length, rest);

        for (const auto value : values)
            single.push (value);

        ASSERT_EQ (single.read(), block.read());
    }
}

TEST_P (HopWindowTest, whatIsNotFiniteLeavesWithItsHop)
{
    const auto [window, hop] = GetParam();

    for (const auto bad : { std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity() })
    {
        orvik::HopWindow<orvik::SumOfPowers> sums;
        sums.prepare (window, hop);
        sums.push (bad);

        for (int i = 1; i < hop; ++i)
            sums.push (1.0f);

        EXPECT_TRUE (std::isfinite (sums.read()));

        for (int i = 0; i < window + hop; ++i)
            sums.push (1.0f);

        for (int i = sums.positionInHop(); i > 0 && i < hop; ++i)
            sums.push (1.0f);

        EXPECT_EQ (sums.read(), window);
    }
}

INSTANTIATE_TEST_SUITE_P (Lengths,
                          HopWindowTest,
                          testing::Values (Lengths { 400, 100 },
                                           Lengths { 3000, 100 },
                                           Lengths { 4410, 1102 },
                                           Lengths { 441, 110 },
                                           Lengths { 45, 1 },
                                           Lengths { 17, 8 },
                                           Lengths { 7, 7 },
                                           Lengths { 1, 1 }),
                          [] (const auto& tested)
                          { return std::to_string (tested.param.window) + "By" + std::to_string (tested.param.hop); });
} // namespace
