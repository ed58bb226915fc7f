#include "files/SampleQuantiser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace
{
using testing::ElementsAre;

std::vector<int> converted (int bits, const std::vector<float>& samples)
{
    SampleQuantiser quantiser (bits, 1);
    std::vector<int> numbers (samples.size());

    for (std::size_t sample = 0; sample < samples.size(); ++sample)
    {
        quantiser.convert (&samples[sample], &numbers[sample]);
        numbers[sample] >>= 32 - bits;
    }

    return numbers;
}

TEST (SampleQuantiserTest, roundsWideNumbersToTheNearestAndStopsAtFullScale)
{
    constexpr auto step = 1.0f / 8388608.0f;
    EXPECT_THAT (converted (24,
                            { 0.0f,
                              step,
                              1.4f * step,
                              1.6f * step,
                              -1.6f * step,
                              1.0f,
                              2.0f,
                              -1.0f,
                              -2.0f,
                              std::numeric_limits<float>::quiet_NaN() }),
                 ElementsAre (0, 1, 1, 2, -2, 8388607, 8388607, -8388608, -8388608, 0));
}

TEST (SampleQuantiserTest, keepsWhatFitsTheWidthToTheBit)
{
    std::vector<float> samples;
    std::vector<int> numbers;

    for (int number = -32768; number < 32768; number += 7)
    {
        samples.push_back (static_cast<float> (number) / 32768.0f);
        numbers.push_back (number);
    }

    EXPECT_EQ (converted (16, samples), numbers);
}

/** A level between two steps is heard as their mixture, and its error has the power of a step's even noise and the
    dither's: 1/12 and 1/6. Rounding alone would give the same step for ever. */
TEST (SampleQuantiserTest, holdsALevelBetweenTwoStepsOnAverage)
{
    constexpr int count = 200000;

    for (const auto level : { 0.0f, 0.1f, 0.25f, 0.5f, 0.9f, -3.7f })
    {
        std::vector<float> samples (count, level / 32768.0f);
        samples[0] = 0.3f / 32768.0f; // does not fit: dither begins
        const auto numbers = converted (16, samples);
        auto sum = 0.0;
        auto squares = 0.0;

        for (const auto number : numbers)
        {
            const auto error = number - static_cast<double> (level);
            sum += error;
            squares += error * error;
        }

        // Five standard errors.
        EXPECT_NEAR (sum / count, 0.0, 0.006) << level;
        EXPECT_NEAR (squares / count, 0.25, 0.006) << level;
    }
}

TEST (SampleQuantiserTest, begins8BitAnd16BitDitherWithTheFirstFrameThatDoesNotFit)
{
    for (const auto bits : { 8, 16 })
    {
        std::vector<float> samples (2000, 0.0f);
        samples[1000] = std::ldexp (0.5f, 1 - bits);
        const auto numbers = converted (bits, samples);
        const auto isZero = [] (int number) { return number == 0; };

        EXPECT_TRUE (std::all_of (numbers.begin(), numbers.begin() + 1000, isZero)) << bits;
        EXPECT_FALSE (std::all_of (numbers.begin() + 1001, numbers.end(), isZero)) << bits;
    }
}

TEST (SampleQuantiserTest, doesNotDither24Bits)
{
    std::vector<float> samples (2000, 0.0f);
    samples[0] = 0.5f / 8388608.0f;
    const auto numbers = converted (24, samples);
    EXPECT_TRUE (std::all_of (numbers.begin() + 1, numbers.end(), [] (int number) { return number == 0; }));
}
} // namespace
