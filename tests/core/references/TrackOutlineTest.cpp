#include "core/references/TrackOutline.h"

#include "core/references/TrackLevels.h"
#include "support/Fixture.h"
#include "support/TrackSignal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <set>

namespace
{
using testing::IsEmpty;

constexpr std::uint32_t blue = 0xff009eff, white = 0xffffffff, green = 0xff14d222;

TrackLoop loopOf (int start, int end, bool active)
{
    return { .startSamples = start, .endSamples = end, .active = active, .id = 0 };
}

std::string textOf (std::uint32_t colour)
{
    char text[16];
    std::snprintf (text, sizeof text, "#%08X", colour);
    return text;
}

/** The colour of the middle of a column. */
std::uint32_t middleOf (const std::vector<OutlinePoint>& points, int x)
{
    for (const auto& point : points)
        if (point.x == x && point.y == 60)
            return point.colour;

    return 0;
}

/** Points above the middle in the colour of the middle. */
int brightRowsOf (const std::vector<OutlinePoint>& points, int x)
{
    const auto bright = middleOf (points, x);
    return static_cast<int> (std::ranges::count_if (
        points, [&] (const OutlinePoint& point) { return point.x == x && point.y < 60 && point.colour == bright; }));
}
} // namespace

TEST (TrackOutlineTest, columnsAreThoseOfTheIndependentComputation)
{
    const auto fixture = readFixture ("track_outline.json");
    const auto& inputs = fixture["cases"][1]["inputs"];
    const auto& expected = fixture["cases"][1]["expected"];
    const TrackSignal signal (inputs["signal"], inputs["rate"]);
    TrackLevels taken (static_cast<double> (signal.left.size()));
    taken.take (signal.left.data(), signal.left.data(), static_cast<int> (signal.left.size()));
    std::vector<TrackLoop> loops;

    for (const auto& loop : inputs["loops"])
        loops.push_back (loopOf (loop[0], loop[1], loop[2]));

    const int width = inputs["width"];
    const auto points = TrackOutline::build (
        taken.finish(), width / 3, static_cast<float> (width) / inputs["numSamples"].get<float>(), loops);

    EXPECT_EQ (points.size(), expected["points"].get<std::size_t>());
    EXPECT_EQ (width / 3, expected["columns"].get<int>());
    const auto uncertain = expected["uncertainX"].get<std::set<int>>();

    for (const auto& column : expected["columnsXRowsColour"])
        if (const int x = column[0]; ! uncertain.contains (x))
        {
            EXPECT_EQ (brightRowsOf (points, x), column[1].get<int>()) << x;
            EXPECT_EQ (textOf (middleOf (points, x)), column[2].get<std::string>()) << x;
        }
}

TEST (TrackOutlineTest, aColumnHasAMiddleAndNineteenPairs)
{
    const std::vector<float> levels (10, 0.5f);
    const auto points = TrackOutline::build (levels, 1, 1.0f, {});
    ASSERT_EQ (points.size(), 39u);

    for (int row = 1; row <= 19; ++row)
    {
        // 0.5 stands for ten rows, of which the tenth is not exceeded.
        const auto& above = points[static_cast<std::size_t> (2 * row - 1)];
        const auto& below = points[static_cast<std::size_t> (2 * row)];
        EXPECT_EQ (above.y, 60 - 3 * row);
        EXPECT_EQ (below.y, 60 + 3 * row);
        EXPECT_EQ (above.colour, row < 10 ? blue : 0xff4d4d4d);
        EXPECT_EQ (below.colour, above.colour);
    }
}

TEST (TrackOutlineTest, ofRangesOverAColumnTheLastCountsAndEdgesBelongToThem)
{
    const std::vector<float> levels (100, 0.4f);
    const std::vector<TrackLoop> loops { loopOf (30, 90, false), loopOf (60, 120, true) };
    const auto points = TrackOutline::build (levels, 20, 0.1f, loops);
    EXPECT_EQ (middleOf (points, 0), blue);
    EXPECT_EQ (middleOf (points, 3), green);
    EXPECT_EQ (middleOf (points, 6), white);
    EXPECT_EQ (middleOf (points, 9), white);
    EXPECT_EQ (middleOf (points, 12), white);
    EXPECT_EQ (middleOf (points, 15), blue);

    const std::vector<TrackLoop> turned { loops[1], loops[0] };
    EXPECT_EQ (middleOf (TrackOutline::build (levels, 20, 0.1f, turned), 6), green);
}

TEST (TrackOutlineTest, silenceShowsOnlyWhereARangeLies)
{
    const std::vector<float> levels (100, 0.0f);
    EXPECT_THAT (TrackOutline::build (levels, 20, 0.1f, {}), IsEmpty());
    const auto points = TrackOutline::build (levels, 20, 0.1f, std::vector { loopOf (30, 60, false) });
    EXPECT_EQ (points.size(), 2u * 39u);
    EXPECT_EQ (brightRowsOf (points, 3), 0);
}

TEST (TrackOutlineTest, fewerLevelsThanColumnsRepeat)
{
    const std::vector<float> levels { 0.2f, 0.8f, 0.4f };
    const auto points = TrackOutline::build (levels, 6, 1.0f, {});
    EXPECT_EQ (points.size(), 6u * 39u);
    EXPECT_EQ (brightRowsOf (points, 0), 3);
    EXPECT_EQ (brightRowsOf (points, 6), 15);
    EXPECT_EQ (brightRowsOf (points, 15), 7);
}

TEST (TrackOutlineTest, theVeryLastLevelIsLeftOut)
{
    std::vector<float> levels (100, 0.2f);
    levels.back() = 0.8f;
    EXPECT_EQ (brightRowsOf (TrackOutline::build (levels, 10, 1.0f, {}), 27), 3);
    levels[98] = 0.8f;
    EXPECT_EQ (brightRowsOf (TrackOutline::build (levels, 10, 1.0f, {}), 27), 15);
}

TEST (TrackOutlineTest, onlyTheUsualNumberOfLevelsIsShown)
{
    std::vector<float> levels (5000, 0.2f);
    std::fill (levels.begin() + 4096, levels.end(), 0.8f);

    for (const auto& point : TrackOutline::build (levels, 213, 1.0f, {}))
        EXPECT_FALSE (point.y < 60 - 3 * 4 && point.colour == blue);
}

TEST (TrackOutlineTest, nothingHasNoOutline)
{
    EXPECT_THAT (TrackOutline::build ({}, 20, 1.0f, {}), IsEmpty());
    EXPECT_THAT (TrackOutline::build (std::vector<float> (5, 0.5f), 0, 1.0f, {}), IsEmpty());
}
