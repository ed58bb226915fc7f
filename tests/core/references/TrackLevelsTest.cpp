#include "core/references/TrackLevels.h"

#include "support/Fixture.h"
#include "support/TrackSignal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numeric>

namespace
{
using testing::Each;
using testing::IsEmpty;
using testing::SizeIs;

/** Takes one channel twice, in steps. */
std::vector<float> levelsOf (const std::vector<float>& channel, double expectedLength, std::size_t step)
{
    TrackLevels levels (expectedLength);

    for (std::size_t start = 0; start < channel.size(); start += step)
        levels.take (
            channel.data() + start, channel.data() + start, static_cast<int> (std::min (step, channel.size() - start)));

    return levels.finish();
}

std::vector<float> levelsOf (const std::vector<float>& channel, std::size_t step = 65536)
{
    return levelsOf (channel, static_cast<double> (channel.size()), step);
}
} // namespace

TEST (TrackLevelsTest, levelsAreThoseOfTheIndependentComputation)
{
    const auto fixture = readFixture ("track_outline.json");
    const auto& item = fixture["cases"][0];
    const auto& expected = item["expected"];
    const TrackSignal signal (item["inputs"]["signal"], item["inputs"]["rate"]);
    const auto levels = levelsOf (signal.left);

    EXPECT_EQ (TrackLevels (static_cast<double> (signal.left.size())).windowLength(), expected["window"].get<int>());
    ASSERT_EQ (levels.size(), expected["count"].get<std::size_t>());

    for (std::size_t i = 0; i < expected["indices"].size(); ++i)
        EXPECT_NEAR (levels[expected["indices"][i].get<std::size_t>()], expected["values"][i].get<float>(), 1e-4);

    EXPECT_NEAR (std::accumulate (levels.begin(), levels.end(), 0.0), expected["sum"].get<double>(), 0.02);

    // A load that ends early drops the rest.
    EXPECT_THAT (levelsOf (signal.left, static_cast<double> (signal.left.size() + 3), 65536),
                 SizeIs (expected["countWithoutRest"].get<std::size_t>()));
}

TEST (TrackLevelsTest, stepsOfAnyLengthGiveTheSameLevels)
{
    const TrackSignal signal ({ { "samples", 50000 },
                                { "left", { { { "kind", "noise" }, { "amplitude", 0.5 }, { "seed", 9 } } } },
                                { "right", nullptr } },
                              48000.0);
    const auto whole = levelsOf (signal.left);
    EXPECT_EQ (levelsOf (signal.left, 1), whole);
    EXPECT_EQ (levelsOf (signal.left, 777), whole);
}

TEST (TrackLevelsTest, sumsHoldOneSampleMoreThanTheyAreDividedBy)
{
    // A window of 1 takes two samples: of equal ones each level is their square root of 2, scaled alike.
    std::vector<float> channel (8192, 0.1f);
    channel[0] = channel[1] = 0.2f;
    channel[2] = 0.2f;
    channel[3] = 0.0f;
    TrackLevels levels (4096.0);
    EXPECT_EQ (levels.windowLength(), 1);
    levels.take (channel.data(), channel.data(), 6);
    const auto result = levels.finish();
    ASSERT_EQ (result.size(), 3u);
    EXPECT_FLOAT_EQ (result[0], 0.8f);
    EXPECT_FLOAT_EQ (result[1], 0.8f / std::sqrt (2.0f));
    EXPECT_FLOAT_EQ (result[2], 0.4f);
}

TEST (TrackLevelsTest, aRestOfOneSampleGivesNoLevel)
{
    // Three samples to a level.
    EXPECT_THAT (levelsOf (std::vector<float> (3 * 2732, 0.5f)), SizeIs (2732));
    EXPECT_THAT (levelsOf (std::vector<float> (3 * 2732 + 1, 0.5f)), SizeIs (2732));
    EXPECT_THAT (levelsOf (std::vector<float> (3 * 2732 + 2, 0.5f)), SizeIs (2733));

    for (const auto level : levelsOf (std::vector<float> (3 * 2732 + 1, 0.5f)))
        EXPECT_TRUE (std::isfinite (level));
}

TEST (TrackLevelsTest, channelsCountWithTheMeanOfTheirLevels)
{
    std::vector<float> left (4096 * 3, 0.5f);
    std::vector<float> right (left.size(), 0.25f);
    std::fill (left.begin() + 6144, left.end(), 0.1f);
    TrackLevels levels (static_cast<double> (left.size()));
    levels.take (left.data(), right.data(), static_cast<int> (left.size()));
    const auto result = levels.finish();
    EXPECT_FLOAT_EQ (result.front(), 0.8f);
    EXPECT_FLOAT_EQ (result.back(), 0.8f * (0.1f + 0.25f) / (0.5f + 0.25f));
}

TEST (TrackLevelsTest, silenceHasLevelsOfZero)
{
    EXPECT_THAT (levelsOf (std::vector<float> (48000, 0.0f)), Each (0.0f));
    EXPECT_THAT (levelsOf ({}), IsEmpty());
}
