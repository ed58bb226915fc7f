#include "gui/analysis/UserTargetFile.h"

#include "gui/analysis/TrackRig.h"
#include "targets/TargetDocument.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <sys/stat.h>

namespace
{
constexpr std::array<float, 10> values {
    -20.5f, -21.0f, -22.25f, -24.0f, -25.0f, -26.0f, -30.0f, -34.0f, -40.0f, -44.0f
};

class UserTargetFileTest : public testing::Test
{
protected:
    UserTargetFileTest() { presets().setUserSetting (-12.5f, values); }

    [[nodiscard]] Presets::Library& presets() { return tracks.rig.processor.presets; }
    [[nodiscard]] Presets::Numbers numbers() { return presets().numbersOf (*presets().findPresetById (130)); }

    [[nodiscard]] nlohmann::json jsonIn (const juce::File& read) const
    {
        return nlohmann::json::parse (read.loadFileAsString().toStdString());
    }

    TrackRig tracks;
    const juce::File file = tracks.folder.file ("mine.target");
};
} // namespace

TEST_F (UserTargetFileTest, whatIsSavedIsLoadedAgain)
{
    const auto saved = UserTargetFile::save (file, presets(), {});
    EXPECT_TRUE (saved.succeeded);
    EXPECT_EQ (saved.sentence, "The target is saved in 'mine.target'.");
    presets().setUserSetting (0.0f, std::array<float, 10> {});
    const auto loaded = UserTargetFile::load (file, presets());
    EXPECT_TRUE (loaded.succeeded);
    EXPECT_EQ (loaded.sentence, "The target of 'mine.target' is set.");
    EXPECT_EQ (numbers().lufs, -12.5f);
    EXPECT_EQ (numbers().values, values);
}

TEST_F (UserTargetFileTest, bandsWithoutAMeasurementStayWithoutOne)
{
    auto gaps = values;
    gaps[2] = -std::numeric_limits<float>::infinity();
    presets().setUserSetting (-12.5f, gaps);
    ASSERT_TRUE (UserTargetFile::save (file, presets(), {}).succeeded);
    EXPECT_TRUE (jsonIn (file)["values"][2].is_null());
    presets().setUserSetting (0.0f, values);
    ASSERT_TRUE (UserTargetFile::load (file, presets()).succeeded);
    EXPECT_EQ (numbers().values, gaps);
}

TEST_F (UserTargetFileTest, theTracksStandInTheFileIfTheTargetIsMadeOfThem)
{
    const auto track = tracks.load (tracks.write ("one.wav", 3.0));
    track->setLoops ({ { 24000, 120000, false, 1 } });
    EXPECT_FALSE (UserTargetFile::isMadeOf (tracks.model().tracks(), presets()));
    ASSERT_TRUE (UserTargetFile::save (file, presets(), tracks.model().tracks()).succeeded);
    EXPECT_TRUE (jsonIn (file)["tracks"].empty());

    tracks.model().createTargets ([] (int) {});
    EXPECT_TRUE (UserTargetFile::isMadeOf (tracks.model().tracks(), presets()));
    ASSERT_TRUE (UserTargetFile::save (file, presets(), tracks.model().tracks()).succeeded);
    const auto written = jsonIn (file);
    EXPECT_EQ (written["name"], "mine");
    ASSERT_EQ (written["tracks"].size(), 1u);
    EXPECT_EQ (written["tracks"][0]["file"], track->filePath.toStdString());
    EXPECT_EQ (written["tracks"][0]["seconds"], 3.0);
    EXPECT_EQ (written["tracks"][0]["ranges"], nlohmann::json::parse ("[[0.5, 2.5]]"));
    EXPECT_EQ (written["lufs"].get<float>(), track->reading().lufs);
}

TEST_F (UserTargetFileTest, aTrackThatHasComeSinceTheAnalysisIsNoneOfThem)
{
    tracks.load (tracks.write ("one.wav", 3.0));
    tracks.model().createTargets ([] (int) {});
    tracks.load (tracks.write ("two.wav", 3.0));
    EXPECT_FALSE (UserTargetFile::isMadeOf (tracks.model().tracks(), presets()));
    ASSERT_TRUE (UserTargetFile::save (file, presets(), tracks.model().tracks()).succeeded);
    EXPECT_TRUE (jsonIn (file)["tracks"].empty());

    // Nothing could be measured in it, but it was tried.
    tracks.load (tracks.write ("silence.wav", 3.0, 2, 0.0f));
    tracks.model().createTargets ([] (int) {});
    EXPECT_TRUE (UserTargetFile::isMadeOf (tracks.model().tracks(), presets()));
}

