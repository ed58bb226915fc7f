#include "dsp/meters/BandFilterBank.h"
#include "dsp/filters/VariableQ2ndOrder.h"
#include "support/SimdLevels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>
#include <vector>

namespace
{
using orvik::BandFilterBank;

constexpr std::array centresHz { 2000.0f, 3000.0f, 4000.0f, 15000.0f };
constexpr float rate = 48000.0f;

/** One band and channel as sections one after the other. */
class SectionChain
{
public:
    SectionChain (float centreHz, float sampleRate)
    {
        using Section = orvik::VariableQ2ndOrder<double>;
        sections[0].setResponse (0.5411961, centreHz, sampleRate, Section::lowPass);
        sections[1].setResponse (1.306563, centreHz, sampleRate, Section::lowPass);
        sections[2].setResponse (0.5411961, centreHz, sampleRate, Section::highPass);
        sections[3].setResponse (1.306563, centreHz, sampleRate, Section::highPass);
    }

    float process (float sample)
    {
        auto value = static_cast<double> (sample);

        for (auto& section : sections)
            value = section.process (value);

        return static_cast<float> (value * 2.0);
    }

private:
    std::array<orvik::VariableQ2ndOrder<double>, 4> sections;
};

std::vector<float> noise (unsigned int seed, int count)
{
    std::mt19937 random (seed);
    std::uniform_real_distribution<float> distribution (-1.0f, 1.0f);
    std::vector<float> samples (static_cast<std::size_t> (count));

    for (auto& sample : samples)
        sample = distribution (random);

    return samples;
}

using Rows = std::array<std::vector<float>, BandFilterBank::bandCount>;

Rows rowsFor (int count)
{
    Rows rows;
    rows.fill (std::vector<float> (static_cast<std::size_t> (count)));
    return rows;
}

std::array<float*, BandFilterBank::bandCount> pointersTo (Rows& rows, int offset = 0)
{
    return { rows[0].data() + offset, rows[1].data() + offset, rows[2].data() + offset, rows[3].data() + offset };
}

class BandFilterBankLevelTest : public testing::TestWithParam<SimdLevel>
{
    ScopedSimdLevel level { GetParam() };
};

INSTANTIATE_TEST_SUITE_P (Levels, BandFilterBankLevelTest, testing::ValuesIn (availableSimdLevels()), simdLevelName);

/** What may differ: the bank rounds its doubles at other places, and rarely a float turns out the next one. */
double toleranceFor (float power)
{
    constexpr auto fewFloats = 3e-7;
    constexpr auto nearZero = 1e-16;
    return fewFloats * static_cast<double> (power) + nearZero;
}

TEST_P (BandFilterBankLevelTest, equalsSectionsOneAfterTheOther)
{
    constexpr int count = 5000;
    const auto left = noise (1, count);
    const auto right = noise (2, count);

    for (const auto stereo : { true, false })
    {
        BandFilterBank bank;
        bank.prepare (centresHz, rate);
        auto rows = rowsFor (count);
        std::mt19937 random (3);
        std::uniform_int_distribution<int> lengths (0, 200);

        for (int start = 0; start < count;)
        {
            const auto length = std::min (lengths (random), count - start);
            bank.process (
                left.data() + start, stereo ? right.data() + start : nullptr, pointersTo (rows, start), length);
            start += length;
        }

        for (std::size_t band = 0; band < centresHz.size(); ++band)
        {
            SectionChain leftChain (centresHz[band], rate);
            SectionChain rightChain (centresHz[band], rate);

            for (std::size_t i = 0; i < left.size(); ++i)
            {
                const auto l = leftChain.process (left[i]);
                const auto r = stereo ? rightChain.process (right[i]) : 0.0f;
                const auto power = l * l + r * r;
                ASSERT_NEAR (rows[band][i], power, toleranceFor (power)) << "band " << band << ", frame " << i;
            }
        }
    }
}

class BandLengthTest : public testing::TestWithParam<int>
{
};

TEST_P (BandLengthTest, givesTheSameBitsForAnyBlockLengthAndOnEveryLevel)
{
    for (const auto simdLevel : availableSimdLevels())
    {
        const ScopedSimdLevel level (simdLevel);
        constexpr int count = 600;
        const auto left = noise (4, count);
        const auto right = noise (5, count);
        BandFilterBank whole;
        BandFilterBank split;
        whole.prepare (centresHz, rate);
        split.prepare (centresHz, rate);
        auto expected = rowsFor (count);
        auto actual = rowsFor (count);
        whole.process (left.data(), right.data(), pointersTo (expected), count);

        for (int start = 0; start < count; start += GetParam())
            split.process (left.data() + start,
                           right.data() + start,
                           pointersTo (actual, start),
                           std::min (GetParam(), count - start));

        EXPECT_EQ (actual, expected);
    }
}

INSTANTIATE_TEST_SUITE_P (Lengths, BandLengthTest, testing::Values (1, 2, 3, 4, 5, 7, 63, 64, 65, 128, 599));

TEST_P (BandFilterBankLevelTest, aBlockOfNothingChangesNothing)
{
    BandFilterBank bank;
    bank.prepare (centresHz, rate);
    auto rows = rowsFor (1);
    const auto left = noise (6, 2);
    bank.process (left.data(), left.data(), pointersTo (rows), 0);
    bank.process (left.data(), left.data(), pointersTo (rows), 1);

    SectionChain chain (centresHz[0], rate);
    const auto output = chain.process (left[0]);
    const auto power = output * output + output * output;
    EXPECT_NEAR (rows[0][0], power, toleranceFor (power));
}

TEST (BandFilterBankTest, responseIsTheProductOfTwoButterworthsOfFourthOrder)
{
    // With w the warped frequency over the warped centre, |low|^2 = 1 / (1 + w^8) and |high|^2 = w^8 / (1 + w^8);
    // the doubled output is 1 at the centre. The Qs are given to seven digits.
    for (const auto sampleRate : { 11025.0, 12000.0, 48000.0, 96000.0 })
        for (const auto centre : { 320.0, 1000.0, 4000.0 })
            for (const auto ratio : { 0.25, 0.5, 0.8, 1.0, 1.1, 1.3 })
            {
                const std::array centres { static_cast<float> (centre) };
                const auto frequency = centre * ratio;
                const auto count = static_cast<int> (sampleRate);
                BandFilterBank bank;
                bank.prepare (centres, static_cast<float> (sampleRate));

                // The power of a quadrature pair, one in each channel, has no ripple.
                std::vector<float> left (static_cast<std::size_t> (count)), right (left.size());

                for (std::size_t i = 0; i < left.size(); ++i)
                {
                    const auto angle = 2.0 * std::numbers::pi * frequency * static_cast<double> (i) / sampleRate;
                    left[i] = static_cast<float> (std::sin (angle));
                    right[i] = static_cast<float> (std::cos (angle));
                }

                auto rows = rowsFor (count);
                bank.process (left.data(), right.data(), pointersTo (rows), count);

                const auto w = std::tan (std::numbers::pi * frequency / sampleRate)
                               / std::tan (std::numbers::pi * centre / sampleRate);
                const auto expected = 4.0 * std::pow (w, 8.0) / std::pow (1.0 + std::pow (w, 8.0), 2.0);
                EXPECT_NEAR (10.0 * std::log10 (rows[0].back()), 10.0 * std::log10 (expected), 1e-3)
                    << centre << " Hz band at " << frequency << " Hz, rate " << sampleRate;
            }
}

TEST (BandFilterBankTest, bandsWithoutACentreAreSilent)
{
    BandFilterBank bank;
    bank.prepare (std::span (centresHz).first (2), rate);
    const auto left = noise (7, 500);
    auto rows = rowsFor (500);
    bank.process (left.data(), left.data(), pointersTo (rows), 500);
    EXPECT_GT (*std::max_element (rows[1].begin(), rows[1].end()), 0.0f);
    EXPECT_EQ (rows[2], std::vector<float> (500));
    EXPECT_EQ (rows[3], std::vector<float> (500));
}

TEST_P (BandFilterBankLevelTest, clearForgetsThePast)
{
    BandFilterBank used;
    BandFilterBank fresh;
    used.prepare (centresHz, rate);
    fresh.prepare (centresHz, rate);
    const auto left = noise (8, 300);
    auto rows = rowsFor (300);
    auto expected = rowsFor (300);
    used.process (left.data(), left.data(), pointersTo (rows), 300);
    used.clear();
    used.process (left.data(), left.data(), pointersTo (rows), 300);
    fresh.process (left.data(), left.data(), pointersTo (expected), 300);
    EXPECT_EQ (rows, expected);
}

TEST_P (BandFilterBankLevelTest, recoversInTheNextBlockFromInputThatIsNotFinite)
{
    for (const auto bad : { std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity() })
    {
        BandFilterBank bank;
        bank.prepare (centresHz, rate);
        auto left = noise (9, 300);
        auto right = left;
        right[100] = bad;
        auto rows = rowsFor (300);
        bank.process (left.data(), right.data(), pointersTo (rows), 300);
        bank.process (left.data(), left.data(), pointersTo (rows), 300);

        for (const auto& row : rows)
            for (const auto power : row)
                ASSERT_TRUE (std::isfinite (power));
    }
}
} // namespace
