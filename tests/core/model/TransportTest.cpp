#include "core/model/Transport.h"

#include "support/PluginRig.h"

#include <gtest/gtest.h>

namespace
{
using Host = juce::PluginHostType;
using Position = juce::AudioPlayHead::PositionInfo;

Position at (juce::int64 samples, double ppq, bool playing)
{
    Position position;
    position.setTimeInSamples (samples);
    position.setPpqPosition (ppq);
    position.setIsPlaying (playing);
    return position;
}

bool judge (Transport& transport, const Position& position)
{
    transport.update (position, false);
    return transport.isPlaying();
}

TEST (TransportTest, theFirstBlockNeverPlays)
{
    Transport transport;
    EXPECT_FALSE (transport.isPlaying());
    EXPECT_FALSE (judge (transport, at (4800, 1.0, true)));
}

TEST (TransportTest, aMovingPositionPlaysWithoutTheHostSayingSo)
{
    Transport transport;
    EXPECT_FALSE (judge (transport, at (0, 0.0, false)));
    EXPECT_TRUE (judge (transport, at (512, 0.0, false)));
    EXPECT_FALSE (judge (transport, at (512, 0.0, false))) << "stands still";
    EXPECT_TRUE (judge (transport, at (512, 0.5, false))) << "the musical position alone";
    EXPECT_TRUE (judge (transport, at (0, 0.0, false))) << "backwards";
}

TEST (TransportTest, aHostThatStandsStillIsNotBelievedToPlay)
{
    Transport transport;
    EXPECT_FALSE (judge (transport, at (0, 0.0, true)));
    EXPECT_FALSE (judge (transport, at (0, 0.0, true)));
}

TEST (TransportTest, aHostThatHasSaidSoOnceIsBelievedFromThenOn)
{
    Transport transport;
    EXPECT_FALSE (judge (transport, at (0, 0.0, true)));
    EXPECT_TRUE (judge (transport, at (512, 0.1, true)));
    EXPECT_FALSE (judge (transport, at (1024, 0.2, false))) << "moves, and says that it does not play";
    EXPECT_TRUE (judge (transport, at (1024, 0.2, true))) << "stands still, and says that it plays";
}

TEST (TransportTest, noPositionCountsAsZeroAndStopped)
{
    Transport transport;
    transport.update (juce::nullopt, false);
    EXPECT_FALSE (judge (transport, at (0, 0.0, false)));
    EXPECT_TRUE (judge (transport, at (64, 0.0, false)));
    transport.update (juce::nullopt, false);
    EXPECT_TRUE (transport.isPlaying()) << "back to 0 is a move";
    transport.update (juce::nullopt, false);
    EXPECT_FALSE (transport.isPlaying());

    Transport missing;
    missing.update (Position {}, false);
    missing.update (Position {}, false);
    EXPECT_FALSE (missing.isPlaying()) << "a position without any field";
}

TEST (TransportTest, aHostThatAlwaysRunsCountsAsRunningWhileItStands)
{
    Transport transport;
    transport.update (at (0, 0.0, false), true);
    EXPECT_FALSE (transport.isPlaying());
    EXPECT_TRUE (transport.isPlayingOrAlwaysRunning());
    transport.update (at (0, 0.0, false), false);
    EXPECT_FALSE (transport.isPlayingOrAlwaysRunning());
    transport.update (at (9, 0.0, false), false);
    EXPECT_TRUE (transport.isPlayingOrAlwaysRunning());
}

class ScriptedPlayHead final : public juce::AudioPlayHead
{
public:
    juce::Optional<PositionInfo> getPosition() const override { return position; }
    juce::Optional<PositionInfo> position;
};

class CallbackTransportTest : public testing::Test
{
protected:
    void block (PluginRig& rig, const juce::Optional<Position>& position)
    {
        playHead.position = position;
        rig.processor.setPlayHead (&playHead);
        rig.runSilence (64, 64);
    }

    ScriptedPlayHead playHead;
};

TEST_F (CallbackTransportTest, asksThePlayHeadOnEveryBlock)
{
    PluginRig rig;
    rig.prepare (48000.0, 64);
    block (rig, at (0, 0.0, false));
    EXPECT_FALSE (rig.processor.model.transport.isPlaying());
    block (rig, at (64, 0.0, false));
    EXPECT_TRUE (rig.processor.model.transport.isPlaying());
    block (rig, juce::nullopt);
    block (rig, juce::nullopt);
    EXPECT_FALSE (rig.processor.model.transport.isPlaying());

    rig.processor.setPlayHead (nullptr);
    rig.runSilence (64, 64);
    EXPECT_FALSE (rig.processor.model.transport.isPlaying());
}

TEST_F (CallbackTransportTest, judgesAlsoWhereAudioPassesUntouched)
{
    PluginRig rig;
    rig.prepare (32000.0, 64);
    block (rig, at (0, 0.0, false));
    block (rig, at (64, 0.0, false));
    EXPECT_TRUE (rig.processor.model.transport.isPlaying());
}

TEST_F (CallbackTransportTest, wavelabAlwaysRuns)
{
    PluginRig rig ({ Host::SteinbergWavelab8, "/opt/host", []() noexcept { return 0; } });
    rig.prepare (48000.0, 64);
    block (rig, at (0, 0.0, false));
    EXPECT_FALSE (rig.processor.model.transport.isPlaying());
    EXPECT_TRUE (rig.processor.model.transport.isPlayingOrAlwaysRunning());
}

TEST_F (CallbackTransportTest, trustOutlivesAnotherPrepare)
{
    PluginRig rig;
    rig.prepare (48000.0, 64);
    block (rig, at (0, 0.0, true));
    block (rig, at (64, 0.0, true));
    rig.prepare (44100.0, 64);
    block (rig, at (128, 0.0, false));
    EXPECT_FALSE (rig.processor.model.transport.isPlaying()) << "it moves, but the host is believed";
}
} // namespace
