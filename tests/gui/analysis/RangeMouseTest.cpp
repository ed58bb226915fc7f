#include "gui/analysis/RangeMouse.h"

#include "support/Fixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{
using Ranges = RangeMouse::Ranges;
using Cursor = RangeMouse::Cursor;

/** Samples of a pixel; a number that divides without a rest. */
constexpr int pixel = 1024;
constexpr RangeMouse::Scale scale { 1.0f / pixel, 600 * pixel };

TrackLoop range (int start, int end, bool active = false)
{
    return { start, end, active, TrackLoop::makeId() };
}

/** In pixels. */
TrackLoop wideRange (int start, int end)
{
    return range (start * pixel, end * pixel);
}

/** Ranges in pixels, without what a test cannot know. */
std::vector<std::vector<int>> plain (const Ranges& ranges)
{
    std::vector<std::vector<int>> result;

    for (const auto& each : ranges)
        result.push_back ({ each.startSamples / pixel, each.endSamples / pixel, each.active ? 1 : 0 });

    return result;
}

/** A whole gesture: presses at the first place, goes to the others, lets go. */
void gesture (RangeMouse& mouse, Ranges& ranges, const std::vector<float>& places, const RangeMouse::Scale& on = scale)
{
    mouse.press (places.front(), false, on, ranges);

    for (std::size_t i = 1; i < places.size(); ++i)
        mouse.drag (places.front(), places[i], on, ranges);

    mouse.release (ranges);
}
} // namespace

TEST (RangeMouseTest, gesturesLeaveWhatAnIndependentComputationGives)
{
    const auto fixture = readFixture ("track_gestures.json");

    for (const auto& tested : fixture["ranges"])
    {
        const RangeMouse::Scale width { tested["width"].get<float>() / tested["numSamples"].get<float>(),
                                        tested["numSamples"].get<int>() };
        Ranges ranges;

        for (const auto& before : tested["before"])
            ranges.push_back (range (before[0], before[1], before[2]));

        RangeMouse mouse;
        gesture (mouse, ranges, tested["x"].get<std::vector<float>>(), width);
        ASSERT_EQ (ranges.size(), tested["after"].size()) << tested["name"];

        for (std::size_t i = 0; i < ranges.size(); ++i)
        {
            EXPECT_NEAR (ranges[i].startSamples, tested["after"][i][0].get<int>(), tested["tolerance"].get<int>());
            EXPECT_NEAR (ranges[i].endSamples, tested["after"][i][1].get<int>(), tested["tolerance"].get<int>());
            EXPECT_EQ (ranges[i].active, tested["after"][i][2].get<bool>());
        }
    }
}

TEST (RangeMouseTest, aDragOfUpToTwoPixelsMakesNothing)
{
    for (const auto x : { 98.0f, 99.0f, 100.0f, 101.0f, 102.0f })
    {
        Ranges ranges;
        RangeMouse mouse;
        gesture (mouse, ranges, { 100.0f, x });
        EXPECT_TRUE (ranges.empty()) << x;
    }

    Ranges ranges;
    RangeMouse mouse;
    gesture (mouse, ranges, { 100.0f, 103.0f });
    EXPECT_THAT (plain (ranges), testing::ElementsAre (testing::ElementsAre (100, 103, 0)));
}

TEST (RangeMouseTest, aDragToTheLeftMakesARangeUpToThePress)
{
    Ranges ranges;
    RangeMouse mouse;
    gesture (mouse, ranges, { 100.0f, 90.0f, 80.0f, 70.0f });

    // Its other end is where a new range ends before the pointer has gone on.
    EXPECT_THAT (plain (ranges), testing::ElementsAre (testing::ElementsAre (70, 105, 0)));
}

TEST (RangeMouseTest, everyNewRangeHasAnIdOfItsOwnAndIsInactive)
{
    Ranges ranges;
    RangeMouse mouse;
    gesture (mouse, ranges, { 10.0f, 60.0f });
    gesture (mouse, ranges, { 100.0f, 160.0f });
    ASSERT_EQ (ranges.size(), 2u);
    EXPECT_NE (ranges[0].id, ranges[1].id);
    EXPECT_FALSE (ranges[0].active || ranges[1].active);
}

TEST (RangeMouseTest, altTakesOneRangeAway)
{
    Ranges ranges { wideRange (10, 50), wideRange (40, 90), wideRange (200, 300) };
    RangeMouse mouse;
    EXPECT_TRUE (mouse.press (45.0f, true, scale, ranges));

    // The first of two that lie there.
    EXPECT_THAT (plain (ranges),
                 testing::ElementsAre (testing::ElementsAre (40, 90, 0), testing::ElementsAre (200, 300, 0)));
    EXPECT_FALSE (mouse.drag (45.0f, 80.0f, scale, ranges)) << "nothing is held";
}

