#include "core/references/ReferenceTrackModel.h"

#include "support/FileZoo.h"
#include "support/Messages.h"
#include "support/PluginRig.h"
#include "support/SoundFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <thread>

namespace
{
using testing::ElementsAre;
using testing::IsEmpty;

/** Writes down every message, on the message thread. */
class MessageLog final : public juce::ActionListener
{
public:
    explicit MessageLog (juce::ActionBroadcaster& sender) : broadcaster (sender)
    {
        broadcaster.addActionListener (this);
    }

    ~MessageLog() override { broadcaster.removeActionListener (this); }

    void actionListenerCallback (const juce::String& message) override { texts.push_back (message.toStdString()); }

    MessageLog (const MessageLog&) = delete;
    MessageLog& operator= (const MessageLog&) = delete;

    std::vector<std::string> texts;

private:
    juce::ActionBroadcaster& broadcaster;
};

class ReferenceTrackModelTest : public testing::Test
{
protected:
    ReferenceTrackModelTest() { model->setSession (48000.0, 4); }

    /** A file of noise; two channels, three seconds. */
    [[nodiscard]] std::string
    file (const std::string& name, int length = 144000, int channels = 2, double rate = 48000.0)
    {
        auto path = folder.path (name);
        writeFloatWav (path, signals::noise (channels, length, 7), rate);
        return path;
    }

    void ask (const std::string& path, const juce::String& name = {}, std::vector<TrackLoop> loops = {})
    {
        model->enqueue ({ juce::String::fromUTF8 (path.c_str()), name, std::move (loops), false });
    }

    /** Until nothing waits any more, with all messages delivered. */
    void waitForLoads()
    {
        PluginRig::serveMessagesUntil ([this] { return ! model->isLoading(); });
        Messages::deliver();
    }

    void load (const std::string& path, const juce::String& name = {}, std::vector<TrackLoop> loops = {})
    {
        ask (path, name, std::move (loops));
        waitForLoads();
    }

    [[nodiscard]] std::vector<std::string> names() const
    {
        std::vector<std::string> result;

        for (const auto& track : model->tracks())
            result.push_back (track->name().toStdString());

        return result;
    }

