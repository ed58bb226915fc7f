#include "gui/analysis/TargetStatus.h"

#include <gtest/gtest.h>

namespace
{
/** Of three tracks. */
TargetProgress progressOf (int finished, int percent)
{
    TargetProgress progress;
    progress.finished = finished;
    progress.trackCount = 3;
    progress.percent = percent;
    return progress;
}
} // namespace

TEST (TargetStatusTest, saysWhatThereIsAndWhatComesNext)
{
    for (const auto tracks : { false, true })
        for (const auto noTarget : { false, true })
            EXPECT_EQ (TargetStatus::text ({ false, tracks, noTarget }), juce::String());

    EXPECT_EQ (TargetStatus::text ({ true, false, true }),
               "Targets are set. Select the USER SETTING preset to use.\nAdd reference tracks to create new targets.");
    EXPECT_EQ (TargetStatus::text ({ true, false, false }),
               "Targets are set.\nAdd reference tracks to create new targets.");
    EXPECT_EQ (TargetStatus::text ({ true, true, true }),
               "Targets are set. Select the USER SETTING preset to use.\nClick CREATE TARGETS to re-analyse.");
    EXPECT_EQ (TargetStatus::text ({ true, true, false }), "Targets are set.\nClick CREATE TARGETS to re-analyse.");
}

TEST (TargetStatusTest, anotherLeadTakesTheFirstPlace)
{
    EXPECT_EQ (TargetStatus::text ({ true, true, true }, "Loaded."),
               "Loaded. Select the USER SETTING preset to use.\nClick CREATE TARGETS to re-analyse.");
}

TEST (TargetStatusTest, progressCountsTheTrackThatIsUnderWay)
{
    EXPECT_EQ (TargetStatus::progressText (progressOf (0, 12)), "Analysing tracks 1 of 3. 12% complete.");
    EXPECT_EQ (TargetStatus::progressText (progressOf (2, 99)), "Analysing tracks 3 of 3. 99% complete.");
    EXPECT_EQ (TargetStatus::progressText (progressOf (3, 100)), "Analysing tracks 3 of 3. 100% complete.");
}

TEST (TargetStatusTest, namesTheTracksThatGaveNothing)
{
    auto progress = progressOf (3, 100);
    progress.complete = true;
    EXPECT_EQ (TargetStatus::unmeasuredText (progress), juce::String());

    progress.unmeasured = { "SILENCE", "CLICK" };
    EXPECT_EQ (TargetStatus::unmeasuredText (progress),
               "Targets are set without SILENCE, CLICK, where nothing could be measured.");

    progress.unmeasured.push_back ("HUM");
    EXPECT_EQ (TargetStatus::unmeasuredText (progress),
               "Nothing could be measured: a track needs more than a second of sound.");

    progress.complete = false;
    EXPECT_EQ (TargetStatus::unmeasuredText (progress), juce::String());
}
