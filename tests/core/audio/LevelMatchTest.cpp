#include "core/audio/LevelMatch.h"
#include "support/LiveRig.h"

#include <gtest/gtest.h>

#include <limits>

namespace
{
using Kind = Settings::Parameter;

constexpr auto infinity = std::numeric_limits<float>::infinity();
constexpr auto notANumber = std::numeric_limits<float>::quiet_NaN();

float linear (float decibels)
{
    return std::pow (10.0f, decibels / 20.0f);
}

//======================================================================================================================
TEST (LevelMatchTest, suggestsNothingAtFirst)
{
    const LevelMatch match;
    EXPECT_EQ (match.gain(), 1.0f);
    EXPECT_EQ (match.decibels(), 0.0f);
    EXPECT_EQ (match.pointerGain(), 1.0f);
}

TEST (LevelMatchTest, isTheDifferenceOfBothLoudnesses)
{
    LevelMatch match;
    match.update (-20.0f, -26.0f);
    EXPECT_FLOAT_EQ (match.gain(), linear (6.0f));
    match.update (-20.0f, -13.0f);
    EXPECT_FLOAT_EQ (match.gain(), linear (-7.0f));
}

struct GuardCase
{
    float input, output, expected;
};

class LevelMatchGuardTest : public testing::TestWithParam<GuardCase>
{
};

TEST_P (LevelMatchGuardTest, whatMakesNoSenseIsOne)
{
    const auto [input, output, expected] = GetParam();
    LevelMatch match;
    match.update (input, output);
    EXPECT_FLOAT_EQ (match.gain(), expected);
    EXPECT_TRUE (std::isfinite (match.decibels()));
    EXPECT_TRUE (std::isfinite (match.pointerGain()));
}

INSTANTIATE_TEST_SUITE_P (Guards,
                          LevelMatchGuardTest,
                          testing::Values (GuardCase { -infinity, -20.0f, 1.0f },
                                           GuardCase { -20.0f, -infinity, 1.0f },
                                           GuardCase { -infinity, -infinity, 1.0f },
                                           GuardCase { notANumber, -20.0f, 1.0f },
                                           GuardCase { -20.0f, notANumber, 1.0f },
                                           GuardCase { infinity, -20.0f, 1.0f },
                                           GuardCase { -1.0e6f, 0.0f, 1.0f },
                                           GuardCase { 0.0f, -20.1f, 1.0f },
                                           GuardCase { 0.0f, -20.0f, 10.0f },
                                           GuardCase { -90.0f, 0.0f, linear (-90.0f) }),
                          [] (const auto& tested) { return "case" + std::to_string (tested.index); });

TEST (LevelMatchTest, thePointerFollowsSmoothlyAndStopsAtTwelveDecibels)
{
    LevelMatch match;
    auto last = 0.0f;

    for (int block = 0; block < 60; ++block)
    {
        match.update (-20.0f, -38.0f);
        EXPECT_LE (match.pointerGain(), linear (12.0f) * 1.0001f);

        if (block < 20)
        {
            EXPECT_GT (match.decibels(), last) << block;
        }

        last = match.decibels();
    }

    EXPECT_LT (last, 19.0f);

    for (int block = 0; block < 2000; ++block)
        match.update (-20.0f, -38.0f);

    EXPECT_NEAR (match.decibels(), 18.0f, 0.01f);
    EXPECT_FLOAT_EQ (match.pointerGain(), linear (12.0f));
    EXPECT_FLOAT_EQ (match.gain(), linear (18.0f)) << "is not smoothed";
}

//======================================================================================================================
/** A transport that stands or plays; it moves while it plays, as hosts' do. */
class SetPlayHead final : public juce::AudioPlayHead
{
public:
    juce::Optional<PositionInfo> getPosition() const override
    {
        PositionInfo info;
        info.setIsPlaying (playing);
        info.setTimeInSamples (playing ? ++time : time);
        return info;
    }

    bool playing = true;

private:
    mutable juce::int64 time = 0;
};

/** A sine at the centre of a band that raises it by 6 dB, with an open editor and a running transport. */
class LiveLevelMatchTest : public testing::Test
{
protected:
    LiveLevelMatchTest()
    {
        rig.renderOffline();
        rig.prepare (48000.0, 512);
        rig.processor.setPlayHead (&playHead);
        rig.processor.model.editorClosed = false;
        rig.set (ParameterIds::mode, 1.0f);
        rig.setBand (4, 3000.0f, 6.0f);

        // The taps arrive while the transport stands, so that nothing is matched before a test begins.
        playHead.playing = false;
        rig.settle();
        playHead.playing = true;
    }

