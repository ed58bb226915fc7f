#include "app/AudioOutput.h"

#include "app/CommandError.h"
#include "app/FileArgument.h"
#include "support/SoundFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
using testing::ElementsAre;
using testing::HasSubstr;
using Container = OutputFormat::Container;

constexpr double rate = 48000.0;

juce::AudioBuffer<float> bufferOf (const std::vector<float>& samples)
{
    juce::AudioBuffer<float> buffer (1, static_cast<int> (samples.size()));
    buffer.copyFrom (0, 0, samples.data(), static_cast<int> (samples.size()));
    return buffer;
}

void store (const juce::File& file, OutputFormat format, const std::vector<float>& samples)
{
    AudioOutput output (file, format, rate, 1);
    output.write (bufferOf (samples), 0, static_cast<int> (samples.size()));
    output.commit();
}

template <typename Action>
std::string refusalOf (ExitCode code, Action&& action)
{
    try
    {
        action();
    }
    catch (const CommandError& error)
    {
        EXPECT_EQ (error.code(), code);
        return error.what();
    }

    return "taken";
}

TEST (OutputFormatTest, endingsChooseTheFormat)
{
    const auto format = [] (const char* name) { return OutputFormat::choose ("", juce::File (name)); };
    EXPECT_EQ (format ("/a/b.wav").bits, 32);
    EXPECT_EQ (format ("/a/b.WAV").container, Container::wav);
    EXPECT_EQ (format ("/a/b.aif").container, Container::aiff);
    EXPECT_EQ (format ("/a/b.aiff").bits, 24);
    EXPECT_EQ (format ("/a/b.flac").container, Container::flac);
    EXPECT_EQ (format ("/a/b.flac").bits, 24);
}

TEST (OutputFormatTest, aNameOverrulesAnEndingThatSaysNothing)
{
    const auto format = OutputFormat::choose ("flac-16", juce::File ("/a/b.part1"));
    EXPECT_EQ (format.container, Container::flac);
    EXPECT_EQ (format.bits, 16);
}

TEST (OutputFormatTest, refusesWhatItCannotStoreOrWhatContradictsItself)
{
    const auto refusal = [] (const char* name, const char* file) {
        return refusalOf (ExitCode::badArguments,
                          [=] { std::ignore = OutputFormat::choose (name, juce::File (file)); });
    };

    EXPECT_THAT (refusal ("", "/a/b.mp3"), HasSubstr ("does not end in .wav, .aiff or .flac"));
    EXPECT_THAT (refusal ("", "/a/b"), HasSubstr ("--format"));
    EXPECT_THAT (refusal ("wav-32", "/a/b.wav"), HasSubstr ("wav-16, wav-24, wav-float, aiff-16"));
    EXPECT_THAT (refusal ("flac-16", "/a/b.wav"), HasSubstr ("flac-16"));
}

TEST (AudioOutputTest, roundsToTheNearestWholeNumberAndStopsAtFullScale)
{
    const TemporaryFolder folder;
    const auto lsb = 1.0f / 32768.0f;
    store (folder.file ("a.wav"),
           { Container::wav, 16 },
           { 0.0f,
             lsb,
             1.4f * lsb,
             1.6f * lsb,
             -1.6f * lsb,
             32767.0f * lsb,
             1.0f,
             2.0f,
             -1.0f,
             -2.0f,
             std::numeric_limits<float>::quiet_NaN() });

    const auto bytes = wholeNumbersBySox (folder.path ("a.wav"), 16);
    std::vector<std::int16_t> numbers (bytes.size() / 2);
    std::memcpy (numbers.data(), bytes.data(), bytes.size());
    EXPECT_THAT (numbers, ElementsAre (0, 1, 1, 2, -2, 32767, 32767, 32767, -32768, -32768, 0));
}

TEST (AudioOutputTest, tellsThePeakAndHowManySamplesWereCut)
{
    const TemporaryFolder folder;
    AudioOutput output (folder.file ("a.flac"), { Container::flac, 24 }, rate, 1);
    output.write (bufferOf ({ 0.5f, -1.5f, 1.0f, 1.25f }), 0, 4);
    EXPECT_EQ (output.peak(), 1.5f);
    EXPECT_EQ (output.clippedCount(), 2);
}

