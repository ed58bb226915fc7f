#include "support/PluginRig.h"
#include "support/RealTimeGuard.h"
#include "support/SessionRig.h"
#include "support/SoundFiles.h"

#include <gtest/gtest.h>

#include <thread>

namespace
{
constexpr int blockSize = 512;

/** A processor with a track, a band and an output gain that nobody could miss. */
class ReferenceAuditionTest : public testing::Test
{
protected:
    ReferenceAuditionTest()
    {
        writeFloatWav (folder.path ("a.wav"), music, 48000.0);
        rig.prepare (48000.0, blockSize);
        rig.setBand (0, 2000.0f, 12.0f);
        rig.set (ParameterIds::outputGain, -6.0f);
        rig.settle();
        tracks.enqueue ({ folder.path ("a.wav"), {}, {}, false });
        PluginRig::serveMessagesUntil ([this] { return ! tracks.isLoading(); });
    }

    TemporaryFolder folder;
    PluginRig::Signal music = signals::noise (2, 96000, 9);
    PluginRig::Signal host = signals::noise (2, 8 * blockSize, 10);
    PluginRig rig;
    ReferenceTrackModel& tracks = rig.processor.referenceTracks;
};

PluginRig::Signal partOf (const PluginRig::Signal& signal, std::size_t start, std::size_t count)
{
    PluginRig::Signal part;

    for (const auto& channel : signal)
    {
        const auto first = channel.begin() + static_cast<std::ptrdiff_t> (start);
        part.emplace_back (first, first + static_cast<std::ptrdiff_t> (count));
    }

    return part;
}

TEST_F (ReferenceAuditionTest, theTrackIsHeardAsItIsInPlaceOfTheHost)
{
    tracks.audition.isPlaying = true;
    EXPECT_EQ (signals::firstDifference (rig.run (host, blockSize), partOf (music, 0, 8 * blockSize)), "");
    EXPECT_EQ (tracks.selectedTrack()->playPosition, 8 * blockSize);
    EXPECT_EQ (rig.processor.model.currentBlockSize, blockSize);
}

TEST_F (ReferenceAuditionTest, nothingIsMeasuredMeanwhile)
{
    rig.runSilence (96000, blockSize);
    const auto before = rig.processor.loudnessMeters().inputLoudness();
    tracks.audition.isPlaying = true;
    std::ignore = rig.run (signals::noise (2, 96000, 11), blockSize);
    EXPECT_EQ (rig.processor.loudnessMeters().inputLoudness(), before);
    tracks.audition.isPlaying = false;
    std::ignore = rig.run (signals::noise (2, 96000, 11), blockSize);
    EXPECT_NE (rig.processor.loudnessMeters().inputLoudness(), before);
}

TEST_F (ReferenceAuditionTest, afterwardsTheEqualiserGoesOn)
{
    PluginRig other;
    other.prepare (48000.0, blockSize);
    other.setBand (0, 2000.0f, 12.0f);
    other.set (ParameterIds::outputGain, -6.0f);
    other.settle();

    tracks.audition.isPlaying = true;
    std::ignore = rig.run (host, blockSize);
    tracks.audition.isPlaying = false;
    rig.runSilence (8192, blockSize);
    other.runSilence (8192, blockSize);
    EXPECT_EQ (signals::firstDifference (rig.run (host, blockSize), other.run (host, blockSize), 1e-5f), "");
}

TEST_F (ReferenceAuditionTest, aRateThatIsNotServedPlaysNothing)
{
    rig.prepare (32000.0, blockSize);
    tracks.audition.isPlaying = true;
    EXPECT_EQ (signals::firstDifference (rig.run (host, blockSize), host), "");
    EXPECT_EQ (tracks.selectedTrack()->playPosition, 0);
}

TEST_F (ReferenceAuditionTest, aNewSessionRatePlaysItAtAnotherSpeed)
{
    rig.prepare (96000.0, blockSize);
    tracks.audition.isPlaying = true;
    EXPECT_EQ (signals::firstDifference (rig.run (host, blockSize), partOf (music, 0, 8 * blockSize)), "");
}

TEST_F (ReferenceAuditionTest, aBlockAllocatesNothingAndTakesTheNotifyLockAlone)
{
    tracks.audition.isPlaying = true;
    std::thread audio (
        [this]
        {
            juce::AudioBuffer<float> buffer (2, blockSize);
            juce::MidiBuffer noMidi;
            buffer.clear();
            const RealTimeGuard guard;

            // Over the track's end too.
            for (int block = 0; block < 400; ++block)
                rig.processor.processBlock (buffer, noMidi);

            EXPECT_EQ (guard.allocations(), 0);

            EXPECT_EQ (guard.locks(), RealTimeGuard::countsLocks() ? 400 : 0);
        });
    audio.join();
}

TEST_F (ReferenceAuditionTest, aRemovedTrackLeavesTheHostsAudio)
{
    tracks.audition.isPlaying = true;
    std::ignore = rig.run (host, blockSize);
    tracks.removeSelectedTrack();
    rig.settle();
    const auto output = rig.run (host, blockSize);
    EXPECT_NE (signals::firstDifference (output, host), "") << "the equaliser has it again";
}

//======================================================================================================================
TEST_F (ReferenceAuditionTest, sessionsAreSavedWithTheTracksAndTheirRanges)
{
    const auto track = tracks.selectedTrack();
    track->setLoops ({ { .startSamples = 7, .endSamples = 80000, .active = true, .id = 1 } });
    const auto block = sessions::save (rig.processor);

    for (const auto restoreFirst : { true, false })
    {
        PluginRig next;

        if (restoreFirst)
            sessions::load (next.processor, block);

        next.prepare (48000.0, blockSize);

        if (! restoreFirst)
            sessions::load (next.processor, block);

        PluginRig::serveMessagesUntil ([&] { return ! next.processor.referenceTracks.isLoading(); });
        ASSERT_EQ (next.processor.referenceTracks.tracks().size(), 1u) << restoreFirst;
        const auto restored = next.processor.referenceTracks.tracks()[0];
        EXPECT_EQ (restored->numSamples, 96000);
        ASSERT_EQ (restored->loops().size(), 1u);
        EXPECT_EQ (restored->loops()[0].endSamples, 80000);
        EXPECT_TRUE (sessions::save (next.processor) == block) << restoreFirst;

        // Once more: the name is there already.
        sessions::load (next.processor, block);
        PluginRig::serveMessagesUntil ([&] { return ! next.processor.referenceTracks.isLoading(); });
        EXPECT_EQ (next.processor.referenceTracks.tracks().size(), 1u);
    }
}
} // namespace