    TemporaryFolder folder;
    Presets::Library presets;
    TargetSet target;
    std::unique_ptr<ReferenceTrackModel> model = std::make_unique<ReferenceTrackModel> (presets, target);
    MessageLog log { *model };
};

TEST_F (ReferenceTrackModelTest, aLoadTellsItsStepsInOrder)
{
    load (file ("My mix.wav"));
    ASSERT_EQ (model->tracks().size(), 1u);
    const auto track = model->tracks()[0];
    const auto id = std::to_string (track->id);
    EXPECT_THAT (
        log.texts,
        ElementsAre ("TRACK_LOADING:MY MIX", "TRACK_INITIAL_LOAD_COMPLETE:" + id, "TRACK_WAVEFORM_COMPLETE:" + id));
    EXPECT_EQ (model->selectedTrack(), track);
    EXPECT_EQ (model->findTrack (track->id), track);
    EXPECT_TRUE (track->loaded);
    EXPECT_EQ (track->numSamples, 144000);
    EXPECT_TRUE (track->isStereo);
    EXPECT_EQ (track->displayName, "MY MIX");
    EXPECT_EQ (track->name(), "MY MIX");
}

TEST_F (ReferenceTrackModelTest, aTrackHoldsTheFileToTheBitAtItsOwnRate)
{
    load (file ("a.wav"));
    const auto samples = model->tracks().at (0)->samples();
    const auto expected = signals::noise (2, 144000, 7);
    EXPECT_EQ (std::vector (samples.left, samples.left + samples.count), expected[0]);
    EXPECT_EQ (std::vector (samples.right, samples.right + samples.count), expected[1]);
}

TEST_F (ReferenceTrackModelTest, aFileOfAnotherRateFillsItsArraysAndNoMore)
{
    load (file ("a.wav", 441000, 2, 44100.0));
    load (file ("b.wav", 192000, 2, 192000.0));
    ASSERT_EQ (model->tracks().size(), 2u);
    EXPECT_EQ (model->tracks()[0]->numSamples, 480000);
    EXPECT_EQ (model->tracks()[1]->numSamples, 48000);
    EXPECT_EQ (model->tracks()[1]->rates.file, 192000.0);
    EXPECT_EQ (model->tracks()[1]->rates.session, 48000.0);
    EXPECT_EQ (model->tracks()[1]->rates.decimation, 4);
}

TEST_F (ReferenceTrackModelTest, theOutlineSpansTheWidthInStepsOfThree)
{
    model->waveformWidth = 300;
    load (file ("a.wav"));
    std::set<int> columns;
    const auto outline = model->tracks().at (0)->outline();

    for (const auto& point : *outline)
        columns.insert (point.x);

    EXPECT_EQ (columns.size(), 100u);
    EXPECT_EQ (*columns.rbegin(), 297);
}

TEST_F (ReferenceTrackModelTest, withoutASessionRateTheRequestIsLost)
{
    model->setSession (0.0, std::nullopt);
    load (file ("a.wav"));
    EXPECT_THAT (log.texts, ElementsAre ("SESSION_SAMPLERATE_NOT_SET_BY_DAW:"));
    model->setSession (48000.0, 4);
    waitForLoads();
    EXPECT_THAT (model->tracks(), IsEmpty());
    EXPECT_THAT (model->sessionTracks(), IsEmpty());
}

TEST_F (ReferenceTrackModelTest, aMissingFileIsNamed)
{
    load (folder.path ("Gone away.wav"));
    load ("");
    load ("relative.wav");
    EXPECT_THAT (log.texts, ElementsAre ("FILE_NOT_FOUND:GONE AWAY", "FILE_NOT_FOUND:", "FILE_NOT_FOUND:RELATIVE"));
    EXPECT_THAT (model->tracks(), IsEmpty());
}

TEST_F (ReferenceTrackModelTest, whatNoReaderTakesIsPassedOverInSilence)
{
    writeBytes (folder.path ("a.wav"), "no sound at all");
    load (folder.path ("a.wav"));
    writeBytes (folder.path ("b.wav"), bytesOf (file ("c.wav")).substr (0, 100000));
    load (folder.path ("b.wav"));
    EXPECT_THAT (log.texts, IsEmpty());
    load (file ("d.wav"));
    EXPECT_THAT (names(), ElementsAre ("D"));
}

TEST_F (ReferenceTrackModelTest, lessThanASecondIsTakenBackAfterItsFirstMessage)
{
    load (file ("half.wav", 24000));
    load (file ("nearly.wav", 47999));
    EXPECT_THAT (log.texts, ElementsAre ("TRACK_LOADING:HALF", "TRACK_LOADING:NEARLY"));
    EXPECT_THAT (model->tracks(), IsEmpty());
    load (file ("second.wav", 48000));
    EXPECT_THAT (names(), ElementsAre ("SECOND"));
}

TEST_F (ReferenceTrackModelTest, threeChannelsAndMoreCountAsMono)
{
    load (file ("one.wav", 48000, 1));
    load (file ("three.wav", 48000, 3));
    load (file ("six.wav", 48000, 6));
    ASSERT_EQ (model->tracks().size(), 3u);

    for (const auto& track : model->tracks())
    {
        EXPECT_FALSE (track->isStereo) << track->name();
        EXPECT_EQ (track->samples().right, nullptr) << track->name();
    }

    // The first channel of the file is the one that is heard.
    const auto expected = signals::noise (6, 48000, 7);
    EXPECT_EQ (model->tracks()[2]->samples().left[100], expected[0][100]);
}

TEST_F (ReferenceTrackModelTest, theUserMayHaveAFileTwiceAndASessionMayNot)
{
    const auto path = file ("a.wav");
    load (path);
    load (path);
    EXPECT_THAT (names(), ElementsAre ("A", "A"));
    EXPECT_NE (model->tracks()[0]->id, model->tracks()[1]->id);

    log.texts.clear();
    load (path, "A");
    EXPECT_EQ (model->tracks().size(), 2u);
    EXPECT_THAT (log.texts, IsEmpty());

    // It is the name that counts and that the user may change.
    for (const auto& track : model->tracks())
        track->setName ("B");

    load (path, "A");
    EXPECT_THAT (names(), ElementsAre ("B", "B", "A"));
}

TEST_F (ReferenceTrackModelTest, aTrackWithoutANameMatchesNoRequest)
{
    const auto path = file ("a.wav");
    load (path);
    model->tracks()[0]->setName ({});
    load (path);
    EXPECT_EQ (model->tracks().size(), 2u);
}

TEST_F (ReferenceTrackModelTest, rangesOfARequestBecomeTheTracks)
{
    const TrackLoop loop { .startSamples = 1000, .endSamples = 90000, .active = true, .id = 5 };
    load (file ("a.wav"), "A", { loop });
    const auto loops = model->tracks().at (0)->loops();
    ASSERT_EQ (loops.size(), 1u);
    EXPECT_EQ (loops[0].startSamples, 1000);
    EXPECT_EQ (loops[0].endSamples, 90000);
    EXPECT_TRUE (loops[0].active);
}

TEST_F (ReferenceTrackModelTest, twentyTracksAreTheMost)
{
    const auto path = file ("a.wav", 48000);

    for (int i = 0; i < 22; ++i)
        ask (path);

    waitForLoads();
    EXPECT_EQ (model->tracks().size(), 20u);
    EXPECT_EQ (log.texts.size(), 60u) << "nothing is said of what is too much";
    std::set<juce::int64> ids;

    for (const auto& track : model->tracks())
        ids.insert (track->id);

    EXPECT_EQ (ids.size(), 20u);
}

//======================================================================================================================
TEST_F (ReferenceTrackModelTest, removingTakesTheSelectedTrackAndSelectsTheLast)
{
    std::vector<juce::int64> removed;
    model->onTrackRemoved = [&] (juce::int64 id) { removed.push_back (id); };
    model->removeSelectedTrack();
    EXPECT_THAT (removed, IsEmpty());

    for (const auto* name : { "a.wav", "b.wav", "c.wav" })
        load (file (name));

    const auto ids = std::vector { model->tracks()[0]->id, model->tracks()[1]->id, model->tracks()[2]->id };
    model->selectTrack (ids[0]);
    model->selectTrack (12345);
    EXPECT_EQ (model->selectedTrack()->id, ids[0]);

    model->removeSelectedTrack();
    EXPECT_EQ (model->selectedTrack()->id, ids[2]);
    EXPECT_EQ (model->findTrack (ids[0]), nullptr);
    model->removeSelectedTrack();
    model->removeSelectedTrack();
    EXPECT_EQ (model->selectedTrack(), nullptr);
    EXPECT_THAT (removed, ElementsAre (ids[0], ids[2], ids[1]));
}

TEST_F (ReferenceTrackModelTest, aTrackCanBeRemovedWhileItLoads)
{
    load (file ("first.wav"));

    // Long enough to be met in the middle, whatever the machine: 38 minutes, mostly of a hole.
    FileZoo::makeOriginals (folder);
    const auto path = folder.path ("long.wav");
    FileZoo::hugeWav (100000000, false, 8, 1) (folder, path);
    log.texts.clear();
    ask (path);
    PluginRig::serveMessagesUntil ([this] { return model->tracks().size() == 2; });
    const auto track = model->selectedTrack();
    model->removeSelectedTrack();
    EXPECT_TRUE (track->loaded) << "the load ended before the track went";
    EXPECT_THAT (names(), ElementsAre ("FIRST"));
    EXPECT_EQ (model->selectedTrack(), model->tracks()[0]);
    waitForLoads();

    ASSERT_FALSE (log.texts.empty());
    EXPECT_EQ (log.texts.back(), "TRACK_PROCESSING_TERMINATED:");
    load (file ("next.wav"));
    EXPECT_THAT (names(), ElementsAre ("FIRST", "NEXT")) << "the queue goes on";
}

TEST_F (ReferenceTrackModelTest, destructionBreaksOffALoad)
{
    // Two hours: nobody would wait for that.
    const auto path = folder.path ("long.wav");
    convertWithSox ("-n", "-r 48000 -c 2 -b 8", path, "synth 0.1 sine 440 repeat 3599");
    auto own = std::make_unique<ReferenceTrackModel> (presets, target);
    own->setSession (48000.0, 4);

    for (int request = 0; request < 2; ++request)
        own->enqueue ({ path, {}, {}, false });

    PluginRig::serveMessagesUntil ([&] { return ! own->tracks().empty(); });
    const auto track = own->tracks()[0];
    own.reset();
    EXPECT_LT (track->numSamples.load(), static_cast<int> (track->lengthInSamples));
}

//======================================================================================================================
TEST_F (ReferenceTrackModelTest, requestsBeforeTheFirstRateWaitForIt)
{
    model->setSession (0.0, std::nullopt);
    model->restore ({ { file ("a.wav"), "A", { { 1, 2, true, 3 } }, false }, { file ("b.wav"), "B", {}, false } });
    EXPECT_EQ (model->sessionTracks().size(), 2u);
    EXPECT_EQ (model->sessionTracks()[0].loops.size(), 1u);
    EXPECT_FALSE (model->sessionTracks()[0].selected);
    EXPECT_TRUE (model->sessionTracks()[1].selected) << "the one that will be loaded last";

    model->setSession (48000.0, 4);
    EXPECT_EQ (model->sessionTracks().size(), 2u) << "also on their way";
    waitForLoads();
    EXPECT_THAT (names(), ElementsAre ("A", "B"));
    EXPECT_EQ (model->sessionTracks().size(), 2u);
}

TEST_F (ReferenceTrackModelTest, aSessionSavedDuringALoadLosesNothing)
{
    const auto path = file ("a.wav", 48000);

    for (int i = 0; i < 10; ++i)
        model->restore ({ { path, "TRACK " + juce::String (i), {}, false } });

    // At any moment of the ten loads.
    while (model->isLoading())
        EXPECT_EQ (model->sessionTracks().size(), 10u);

    EXPECT_EQ (model->sessionTracks().size(), 10u);
    waitForLoads();
}

TEST_F (ReferenceTrackModelTest, aSessionKeepsWhatTheUserChangedButTheName)
{
    load (file ("a.wav"));
    load (file ("b.wav"));
    const auto track = model->tracks()[0];
    track->setName ("Renamed");
    track->setLoops ({ { .startSamples = 5, .endSamples = 70000, .active = false, .id = 1 } });
    model->selectTrack (track->id);

    const auto saved = model->sessionTracks();
    ASSERT_EQ (saved.size(), 2u);
    EXPECT_EQ (saved[0].displayName, "A") << "a new name lasts as long as the instance";
    EXPECT_EQ (saved[0].filePath, track->filePath);
    EXPECT_EQ (saved[0].loops.size(), 1u);
    EXPECT_TRUE (saved[0].selected);
    EXPECT_FALSE (saved[1].selected);
}

TEST_F (ReferenceTrackModelTest, aMissingFileLeavesTheSession)
{
    model->restore ({ { folder.path ("gone.wav"), "GONE", {}, false }, { file ("a.wav"), "A", {}, false } });
    waitForLoads();
    ASSERT_EQ (model->sessionTracks().size(), 1u);
    EXPECT_EQ (model->sessionTracks()[0].displayName, "A");
}

TEST_F (ReferenceTrackModelTest, aNewRateLeavesLoadedTracksAsTheyAre)
{
    load (file ("a.wav"));
    model->setSession (96000.0, 4);
    EXPECT_EQ (model->tracks()[0]->numSamples, 144000);
    EXPECT_EQ (model->tracks()[0]->rates.session, 48000.0);
    load (file ("b.wav"));
    EXPECT_EQ (model->tracks()[1]->numSamples, 288000);
    model->setSession (192000.0, 8);
    load (file ("c.wav"));
    EXPECT_EQ (model->tracks()[2]->rates.decimation, 8);
    model->setSession (50000.0, std::nullopt);
    load (file ("d.wav"));
    EXPECT_EQ (model->tracks()[3]->rates.decimation, 8) << "an unknown rate leaves it";
}

//======================================================================================================================
TEST_F (ReferenceTrackModelTest, aTargetIsMadeOfAllTracks)
{
    load (file ("a.wav", 480000));
    auto last = -1;
    model->createTargets ([&] (int percent) { last = percent; });
    EXPECT_EQ (last, 100);
    EXPECT_TRUE (model->targetProgress().complete);
    const auto numbers = presets.numbersOf (*presets.findPresetById (Presets::userSettingId));
    EXPECT_TRUE (std::isfinite (numbers.lufs));
    EXPECT_EQ (numbers.lufs, model->tracks()[0]->reading().lufs);
    EXPECT_EQ (target.targetLufs, numbers.lufs);
}

TEST_F (ReferenceTrackModelTest, withoutTracksNoTargetIsMade)
{
    const auto before = presets.numbersOf (*presets.findPresetById (Presets::userSettingId));
    auto last = -1;
    model->createTargets ([&] (int percent) { last = percent; });
    EXPECT_EQ (last, 100);
    const auto after = presets.numbersOf (*presets.findPresetById (Presets::userSettingId));
    EXPECT_EQ (after.values, before.values);
    EXPECT_EQ (after.lufs, before.lufs);
}

TEST_F (ReferenceTrackModelTest, loadingRemovingHearingAndMeasuringAtTheSameTime)
{
    // What goes wrong here is found by the sanitizers.
    const auto path = file ("a.wav", 100000);
    std::atomic<bool> done { false };
    model->audition.isPlaying = true;
    std::thread audio (
        [&]
        {
            std::vector<float> left (512), right (512);
            float* channels[] { left.data(), right.data() };

            while (! done)
                std::ignore = model->audition.play (channels, 2, 512);
        });
    std::thread session (
        [&]
        {
            while (! done)
                std::ignore = model->sessionTracks();
        });

    for (int round = 0; round < 15; ++round)
    {
        ask (path);
        ask (path);
        std::thread measuring ([&] { model->createTargets ([] (int) {}); });

        for (const auto& track : model->tracks())
        {
            track->setLoops ({ { .startSamples = 0, .endSamples = 60000 + round, .active = false, .id = 1 } });
            model->rebuildOutline (*track);
            track->setName ("Round " + juce::String (round));
        }

        model->removeSelectedTrack();
        measuring.join();
        Messages::deliver();
    }

    done = true;
    audio.join();
    session.join();
    waitForLoads();
    EXPECT_LE (model->tracks().size(), 20u);
}

TEST_F (ReferenceTrackModelTest, aLoadTakesRateAndDecimationOfOneSession)
{
    const auto path = file ("a.wav", 60000);
    std::atomic<bool> done { false };
    std::thread host (
        [&]
        {
            while (! done)
            {
                model->setSession (192000.0, 8);
                model->setSession (48000.0, 4);
            }
        });

    for (int round = 0; round < 100; ++round)
    {
        load (path);
        const auto rates = model->tracks().at (0)->rates;
        EXPECT_EQ (rates.decimation, rates.session == 192000.0 ? 8 : 4) << rates.session;
        model->removeSelectedTrack();
    }

    done = true;
    host.join();
}

TEST_F (ReferenceTrackModelTest, aSessionSavedWhileTheRateComesLosesNothing)
{
    // The first keeps the queue at work.
    FileZoo::makeOriginals (folder);
    FileZoo::hugeWav (100000000, false, 8, 1) (folder, folder.path ("long.wav"));
    std::vector<ReferenceTrackRequest> requests { { folder.path ("long.wav"), "LONG", {}, false } };
    requests.resize (20000, { folder.path ("gone.wav"), "GONE", {}, false });

    ReferenceTrackModel own (presets, target);
    own.restore (requests);
    std::atomic<bool> begun { false };
    std::atomic<bool> done { false };
    auto fewest = requests.size();
    std::thread saving (
        [&]
        {
            for (; ! done; begun = true)
                fewest = std::min (fewest, own.sessionTracks().size());
        });

    while (! begun)
        std::this_thread::yield();

    own.setSession (48000.0, 4);
    done = true;
    saving.join();
    EXPECT_EQ (fewest, requests.size());
}

TEST (ReferenceTracksInAHostTest, aRateThatStandsForAnUnknownOneLoadsNothing)
{
    PluginRig rig ({ juce::PluginHostType::SteinbergWavelab8, "/opt/host", []() noexcept { return 0; } });
    auto& tracks = rig.processor.referenceTracks;
    tracks.restore ({ { "/nowhere/gone.wav", "GONE", {}, false } });
    rig.prepare (0.0, 64);
    EXPECT_EQ (rig.processor.model.sampleRate, 1000.0);
    EXPECT_EQ (tracks.sessionSampleRate(), 0.0);
    EXPECT_EQ (tracks.sessionTracks().size(), 1u) << "it waits";
    rig.prepare (48000.0, 64);
    PluginRig::serveMessagesUntil ([&] { return ! tracks.isLoading(); });
    EXPECT_THAT (tracks.sessionTracks(), IsEmpty()) << "it was asked for, and is not there";
}
} // namespace
