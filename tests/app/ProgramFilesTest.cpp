#include "support/ProgramRun.h"
#include "support/SignalMatchers.h"
#include "support/SoundFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

/** What the finished program does to files: that it destroys nothing, and what it keeps. */
class ProgramFilesTest : public testing::Test
{
protected:
    ProgramRun solvane (const std::vector<std::string>& arguments, ProgramSurroundings surroundings = {})
    {
        surroundings.folder = folder.path (".");
        return runProgram (SOLVANE_PROGRAM, arguments, surroundings);
    }

    /** By a shell in the folder, which knows the program as $S. */
    ProgramRun shell (const std::string& command)
    {
        return runProgram ("/bin/sh",
                           { "-c", "S='" SOLVANE_PROGRAM "'; X='" SOLVANE_SOX "'; " + command },
                           { .folder = folder.path ("."), .largestFileBytes = {} });
    }

    void
    makeInput (const std::string& name, const std::string& options = "-b 16", const std::string& effects = "trim 0 1.1")
    {
        convertWithSox (recordedLoop(), options, folder.path (name), effects);
    }

    /** Expects the program to fail with a sentence, and to leave every file as it was. */
    void expectNothingTouched (const std::vector<std::string>& arguments,
                               int exitCode,
                               const std::string& text,
                               ProgramSurroundings surroundings = {})
    {
        const auto before = everything();

        const auto run = solvane (arguments, surroundings);
        EXPECT_EQ (run.exitCode, exitCode) << text;
        EXPECT_THAT (run.errors, AllOf (StartsWith ("solvane: "), HasSubstr (text), EndsWith (".\n")));

        EXPECT_TRUE (everything() == before) << text;
    }

    /** Names and contents. */
    [[nodiscard]] std::vector<std::string> everything() const
    {
        std::vector<std::string> all;

        for (const auto& name : folder.names())
            all.push_back (name + ": " + (folder.file (name).isDirectory() ? "folder" : bytesOf (folder.path (name))));

        return all;
    }

    TemporaryFolder folder;
};

//======================================================================================================================
TEST_F (ProgramFilesTest, aPictureDestroysNoRecording)
{
    makeInput ("self.wav");
    makeInput ("other.wav");
    ASSERT_TRUE (folder.file ("self.wav").copyFileTo (folder.file ("lies.png")));
    ASSERT_EQ (::symlink ("self.wav", folder.path ("soft.png").c_str()), 0);
    ASSERT_EQ (::link (folder.path ("self.wav").c_str(), folder.path ("hard.png").c_str()), 0);

    // As where a shell has put a list of files in the picture's place.
    expectNothingTouched ({ "measure", "--picture", "other.wav", "self.wav" }, 2, "does not end in .png");
    expectNothingTouched ({ "measure", "--picture", "self.wav", "self.wav" }, 2, "does not end in .png");
    expectNothingTouched ({ "measure", "lies.png", "--picture", "lies.png" }, 5, "is what is read");
    expectNothingTouched ({ "measure", "self.wav", "--picture", "soft.png" }, 5, "is what is read");
    expectNothingTouched ({ "measure", "self.wav", "--picture", "hard.png" }, 5, "is what is read");
    expectNothingTouched ({ "measure", "lies.png", "--picture", "./lies.png" }, 5, "is what is read");
    expectNothingTouched ({ "measure", "other.wav", "--picture", "lies.png" }, 5, "is no PNG picture");
    expectNothingTouched ({ "measure", "other.wav", "--picture", "soft.png" }, 5, "is no PNG picture");
}