TEST_F (UserTargetFileTest, rangesThatHaveChangedSinceTheAnalysisAreNotThoseOfTheTarget)
{
    const auto track = tracks.load (tracks.write ("one.wav", 3.0));
    const auto isMadeOfIt = [&] { return UserTargetFile::isMadeOf (tracks.model().tracks(), presets()); };
    track->setLoops ({ { 24000, 120000, false, 1 } });
    tracks.model().createTargets ([] (int) {});
    EXPECT_TRUE (isMadeOfIt());
    track->setLoops ({ { 24000, 96000, false, 1 } });
    EXPECT_FALSE (isMadeOfIt());
    track->setLoops ({ { 24000, 120000, false, 1 }, { 0, 24000, false, 2 } });
    EXPECT_FALSE (isMadeOfIt());
    track->setLoops ({});
    EXPECT_FALSE (isMadeOfIt());

    // What the mouse has brought back is as good as what was there.
    track->setLoops ({ { 24000, 120000, true, 3 } });
    EXPECT_TRUE (isMadeOfIt());
}

TEST_F (UserTargetFileTest, nothingMeasuredIsNothingToSave)
{
    presets().setUserSetting (-std::numeric_limits<float>::infinity(), values);
    const auto outcome = UserTargetFile::save (file, presets(), {});
    EXPECT_FALSE (outcome.succeeded);
    EXPECT_EQ (outcome.sentence, "There is nothing to save: nothing could be measured.");
    EXPECT_FALSE (file.exists());
}

TEST_F (UserTargetFileTest, aTargetIsReplacedAndNothingElse)
{
    ASSERT_TRUE (UserTargetFile::save (file, presets(), {}).succeeded);
    ASSERT_TRUE (UserTargetFile::save (file, presets(), {}).succeeded);
    const juce::File sound (tracks.write ("one.wav", 1.5));
    const auto size = sound.getSize();
    const auto outcome = UserTargetFile::save (sound, presets(), {});
    EXPECT_FALSE (outcome.succeeded);
    EXPECT_TRUE (outcome.sentence.contains ("one.wav")) << outcome.sentence;
    EXPECT_EQ (sound.getSize(), size);
    EXPECT_FALSE (UserTargetFile::save (tracks.folder.file ("none/mine.target"), presets(), {}).succeeded);
}

TEST_F (UserTargetFileTest, whatIsNoTargetChangesNothing)
{
    const auto expect = [this] (const juce::File& loaded, const juce::String& sentence)
    {
        const auto outcome = UserTargetFile::load (loaded, presets());
        EXPECT_FALSE (outcome.succeeded);
        EXPECT_EQ (outcome.sentence, sentence);
        EXPECT_EQ (numbers().lufs, -12.5f);
        EXPECT_EQ (numbers().values, values);
    };

    expect (file, "'mine.target' cannot be read.");
    expect (file.getParentDirectory(), "'" + file.getParentDirectory().getFileName() + "' cannot be read.");

    // Nobody will ever write into it.
    const auto pipe = tracks.folder.file ("pipe");
    ASSERT_EQ (::mkfifo (pipe.getFullPathName().toRawUTF8(), 0600), 0);
    expect (pipe, "'pipe' cannot be read.");

    expect (juce::File (tracks.write ("one.wav", 1.5)), "'one.wav' is not a target file of SOLVANE.");
    expect (juce::File (tracks.write ("long.wav", 10.0)), "'long.wav' is not a target file of SOLVANE.");

    const std::pair<const char*, const char*> texts[] {
        { "", "'mine.target' is not a target file of SOLVANE." },
        { R"({"format": "solvane-target", "version": 2})", "'mine.target' is a target file of another version." },
        { R"({"format": "solvane-target", "version": 1, "lufs": null, "values": [1,2,3,4,5,6,7,8,9,10]})",
          "'mine.target' does not hold a loudness and ten values." },
        { R"({"format": "solvane-target", "version": 1, "lufs": -9, "values": [1,2,3,4,5,6,7,8,9]})",
          "'mine.target' does not hold a loudness and ten values." },
        { R"({"format": "solvane-target", "version": 1, "lufs": -9, "values": [1,2,3,4,5,6,7,8,9,1e9]})",
          "'mine.target' holds a value that is no level." },
    };

    for (const auto& [text, sentence] : texts)
    {
        ASSERT_TRUE (file.replaceWithText (text));
        expect (file, sentence);
    }
}