TEST (RangeMouseTest, altOnTheEmptyWaveformTakesAllRangesAway)
{
    Ranges ranges { wideRange (10, 50), wideRange (200, 300) };
    RangeMouse mouse;
    EXPECT_TRUE (mouse.press (120.0f, true, scale, ranges));
    EXPECT_TRUE (ranges.empty());
    EXPECT_FALSE (mouse.drag (120.0f, 150.0f, scale, ranges)) << "nothing is made";
}

TEST (RangeMouseTest, aRangeIsFoundOneSampleBesideIt)
{
    const Ranges ranges { range (1000, 2000) };
    EXPECT_FALSE (RangeMouse::rangeAt (ranges, 998).has_value());
    EXPECT_TRUE (RangeMouse::rangeAt (ranges, 999).has_value());
    EXPECT_TRUE (RangeMouse::rangeAt (ranges, 2001).has_value());
    EXPECT_FALSE (RangeMouse::rangeAt (ranges, 2002).has_value());
}

TEST (RangeMouseTest, endsStayWithinTheTrack)
{
    Ranges ranges;
    RangeMouse mouse;
    gesture (mouse, ranges, { 20.0f, 10.0f, -400.0f });
    gesture (mouse, ranges, { 500.0f, 590.0f, 5000.0f });
    EXPECT_THAT (plain (ranges),
                 testing::ElementsAre (testing::ElementsAre (0, 25, 0), testing::ElementsAre (500, 600, 0)));
}

TEST (RangeMouseTest, onReleaseTheEndsArePutInOrder)
{
    Ranges ranges { wideRange (100, 110) };
    RangeMouse mouse;
    mouse.press (109.0f, false, scale, ranges);

    // In one step over the middle and the other edge.
    mouse.drag (109.0f, 90.0f, scale, ranges);
    EXPECT_EQ (ranges[0].startSamples, 90 * pixel);
    mouse.drag (109.0f, 150.0f, scale, ranges);
    ranges[0].startSamples = 170 * pixel;
    EXPECT_TRUE (mouse.release (ranges));
    EXPECT_THAT (plain (ranges), testing::ElementsAre (testing::ElementsAre (150, 170, 0)));
}

TEST (RangeMouseTest, aRangeThatIsTooShortWhenTheHandLetsGoIsTakenAway)
{
    constexpr RangeMouse::Scale fine { 1.0f / 128.0f, 60000 };

    for (const auto& [end, left] : { std::pair { 17.0f, 0u }, { 18.0f, 1u } })
    {
        Ranges ranges;
        RangeMouse mouse;
        gesture (mouse, ranges, { 10.0f, end }, fine);
        EXPECT_EQ (ranges.size(), left) << end;
    }

    Ranges ranges { range (0, 1023), range (3000, 4024) };
    RangeMouse mouse;
    mouse.press (5.0f, false, fine, ranges);
    EXPECT_FALSE (mouse.release (ranges)) << "a press alone changes nothing";
    EXPECT_EQ (ranges.size(), 2u);
}

TEST (RangeMouseTest, aPressBeginsClean)
{
    Ranges ranges { wideRange (100, 200) };
    RangeMouse mouse;
    mouse.press (150.0f, false, scale, ranges);
    mouse.drag (150.0f, 190.0f, scale, ranges);

    // The release went elsewhere.
    mouse.press (400.0f, false, scale, ranges);
    EXPECT_FALSE (mouse.release (ranges));
    EXPECT_EQ (ranges.size(), 1u);
}

TEST (RangeMouseTest, aListThatHasShrunkMeanwhileHarmsNobody)
{
    Ranges ranges { wideRange (100, 200) };
    RangeMouse mouse;
    mouse.press (150.0f, false, scale, ranges);
    mouse.drag (150.0f, 190.0f, scale, ranges);
    ranges.clear();
    EXPECT_FALSE (mouse.drag (150.0f, 195.0f, scale, ranges));
    EXPECT_FALSE (mouse.release (ranges));
}

TEST (RangeMouseTest, cursorsSayWhatAPressWouldDo)
{
    const Ranges ranges { wideRange (100, 200) };
    EXPECT_EQ (RangeMouse::cursorAt (50.0f, false, scale, ranges), Cursor::add);
    EXPECT_EQ (RangeMouse::cursorAt (50.0f, true, scale, ranges), Cursor::remove);
    EXPECT_EQ (RangeMouse::cursorAt (150.0f, false, scale, ranges), Cursor::move);
    EXPECT_EQ (RangeMouse::cursorAt (150.0f, true, scale, ranges), Cursor::remove);
}

TEST (RangeMouseTest, aTrackWithoutSamplesHasNoPlaces)
{
    const RangeMouse::Scale nothing { 0.0f, 0 };
    EXPECT_EQ (nothing.sampleAt (100.0), 0);
    EXPECT_EQ ((RangeMouse::Scale { 1.0e-30f, 0 }).sampleAt (100.0), std::numeric_limits<int>::max());
}