TEST_F (ProgramFilesTest, aPictureReplacesNoFolderAndNoOtherFile)
{
    makeInput ("a.wav");
    writeBytes (folder.path ("notes.png"), "not a picture");
    ASSERT_TRUE (folder.file ("folder.png").createDirectory());

    expectNothingTouched ({ "measure", "a.wav", "--picture", "folder.png" }, 5, "is a folder");
    expectNothingTouched ({ "measure", "a.wav", "--picture", "notes.png" }, 5, "is no PNG picture");
    expectNothingTouched ({ "measure", "a.wav", "--picture", "a.jpg" }, 2, "does not end in .png");
    expectNothingTouched ({ "measure", "a.wav", "--picture", "none/a.png" }, 5, "There is no folder");
    EXPECT_TRUE (folder.file ("folder.png").isDirectory());

    // Another picture, and nothing, are replaced.
    writeBytes (folder.path ("empty.png"), "");
    EXPECT_EQ (solvane ({ "measure", "a.wav", "--picture", "empty.png" }).exitCode, 0);
    EXPECT_EQ (solvane ({ "measure", "a.wav", "--picture", "empty.png" }).exitCode, 0);
    EXPECT_THAT (bytesOf (folder.path ("empty.png")), StartsWith ("\x89PNG"));
}

/** A full disk: no file may grow beyond a size. */
TEST_F (ProgramFilesTest, aPictureThatHasNoRoomIsAnErrorAndLeavesTheOldOne)
{
    makeInput ("a.wav");
    ASSERT_EQ (solvane ({ "measure", "a.wav", "--picture", "a.png" }).exitCode, 0);
    const auto size = static_cast<std::uint64_t> (folder.file ("a.png").getSize());

    for (const auto room : { std::uint64_t { 0 }, std::uint64_t { 10 }, size / 2, size - 1 })
    {
        expectNothingTouched ({ "measure", "a.wav", "--picture", "a.png" },
                              5,
                              "could not be written",
                              { .folder = {}, .largestFileBytes = room });
        expectNothingTouched ({ "measure", "a.wav", "--picture", "new.png" },
                              5,
                              "could not be written",
                              { .folder = {}, .largestFileBytes = room });
    }

    if (juce::File ("/dev/full").exists())
    {
        ASSERT_EQ (::symlink ("/dev/full", folder.path ("full.png").c_str()), 0);
        EXPECT_EQ (solvane ({ "measure", "a.wav", "--picture", "full.png" }).exitCode, 5);
        EXPECT_TRUE (std::filesystem::is_character_file ("/dev/full"));
    }
}

TEST_F (ProgramFilesTest, aResultReplacesNothingButSound)
{
    makeInput ("a.wav");
    writeBytes (folder.path ("notes.wav"), "notes of a year");
    writeBytes (folder.path ("notes"), "notes of a year");
    expectNothingTouched ({ "render", "a.wav", "notes.wav" }, 5, "is no sound file");
    expectNothingTouched ({ "render", "a.wav", "notes", "--format", "wav-16" }, 5, "is no sound file");
}

//======================================================================================================================
TEST_F (ProgramFilesTest, keepsContainerAndWidth)
{
    struct Case
    {
        const char* name;
        const char* options;
        const char* description;
    };

    for (const auto& [name, options, description] :
         { Case { "in8.wav", "-b 8", "WAV, 8 bits" },
           Case { "in16.wav", "-b 16", "WAV, 16 bits" },
           Case { "in24.wav", "-b 24", "WAV, 24 bits" },
           Case { "infloat.wav", "-e floating-point -b 32", "WAV, 32 bits floating point" },
           Case { "in16.aiff", "-b 16", "AIFF, 16 bits" },
           Case { "in24.flac", "-b 24", "FLAC, 24 bits" },
           Case { "in16.w64", "-b 16", "W64, 16 bits" } })
    {
        makeInput (name, options);
        const auto run = solvane ({ "render", name, std::string ("out-") + name, "--band", "5000,2,1" });
        EXPECT_EQ (run.exitCode, 0) << run.errors;
        EXPECT_THAT (run.output, HasSubstr (std::string (" (") + description + ", peak")) << name;
    }
}

