#include "gui/analysis/TrackChooser.h"

#include "gui/analysis/TrackRig.h"

#include <gtest/gtest.h>

namespace
{
class TrackChooserTest : public testing::Test
{
protected:
    TrackChooserTest()
    {
        dialog.setOpener (
            [this] (const FileDialog::Question& question, FileDialog::Answer toAnswer)
            {
                asked.push_back (question);
                answer = std::move (toAnswer);
            });
    }

    void waitForTracks (std::size_t count)
    {
        PluginRig::serveMessagesUntil (
            [&]
            {
                const auto all = tracks.model().tracks();
                return all.size() == count && all.back()->loaded;
            });
    }

    TrackRig tracks;
    FileDialog dialog;
    TrackChooser chooser { tracks.model(), dialog };
    std::vector<FileDialog::Question> asked;
    FileDialog::Answer answer;
};
} // namespace

TEST_F (TrackChooserTest, asksForSoundFiles)
{
    chooser.chooseFiles();
    ASSERT_EQ (asked.size(), 1u);
    EXPECT_EQ (asked[0].title, "Select a Wave/MP3/AIFF/FLAC file to play...");
    EXPECT_EQ (asked[0].pattern, "*.wav;*.mp3;*.aif;*.aiff;*.fla;*.flac");
    EXPECT_EQ (asked[0].flags,
               juce::FileBrowserComponent::openMode | juce::FileBrowserComponent::canSelectFiles
                   | juce::FileBrowserComponent::canSelectMultipleItems);
}

TEST_F (TrackChooserTest, everyChosenFileIsLoadedTheSameOneTwiceToo)
{
    const juce::File file (tracks.write ("one.wav", 1.5));
    chooser.chooseFiles();
    answer ({ file, file });
    waitForTracks (2);
    EXPECT_EQ (tracks.model().tracks()[0]->filePath, file.getFullPathName());
    EXPECT_EQ (tracks.model().tracks()[1]->name(), "ONE");
}

TEST_F (TrackChooserTest, oneQuestionIsOpenAtATime)
{
    chooser.chooseFiles();
    chooser.chooseFiles();
    EXPECT_EQ (asked.size(), 1u);
    EXPECT_TRUE (dialog.isOpen());
    answer ({});
    EXPECT_FALSE (dialog.isOpen());
    EXPECT_TRUE (tracks.model().tracks().empty());
    chooser.chooseFiles();
    EXPECT_EQ (asked.size(), 2u);
}

TEST_F (TrackChooserTest, moreThanTwentyFilesAreDroppedAsAWhole)
{
    const juce::File file (tracks.write ("one.wav", 1.0, 1));
    chooser.chooseFiles();
    answer (FileDialog::Files (21, file));

    chooser.chooseFiles();
    answer (FileDialog::Files (20, file));
    waitForTracks (20);

    // As many as there can be: nobody is asked any more.
    chooser.chooseFiles();
    EXPECT_EQ (asked.size(), 2u);
}

TEST_F (TrackChooserTest, anAnswerThatComesTooLateFindsNobody)
{
    auto gone = std::make_unique<FileDialog>();
    FileDialog::Answer late;
    gone->setOpener ([&] (const FileDialog::Question&, FileDialog::Answer toAnswer) { late = std::move (toAnswer); });
    auto answers = 0;
    gone->ask ({}, [&] (const FileDialog::Files&) { ++answers; });
    gone.reset();
    late ({ juce::File ("/tmp") });
    EXPECT_EQ (answers, 0);
}
