#include "core/references/ReferenceTrackModel.h"

#include "support/FileZoo.h"
#include "support/Messages.h"
#include "support/PluginRig.h"
#include "support/SanitizedBuild.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

namespace
{
constexpr auto tableHead = R"(# What becomes of reference files in the plug-in

A test makes each of these files with sox, ffmpeg or byte by byte, from the same seven seconds of recorded drums, has the
plug-in's reference tracks load it in a session of 44.1 kHz, and compares what comes of it with this list, which it has
written itself:

    SOLVANE_WRITE_FILES_TABLE=1 build/release/tests/solvane_core_tests --gtest_filter='TrackFileZooTest.*'

What is passed over is passed over without a word: the tracks that are there stay. [files.md](files.md) says what the
program makes of the same files.

| File | What it is | What came of it |
|---|---|---|
)";

/** Loads files one after the other into one model, next to a track that must stay. */
class TrackFileZooTest : public testing::Test, private juce::ActionListener
{
protected:
    TrackFileZooTest()
    {
        FileZoo::makeOriginals (folder);
        model.addActionListener (this);
        model.setSession (44100.0, 4);
        load (folder.path ("stereo.wav"));
        load (folder.path ("twice.wav"));
        original = model.tracks().at (0);
        twice = model.tracks().at (1);
        original->analyse ([] {});
        twice->analyse ([] {});
    }

    ~TrackFileZooTest() override { model.removeActionListener (this); }

    void load (const std::string& path)
    {
        messages.clear();
        model.enqueue ({ juce::String::fromUTF8 (path.c_str()), {}, {}, false });
        PluginRig::serveMessagesUntil ([this] { return ! model.isLoading(); });
        Messages::deliver();
    }

    void actionListenerCallback (const juce::String& message) override
    {
        messages.push_back (message.upToFirstOccurrenceOf (":", false, false).toStdString());
    }

    /** What came of a file, in words; of a track, its figures are checked. */
    std::string outcomeOf (const FileZoo::Specimen& specimen)
    {
        const auto count = model.tracks().size();
        load (folder.path (specimen.name));

        if (model.tracks().size() == count)
            return messages.empty() ? "passed over" : "\"" + messages.at (0) + "\", and passed over";

        EXPECT_EQ (
            messages,
            (std::vector<std::string> { "TRACK_LOADING", "TRACK_INITIAL_LOAD_COMPLETE", "TRACK_WAVEFORM_COMPLETE" }));
        const auto track = model.selectedTrack();
        EXPECT_EQ (
            track->numSamples.load(),
            static_cast<int> (std::ceil (static_cast<double> (track->lengthInSamples) * 44100.0 / track->rates.file)));
        const auto text = describe (*track, specimen);
        model.removeSelectedTrack();
        return text;
    }

    std::string describe (ReferenceTrack& track, const FileZoo::Specimen& specimen)
    {
        std::ostringstream text;
        text << "a " << (track.isStereo ? "stereo" : "mono") << " track of "
             << juce::String (track.numSamples / 44100.0, 2) << " s";
        track.analyse ([] {});
        const auto& like = specimen.like == "stereo.wav" ? *original : *twice;
        const auto reading = track.reading();

        if (! reading.exists)
            return text.str() + ", in which nothing can be measured";

        if (track.rates.file != 44100.0 || specimen.exitCode != 0 || ! specimen.options.empty())
            return text.str();

        const auto tolerance = static_cast<float> (specimen.tolerance);
        const auto softer = static_cast<float> (specimen.softerDb);
        EXPECT_NEAR (reading.lufs + softer, like.reading().lufs, tolerance);

        for (std::size_t band = 0; band < specimen.bands; ++band)
            EXPECT_NEAR (reading.bands[band] + softer, like.reading().bands[band], tolerance) << "band " << band;

        text << (specimen.tolerance > 0.0
                     ? ", its figures within " + juce::String (specimen.tolerance).toStdString() + " dB"
                     : ", its figures the same");
        return text.str();
    }

    TemporaryFolder folder;
    Presets::Library presets;
    TargetSet target;
    ReferenceTrackModel model { presets, target };
    ReferenceTrackModel::TrackPtr original, twice;
    std::vector<std::string> messages;
};

TEST_F (TrackFileZooTest, giveWhatTheTableOfFilesSays)
{
    constexpr std::uintmax_t largestHere = 1 << 30;
    std::string text = tableHead;

    for (const auto& specimen : FileZoo::specimens())
    {
        SCOPED_TRACE (specimen.name);

        // The same file with other arguments of the program.
        if (! specimen.options.empty())
            continue;

        specimen.make (folder, folder.path (specimen.name));

        if (std::filesystem::file_size (folder.path (specimen.name)) < largestHere)
            text += "| `" + specimen.name + "` | " + specimen.what + " | " + outcomeOf (specimen) + " |\n";

        std::filesystem::remove (folder.path (specimen.name));
        ASSERT_EQ (model.tracks().size(), 2u);
    }

    FileZoo::expectDocument (SOLVANE_FIXTURES "/../../docs/plugin-files.md", text);
}

TEST_F (TrackFileZooTest, aFileOf2GigabytesCanBeTakenBack)
{
    if (isSanitizedBuild)
        GTEST_SKIP() << "a sanitizer keeps a shadow of all that is taken";

    FileZoo::hugeWav (0x7fff0000, false) (folder, folder.path ("huge.wav"));
    model.enqueue ({ folder.path ("huge.wav"), {}, {}, false });
    PluginRig::serveMessagesUntil ([this] { return model.tracks().size() == 3; });
    const auto track = model.tracks().back();
    EXPECT_EQ (track->lengthInSamples, 0x7fff0000 / 4);
    model.removeSelectedTrack();
    EXPECT_EQ (model.selectedTrack(), twice);
    EXPECT_LT (track->numSamples.load(), static_cast<int> (track->lengthInSamples)) << "nobody waited for all of it";
}

TEST_F (TrackFileZooTest, aFileWhoseNameGoesWhileItLoadsIsReadToItsEnd)
{
    convertWithSox (folder.path ("stereo.wav"), "-b 16", folder.path ("long.wav"), "repeat 40");
    model.enqueue ({ folder.path ("long.wav"), {}, {}, false });
    PluginRig::serveMessagesUntil ([this] { return model.tracks().size() == 3; });
    ASSERT_TRUE (folder.file ("long.wav").deleteFile());
    PluginRig::serveMessagesUntil ([this] { return ! model.isLoading(); });
    const auto track = model.tracks().back();
    EXPECT_EQ (track->numSamples.load(), 41 * original->numSamples.load());
    EXPECT_EQ (track->samples().left[track->numSamples - 1000], original->samples().left[original->numSamples - 1000]);
}

TEST_F (TrackFileZooTest, aFileThatIsCutWhileItLoadsGoesOnInSilence)
{
    convertWithSox (folder.path ("stereo.wav"), "-b 16", folder.path ("long.wav"), "repeat 40");
    model.enqueue ({ folder.path ("long.wav"), {}, {}, false });
    PluginRig::serveMessagesUntil ([this] { return model.tracks().size() == 3; });
    std::filesystem::resize_file (folder.path ("long.wav"), 1000000);
    PluginRig::serveMessagesUntil ([this] { return ! model.isLoading(); });
    EXPECT_TRUE (model.tracks().back()->loaded);
    EXPECT_EQ (model.tracks().back()->numSamples.load(), 41 * original->numSamples.load());
}
} // namespace