/** Rounding alone turns what is below a step into a square wave or nothing, and its error into harmonics. */
TEST_F (ProgramFilesTest, dithersWhatItRounds)
{
    // A tone of a quarter of a step.
    const auto command = "'" SOLVANE_SOX "' -V1 -D -n -r 48000 -c 1 -e floating-point -b 32 '" + folder.path ("in.wav")
                         + "' synth 4 sine 1000 vol " + "0.00000762939";
    ASSERT_EQ (std::system (command.c_str()), 0);

    ASSERT_EQ (solvane ({ "render", "in.wav", "out.wav", "--format", "wav-16" }).exitCode, 0);
    const auto signal = decodedByFfmpeg (folder.path ("out.wav"), 1)[0];
    auto product = 0.0;

    for (std::size_t sample = 0; sample < signal.size(); ++sample)
        product += 2.0 * 32768.0 * static_cast<double> (signal[sample])
                   * std::sin (2.0 * juce::MathConstants<double>::pi * 1000.0 / 48000.0 * static_cast<double> (sample));

    // The tone is still there; the noise of half a step's power leaves 0.0016 of it uncertain, once.
    EXPECT_NEAR (product / static_cast<double> (signal.size()), 0.25, 0.01);
}

TEST_F (ProgramFilesTest, keepsTags)
{
    for (const auto* name : { "in.wav", "in.flac", "in.aiff", "in.ogg", "in.mp3" })
    {
        convertWithFfmpeg (recordedLoop(),
                           "-t 1 -write_id3v2 1 -metadata title=Aria -metadata artist='A. Singer'",
                           folder.path (name));
        const auto out = "out-" + std::string (name);
        const auto run = solvane ({ "render", name, out, "--band", "5000,2,1" });
        ASSERT_EQ (run.exitCode, 0) << name << run.errors;
        const auto told = runProgram (
            "/bin/sh", { "-c", "'" SOLVANE_FFMPEG "' -nostdin -hide_banner -i '" + folder.path (out) + "' 2>&1" });
        EXPECT_THAT (told.output, HasSubstr ("Aria")) << name;

        // The program that makes the input stores no artist in this one.
        EXPECT_TRUE (std::string (name) == "in.aiff" || told.output.find ("A. Singer") != std::string::npos) << name;
    }
}

TEST_F (ProgramFilesTest, anAiffThatWouldBeTooLongIsRefusedBeforeTheWork)
{
    // Frames enough for 2 GB as 32 bits, in a file of 8 bits that is nothing but a hole.
    constexpr std::uint32_t frames = 600000000;
    const auto le = [] (std::uint32_t number)
    {
        return std::string { static_cast<char> (number & 0xff),
                             static_cast<char> ((number >> 8) & 0xff),
                             static_cast<char> ((number >> 16) & 0xff),
                             static_cast<char> (number >> 24) };
    };
    writeBytes (folder.path ("long.wav"),
                "RIFF" + le (36 + frames) + "WAVEfmt " + le (16) + le (1 | 1 << 16) + le (48000) + le (48000)
                    + le (1 | 8 << 16) + "data" + le (frames));
    ASSERT_EQ (::truncate (folder.path ("long.wav").c_str(), 44 + off_t { frames }), 0);
    const auto run = solvane ({ "render", "long.wav", "out.aiff", "--format", "aiff-32" });
    EXPECT_EQ (run.exitCode, 5);
    EXPECT_THAT (run.errors, HasSubstr ("AIFF, 32 bits holds 2 GB at most"));
    EXPECT_THAT (folder.names(), ElementsAre ("long.wav"));
}

//======================================================================================================================
TEST_F (ProgramFilesTest, readsFromAPipeAndWritesIntoOne)
{
    makeInput ("in.wav");
    ASSERT_EQ (solvane ({ "render", "in.wav", "expected.wav", "--band", "3000,3,1" }).exitCode, 0);

    const auto piped = shell ("cat in.wav | \"$S\" render - - --band 3000,3,1 > out.wav");
    EXPECT_EQ (piped.exitCode, 0) << piped.errors;
    EXPECT_TRUE (bytesOf (folder.path ("out.wav")) == bytesOf (folder.path ("expected.wav")));

    // What is told goes to the error stream.
    EXPECT_THAT (piped.errors, AllOf (HasSubstr ("Input:  - (WAV, 44100 Hz"), HasSubstr ("Result: - (WAV, 16 bits")));
}

