#include "dsp/meters/KWeighting.h"
#include "support/BiQuadResponse.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace
{
constexpr int frameCount = 4099;

std::vector<float> noise (unsigned int seed)
{
    std::mt19937 random (seed);
    std::uniform_real_distribution<float> distribution (-1.0f, 1.0f);
    std::vector<float> samples (frameCount);

    for (auto& sample : samples)
        sample = distribution (random);

    return samples;
}

orvik::KWeighting weightingAt (double sampleRate)
{
    orvik::KWeighting weighting;
    weighting.prepare (sampleRate);
    return weighting;
}

double gainDb (const orvik::KWeighting& weighting, double frequencyHz, double sampleRate)
{
    return 20.0
           * std::log10 (std::abs (responseOf (weighting.shelfLeft, frequencyHz, sampleRate)
                                   * responseOf (weighting.highPassLeft, frequencyHz, sampleRate)));
}

// ITU-R BS.1770-4, tables 1 and 2, prints these for 48 kHz.
TEST (KWeightingTest, hasTheCoefficientsOfTheRecommendationAt48kHz)
{
    const auto weighting = weightingAt (48000.0);

    for (const auto* shelf : { &weighting.shelfLeft, &weighting.shelfRight })
    {
        EXPECT_NEAR (shelf->b0, 1.53512485958697, 1e-6);
        EXPECT_NEAR (shelf->b1, -2.69169618940638, 1e-6);
        EXPECT_NEAR (shelf->b2, 1.19839281085285, 1e-6);
        EXPECT_NEAR (shelf->a1, -1.69065929318241, 1e-6);
        EXPECT_NEAR (shelf->a2, 0.73248077421585, 1e-6);
    }

    for (const auto* highPass : { &weighting.highPassLeft, &weighting.highPassRight })
    {
        EXPECT_EQ (highPass->b0, 1.0f);
        EXPECT_EQ (highPass->b1, -2.0f);
        EXPECT_EQ (highPass->b2, 1.0f);
        EXPECT_NEAR (highPass->a1, -1.99004745483398, 1e-6);
        EXPECT_NEAR (highPass->a2, 0.99007225036621, 1e-6);
    }
}

TEST (KWeightingTest, keepsItsResponseAtEveryRate)
{
    const auto reference = weightingAt (192000.0);

    for (const auto rate : { 44100.0, 48000.0, 88200.0, 96000.0, 176400.0 })
        for (const auto frequency : { 20.0, 50.0, 100.0, 500.0, 997.0, 2000.0, 4000.0 })
            EXPECT_NEAR (gainDb (weightingAt (rate), frequency, rate), gainDb (reference, frequency, 192000.0), 0.1)
                << rate << " Hz, at " << frequency;
}

TEST (KWeightingTest, blocksGiveTheSameBitsAsSingleFrames)
{
    const auto left = noise (1);
    const auto right = noise (2);

    for (const auto* second : { right.data(), static_cast<const float*> (nullptr) })
    {
        auto single = weightingAt (44100.0);
        auto block = weightingAt (44100.0);
        std::vector<float> powers (frameCount);
        std::mt19937 random (3);
        std::uniform_int_distribution<int> lengths (0, 97);

        for (int start = 0; start < frameCount;)
        {
            const auto length = std::min (lengths (random), frameCount - start);
            block.powers (
                left.data() + start, second != nullptr ? second + start : nullptr, powers.data() + start, length);
            start += length;
        }

        for (std::size_t i = 0; i < powers.size(); ++i)
            ASSERT_EQ (powers[i],
                       second != nullptr ? single.stereoPower (left[i], right[i]) : single.monoPower (left[i]))
                << i;
    }
}

TEST (KWeightingTest, twoSignalsAtOnceGiveTheSameBitsAsOneAfterTheOther)
{
    const std::vector<std::vector<float>> channels { noise (1), noise (2), noise (3), noise (4) };

    for (const auto stereo : { true, false })
    {
        auto first = weightingAt (48000.0);
        auto second = weightingAt (48000.0);
        auto firstAlone = first;
        auto secondAlone = second;
        std::vector<float> firstPowers (frameCount), secondPowers (frameCount);
        std::vector<float> firstExpected (frameCount), secondExpected (frameCount);
        const auto* firstRight = stereo ? channels[1].data() : nullptr;
        const auto* secondRight = stereo ? channels[3].data() : nullptr;

        orvik::kWeightedPowers ({ first, channels[0].data(), firstRight, firstPowers.data() },
                                { second, channels[2].data(), secondRight, secondPowers.data() },
                                frameCount);
        firstAlone.powers (channels[0].data(), firstRight, firstExpected.data(), frameCount);
        secondAlone.powers (channels[2].data(), secondRight, secondExpected.data(), frameCount);

        EXPECT_EQ (firstPowers, firstExpected);
        EXPECT_EQ (secondPowers, secondExpected);
        EXPECT_EQ (first.highPassRight.y1, firstAlone.highPassRight.y1);
        EXPECT_EQ (second.highPassRight.y1, secondAlone.highPassRight.y1);
    }
}

TEST (KWeightingTest, monoLeavesTheRightHistoryAlone)
{
    auto weighting = weightingAt (48000.0);
    const auto left = noise (1);
    std::vector<float> powers (frameCount);
    weighting.powers (left.data(), left.data(), powers.data(), 100);
    const auto before = weighting.highPassRight.y1;
    ASSERT_NE (before, 0.0f);
    weighting.powers (left.data(), nullptr, powers.data(), 100);
    EXPECT_EQ (weighting.highPassRight.y1, before);
}

TEST (KWeightingTest, recoversInTheNextBlockFromInputThatIsNotFinite)
{
    for (const auto bad : { std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity() })
    {
        auto weighting = weightingAt (48000.0);
        auto fresh = weighting;
        auto left = noise (1);
        std::vector<float> powers (frameCount), expected (frameCount);
        left[5] = bad;
        weighting.powers (left.data(), left.data(), powers.data(), 64);
        weighting.powers (left.data() + 64, left.data() + 64, powers.data(), 64);
        fresh.powers (left.data() + 64, left.data() + 64, expected.data(), 64);
        EXPECT_EQ (powers, expected);
    }
}
} // namespace