    ~LiveLevelMatchTest() override { rig.processor.setPlayHead (nullptr); }

    void run (double seconds, double amplitude = 0.1)
    {
        const auto blocks = static_cast<int> (seconds * 48000.0 / 512.0);
        std::ignore = rig.run (signals::tones ({ { 3000.0, amplitude } }, blocks * 512, 48000.0), 512);
    }

    [[nodiscard]] float matchDb() const { return 20.0f * std::log10 (match.gain()); }

    PluginRig rig;
    SetPlayHead playHead;
    const LevelMatch& match = rig.processor.levelMatch();
    LoudnessMeters& meters = rig.processor.loudnessMeters();
};

TEST_F (LiveLevelMatchTest, undoesWhatABandAdds)
{
    run (4.0);
    EXPECT_NEAR (matchDb(), -6.0f, 0.1f);
    EXPECT_NEAR (match.decibels(), matchDb(), 0.2f);
    EXPECT_NEAR (match.pointerGain(), linear (match.decibels()), 1.0e-5f);
}

TEST_F (LiveLevelMatchTest, leavesTheOutputGainOutOfIt)
{
    rig.set (ParameterIds::outputGain, -10.0f);
    run (4.0);
    EXPECT_NEAR (matchDb(), -6.0f, 0.1f);
}

TEST_F (LiveLevelMatchTest, standsStillWithoutAnEditor)
{
    rig.processor.model.editorClosed = true;
    run (4.0);
    EXPECT_EQ (match.gain(), 1.0f);
    rig.processor.model.editorClosed = false;
    run (0.1);
    EXPECT_NEAR (matchDb(), -6.0f, 0.1f) << "the meters went on";
}

TEST_F (LiveLevelMatchTest, standsStillWhileTheTransportStands)
{
    run (0.1);
    playHead.playing = false;
    const auto before = match.gain();
    run (4.0);
    EXPECT_EQ (match.gain(), before);
    playHead.playing = true;
    run (0.1);
    EXPECT_NEAR (matchDb(), -6.0f, 0.1f);
}

TEST_F (LiveLevelMatchTest, standsStillDuringASolo)
{
    run (4.0);
    const auto gain = match.gain();
    const auto pointer = match.pointerGain();
    const auto output = meters.matchOutputLoudness();
    rig.set (4, Kind::solo, 1.0f);
    run (4.0, 0.01);
    EXPECT_EQ (match.gain(), gain);
    EXPECT_EQ (match.pointerGain(), pointer);
    EXPECT_EQ (meters.matchOutputLoudness(), output);
    EXPECT_NEAR (meters.matchInputLoudness(), 20.0f * std::log10 (0.1f) + output - 6.0f, 0.2f)
        << "the input's meter goes on";

    rig.set (4, Kind::solo, 0.0f);
    run (4.0, 0.01);
    EXPECT_NEAR (matchDb(), -6.0f, 0.1f);
}

TEST_F (LiveLevelMatchTest, standsStillUnderTheMainBypass)
{
    run (4.0);
    const auto gain = match.gain();
    const auto pointer = match.pointerGain();
    const auto output = meters.matchOutputLoudness();
    EXPECT_EQ (rig.processor.model.levelMatchPointer, pointer);
    rig.set (ParameterIds::bypass, 1.0f);
    run (4.0, 0.01);
    EXPECT_EQ (match.gain(), gain);
    EXPECT_EQ (match.pointerGain(), pointer);
    EXPECT_EQ (rig.processor.model.levelMatchPointer, pointer);
    EXPECT_EQ (meters.matchOutputLoudness(), output);
    rig.set (ParameterIds::bypass, 0.0f);
    run (4.0, 0.01);
    EXPECT_NEAR (matchDb(), -6.0f, 0.1f);
}

TEST_F (LiveLevelMatchTest, isOneOverSilence)
{
    run (4.0);
    rig.runSilence (48000 * 5, 512);
    EXPECT_EQ (match.gain(), 1.0f);
}
} // namespace