TEST_F (ProgramFilesTest, standsBetweenOtherProgramsInAPipe)
{
    makeInput ("in.wav");
    ASSERT_EQ (solvane ({ "render", "in.wav", "expected.wav", "--band", "3000,3,1" }).exitCode, 0);
    const auto expected = wholeNumbersBySox (folder.path ("expected.wav"), 16);

    for (const auto* type : { "wav", "flac", "aiff" })
    {
        const auto run = shell (std::string ("\"$X\" -V1 -D in.wav -t ") + type
                                + " - | \"$S\" render - - --band 3000,3,1 | \"$X\" -V1 -D -t " + type + " - out.wav");
        EXPECT_EQ (run.exitCode, 0) << run.errors;
        EXPECT_TRUE (wholeNumbersBySox (folder.path ("out.wav"), 16) == expected) << type;
    }

    const auto run = shell ("'" SOLVANE_FFMPEG
                            "' -nostdin -loglevel error -i in.wav -f wav - | \"$S\" render - out.wav --band 3000,3,1");
    EXPECT_EQ (run.exitCode, 0) << run.errors;
    EXPECT_TRUE (wholeNumbersBySox (folder.path ("out.wav"), 16) == expected);
}

TEST_F (ProgramFilesTest, aPipeThatEndsEarlyIsAnErrorAndPutsNothingOut)
{
    makeInput ("in.wav");
    const auto cut = shell ("head -c 10000 in.wav | \"$S\" render - - > out.wav");
    EXPECT_EQ (cut.exitCode, 3);
    EXPECT_THAT (cut.errors, HasSubstr ("The standard input ends before its header says so"));
    EXPECT_EQ (bytesOf (folder.path ("out.wav")), "");

    const auto empty = shell ("\"$S\" render - out2.wav < /dev/null");
    EXPECT_EQ (empty.exitCode, 3);
    EXPECT_FALSE (folder.file ("out2.wav").exists());
}

TEST_F (ProgramFilesTest, noticesThatTheStandardOutputIsFull)
{
    makeInput ("in.wav");
    const auto run = shell ("\"$S\" render in.wav - > /dev/full");
    EXPECT_EQ (run.exitCode, 5);
    EXPECT_THAT (run.errors, HasSubstr ("The standard output could not be written to"));
}

TEST_F (ProgramFilesTest, hearsControlCWhileItWaitsForTheStandardInput)
{
    // A pipe that is open at both ends, so that nothing ever comes and the end does not either.
    ASSERT_EQ (::mkfifo (folder.path ("pipe").c_str(), 0600), 0);
    const auto run = runOnTerminal (
        "/bin/sh",
        { "-c",
          "exec '" SOLVANE_PROGRAM "' render - '" + folder.path ("out.wav") + "' <> '" + folder.path ("pipe") + "'" },
        [] (const std::string& text) { return text.find ("Reading") != std::string::npos; });
    EXPECT_EQ (run.exitCode, 130);
    EXPECT_THAT (folder.names(), ElementsAre ("pipe"));
}

TEST_F (ProgramFilesTest, measuresWhatComesOutOfAPipe)
{
    makeInput ("in.wav", "-b 16", "trim 0 3");
    const auto file = solvane ({ "measure", "in.wav" });
    auto piped = shell ("cat in.wav | \"$S\" measure -");
    EXPECT_EQ (piped.exitCode, 0) << piped.errors;
    ASSERT_NE (piped.output.find ("- ("), std::string::npos);
    EXPECT_EQ (piped.output.replace (piped.output.find ("- ("), 1, "in.wav"), file.output);
}
} // namespace
