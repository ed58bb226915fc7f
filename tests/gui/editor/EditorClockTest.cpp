#include "gui/editor/EditorClock.h"

#include <gtest/gtest.h>

TEST (EditorClockTest, startsUpAfterFourSeconds)
{
    EditorClock clock;

    for (auto tick = 0; tick < 100; ++tick)
        EXPECT_FALSE (clock.advanceStartup()) << tick;

    EXPECT_TRUE (clock.advanceStartup());
    EXPECT_TRUE (clock.advanceStartup());
}

TEST (EditorClockTest, theAnalysisWindowRisesAlongAQuarterOfASine)
{
    EditorClock clock;
    EXPECT_NEAR (clock.advanceSlide (true).height, 0.0f, 1e-3f);
    EXPECT_NEAR (clock.advanceSlide (true).height, 131.332f, 1e-3f); // 425 sin 18 degrees
    EXPECT_NEAR (clock.advanceSlide (true).height, 249.809f, 1e-3f);
    EXPECT_NEAR (clock.advanceSlide (true).height, 343.832f, 1e-3f);
    EXPECT_FALSE (clock.advanceSlide (true).ended);
    const auto last = clock.advanceSlide (true);
    EXPECT_NEAR (last.height, 425.0f, 1e-3f);
    EXPECT_TRUE (last.ended);
    EXPECT_NEAR (clock.advanceSlide (true).height, 0.0f, 1e-3f);
}

TEST (EditorClockTest, theAnalysisWindowSinksTheOtherWay)
{
    EditorClock clock;
    EXPECT_NEAR (clock.advanceSlide (false).height, 425.0f, 1e-3f);
    EXPECT_NEAR (clock.advanceSlide (false).height, 293.668f, 1e-3f);
    clock.restartSlide();
    EXPECT_NEAR (clock.advanceSlide (false).height, 425.0f, 1e-3f);
}

TEST (EditorClockTest, theLevelIconIsLookedAtOnceASecond)
{
    EditorClock clock;

    for (auto second = 0; second < 3; ++second)
    {
        for (auto tick = 0; tick < 24; ++tick)
            EXPECT_FALSE (clock.advanceLevelIcon());

        EXPECT_TRUE (clock.advanceLevelIcon());
    }
}

TEST (EditorClockTest, aMessageStaysForEightSeconds)
{
    static_assert (EditorClock::messageTicks * EditorClock::intervalMs == 8000);
    EditorClock clock;

    for (auto tick = 0; tick < 199; ++tick)
        EXPECT_FALSE (clock.advanceMessage());

    EXPECT_TRUE (clock.advanceMessage());
    EXPECT_FALSE (clock.advanceMessage());
}

TEST (EditorClockTest, aNewMessageHasItsOwnEightSeconds)
{
    EditorClock clock;

    for (auto tick = 0; tick < 150; ++tick)
        EXPECT_FALSE (clock.advanceMessage());

    clock.restartMessage();

    for (auto tick = 0; tick < 199; ++tick)
        EXPECT_FALSE (clock.advanceMessage());

    EXPECT_TRUE (clock.advanceMessage());
}

TEST (EditorClockTest, repaintsAreForcedForFourSecondsAndThenNoMore)
{
    EditorClock clock;
    EXPECT_FALSE (clock.advanceForcedRepaint());
    clock.forceRepaint();

    for (auto tick = 0; tick < 100; ++tick)
        EXPECT_TRUE (clock.advanceForcedRepaint()) << tick;

    EXPECT_FALSE (clock.advanceForcedRepaint());
}
