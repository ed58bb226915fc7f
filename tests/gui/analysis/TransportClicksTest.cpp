#include "gui/analysis/TransportClicks.h"

#include "support/Fixture.h"

#include <gtest/gtest.h>

namespace
{
struct Track
{
    void click (double value)
    {
        clicks.press();
        position = clicks.moveTo (value, numSamples, position);
        playing = clicks.click (playing);
    }

    TransportClicks clicks;
    int numSamples = 1000000;
    int position = 0;
    bool playing = false;
};
} // namespace

TEST (TransportClicksTest, clicksLeaveWhatAnIndependentComputationGives)
{
    const auto tested = readFixture ("track_gestures.json")["transport"];
    Track track;
    track.numSamples = tested["numSamples"];
    track.position = tested["position"];
    track.playing = tested["playing"];

    for (std::size_t i = 0; i < tested["clicks"].size(); ++i)
    {
        track.click (tested["clicks"][i]);
        EXPECT_EQ (track.playing, tested["after"][i]["playing"].get<bool>()) << i;
        EXPECT_NEAR (track.position, tested["after"][i]["position"].get<int>(), tested["tolerance"].get<int>()) << i;
    }
}

TEST (TransportClicksTest, whilePlayingAShortMovePausesAndALongOneOnlyMoves)
{
    Track track;
    track.playing = true;
    track.click (0.1);
    EXPECT_EQ (track.position, 100000);
    EXPECT_FALSE (track.playing) << "exactly the threshold";

    track.playing = true;
    track.click (0.200002);
    EXPECT_EQ (track.position, 200002);
    EXPECT_TRUE (track.playing);

    track.click (0.200002);
    EXPECT_FALSE (track.playing) << "the jump before is forgotten";
}

TEST (TransportClicksTest, aJumpWhileNothingPlaysBeginsToPlay)
{
    Track track;
    track.click (0.9);
    EXPECT_TRUE (track.playing);
    EXPECT_EQ (track.position, 900000);
    track.click (0.9);
    EXPECT_FALSE (track.playing) << "the jump before is forgotten";
}

TEST (TransportClicksTest, aDragOverTheTrackIsForgottenAtTheNextPress)
{
    Track track;
    track.playing = true;
    track.clicks.press();
    track.position = track.clicks.moveTo (0.5, track.numSamples, track.position);

    // It was let go as a drag, and nothing was clicked.
    track.click (0.5);
    EXPECT_FALSE (track.playing);
}