TEST (AudioOutputTest, leavesNothingAndKeepsTheOldFileWithoutCommit)
{
    const TemporaryFolder folder;
    writeBytes (folder.path ("a.wav"), "old");

    {
        AudioOutput output (folder.file ("a.wav"), { Container::wav, 32 }, rate, 1);
        output.write (bufferOf ({ 0.5f }), 0, 1);
        EXPECT_EQ (folder.names().size(), 2U);
    }

    EXPECT_THAT (folder.names(), ElementsAre ("a.wav"));
    EXPECT_EQ (bytesOf (folder.path ("a.wav")), "old");
}

TEST (AudioOutputTest, takesThePlaceOfAnOldFileWithItsPermissions)
{
    const TemporaryFolder folder;
    writeBytes (folder.path ("a.wav"), "old");
    ASSERT_EQ (::chmod (folder.path ("a.wav").c_str(), 0640), 0);

    store (folder.file ("a.wav"), { Container::wav, 32 }, { 0.25f });

    EXPECT_THAT (folder.names(), ElementsAre ("a.wav"));
    EXPECT_THAT (readFloatWav (folder.path ("a.wav"))[0], ElementsAre (0.25f));

    struct stat status
    {
    };
    ASSERT_EQ (::stat (folder.path ("a.wav").c_str(), &status), 0);
    EXPECT_EQ (status.st_mode & 0777U, 0640U);
}

TEST (AudioOutputTest, writesBehindASymbolicLinkAlsoWhereNothingIsThereYet)
{
    const TemporaryFolder folder;
    ASSERT_TRUE (folder.file ("real").createDirectory());
    ASSERT_EQ (::symlink ("real/a.wav", folder.path ("link.wav").c_str()), 0);

    store (folder.file ("link.wav"), { Container::wav, 32 }, { 0.25f });

    EXPECT_TRUE (folder.file ("link.wav").isSymbolicLink());
    EXPECT_THAT (readFloatWav (folder.path ("real/a.wav"))[0], ElementsAre (0.25f));
}

TEST (AudioOutputTest, goesTheWayOfTheSystemThroughLinkedFolders)
{
    const TemporaryFolder folder;
    ASSERT_TRUE (folder.file ("real/deep").createDirectory());
    ASSERT_TRUE (folder.file ("real/other").createDirectory());
    ASSERT_EQ (::symlink ("real/deep", folder.path ("link").c_str()), 0);
    ASSERT_EQ (::symlink ("../other/target.wav", folder.path ("real/deep/l.wav").c_str()), 0);

    // Behind the link, the folder above is that of the place which it stands for.
    store (fileFor (folder.path ("link") + "/../out.wav"), { Container::wav, 32 }, { 0.25f });
    EXPECT_TRUE (folder.file ("real/out.wav").existsAsFile());
    EXPECT_FALSE (folder.file ("out.wav").exists());

    store (fileFor (folder.path ("link") + "/l.wav"), { Container::wav, 32 }, { 0.5f });
    EXPECT_TRUE (folder.file ("real/other/target.wav").existsAsFile());
    EXPECT_FALSE (folder.file ("other").exists());
}

TEST (AudioOutputTest, aFileThatOthersMayNotReadIsClosedWhileItIsMadeAnew)
{
    const TemporaryFolder folder;
    store (folder.file ("a.wav"), { Container::wav, 32 }, { 0.25f });
    ASSERT_EQ (::chmod (folder.path ("a.wav").c_str(), 0600), 0);
    const AudioOutput output (folder.file ("a.wav"), { Container::wav, 32 }, rate, 1);

    for (const auto& name : folder.names())
    {
        struct stat status
        {
        };
        ASSERT_EQ (::stat (folder.path (name).c_str(), &status), 0);
        EXPECT_EQ (status.st_mode & 0777u, 0600u) << name;
    }
}

TEST (AudioOutputTest, refusesWhatIsNoPlaceForAFile)
{
    const TemporaryFolder folder;
    ASSERT_EQ (::mkfifo (folder.path ("pipe.wav").c_str(), 0600), 0);
    const auto refusal = [&] (const juce::File& place)
    {
        return refusalOf (ExitCode::unwritableOutput,
                          [&] {
                              const AudioOutput output (place, { Container::wav, 32 }, rate, 1);
                          });
    };

    EXPECT_THAT (refusal (folder.file ("pipe.wav")), HasSubstr ("is not an ordinary file"));
    EXPECT_THAT (refusal (juce::File ("/dev/null")), HasSubstr ("is not an ordinary file"));
    EXPECT_THAT (refusal (folder.file (".")), HasSubstr ("is a folder"));
    EXPECT_THAT (refusal (folder.file ("nowhere/a.wav")), HasSubstr ("There is no folder"));
    EXPECT_THAT (folder.names(), ElementsAre ("pipe.wav"));
}
} // namespace
