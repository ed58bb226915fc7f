#include "files/OutputPlace.h"

#include "support/SoundFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
using testing::HasSubstr;
using Kind = OutputPlace::Kind;

class OutputPlaceTest : public testing::Test
{
protected:
    [[nodiscard]] std::string
    refusal (const std::string& name, Kind kind, const std::vector<std::filesystem::path>& spared = {})
    {
        return OutputPlace::refusal (folder.path (name), kind, name, spared).value_or ("");
    }

    TemporaryFolder folder;
    const std::string pngSignature { "\x89PNG\r\n\x1a\n" };
};

TEST_F (OutputPlaceTest, letsNewEmptyAndLikeFilesBeWritten)
{
    writeBytes (folder.path ("empty"), "");
    writeBytes (folder.path ("old.png"), pngSignature + "rest");
    convertWithSox (recordedLoop(), "-b 16", folder.path ("old.wav"), "trim 0 0.1");

    for (const auto kind : { Kind::sound, Kind::picture })
    {
        EXPECT_EQ (refusal ("new", kind), "");
        EXPECT_EQ (refusal ("empty", kind), "");
    }

    EXPECT_EQ (refusal ("old.png", Kind::picture), "");
    EXPECT_EQ (refusal ("old.wav", Kind::sound), "");
}

TEST_F (OutputPlaceTest, refusesToReplaceWhatIsOfAnotherKind)
{
    writeBytes (folder.path ("text"), "notes of a year");
    writeBytes (folder.path ("old.png"), pngSignature + "rest");
    convertWithSox (recordedLoop(), "-b 16", folder.path ("old.wav"), "trim 0 0.1");

    EXPECT_THAT (refusal ("text", Kind::sound), HasSubstr ("is no sound file"));
    EXPECT_THAT (refusal ("text", Kind::picture), HasSubstr ("is no PNG picture"));
    EXPECT_THAT (refusal ("old.png", Kind::sound), HasSubstr ("is no sound file"));
    EXPECT_THAT (refusal ("old.wav", Kind::picture), HasSubstr ("is no PNG picture"));

    // Also behind a link.
    ASSERT_EQ (::symlink ("text", folder.path ("link.wav").c_str()), 0);
    EXPECT_THAT (refusal ("link.wav", Kind::sound), HasSubstr ("is no sound file"));
}

TEST_F (OutputPlaceTest, knowsASparedFileByAnyOfItsNames)
{
    writeBytes (folder.path ("in.png"), pngSignature);
    ASSERT_TRUE (folder.file ("sub").createDirectory());
    ASSERT_EQ (::symlink ("in.png", folder.path ("soft.png").c_str()), 0);
    ASSERT_EQ (::link (folder.path ("in.png").c_str(), folder.path ("hard.png").c_str()), 0);
    writeBytes (folder.path ("other.png"), pngSignature);
    const std::vector<std::filesystem::path> spared { folder.path ("in.png") };

    for (const auto* name : { "in.png", "soft.png", "hard.png", "sub/../in.png", "./in.png" })
        EXPECT_THAT (refusal (name, Kind::picture, spared), HasSubstr ("is what is read")) << name;

    EXPECT_EQ (refusal ("other.png", Kind::picture, spared), "");
    EXPECT_EQ (refusal ("new.png", Kind::picture, spared), "");
}

TEST_F (OutputPlaceTest, refusesWhatIsNoPlaceForAFile)
{
    ASSERT_TRUE (folder.file ("empty folder").createDirectory());
    ASSERT_EQ (::mkfifo (folder.path ("pipe").c_str(), 0600), 0);

    EXPECT_THAT (refusal ("empty folder", Kind::picture), HasSubstr ("is a folder"));
    EXPECT_THAT (refusal ("nowhere/a.png", Kind::picture), HasSubstr ("There is no folder 'nowhere'"));
    EXPECT_THAT (refusal ("pipe", Kind::sound), HasSubstr ("is not an ordinary file"));
    EXPECT_THAT (OutputPlace::refusal ("/dev/full", Kind::picture, "/dev/full").value_or (""),
                 HasSubstr ("is not an ordinary file"));

    // What a shell calls a file and is a pipe, behind a link that names none.
    const auto pipe = ::open (folder.path ("pipe").c_str(), O_RDWR);
    const auto name = "/proc/self/fd/" + std::to_string (pipe);
    EXPECT_THAT (OutputPlace::refusal (name, Kind::sound, name).value_or (""), HasSubstr ("is not an ordinary file"));
    ::close (pipe);
}
} // namespace
