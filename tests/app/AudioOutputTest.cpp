#include "app/AudioOutput.h"

#include "app/CommandError.h"
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
using Container = SoundEncoding::Container;
using Width = SoundEncoding::Width;

constexpr double rate = 48000.0;

juce::AudioBuffer<float> bufferOf (const std::vector<float>& samples)
{
    juce::AudioBuffer<float> buffer (1, static_cast<int> (samples.size()));
    buffer.copyFrom (0, 0, samples.data(), static_cast<int> (samples.size()));
    return buffer;
}

const SoundEncoding floatWav { Container::wav, Width::floats };

AudioOutput::Description mono (SoundEncoding encoding)
{
    return { encoding, rate, 1 };
}

void store (const std::string& path, SoundEncoding encoding, const std::vector<float>& samples)
{
    AudioOutput output (path, mono (encoding));
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

TEST (AudioOutputTest, tellsThePeakAndHowManySamplesWereCut)
{
    const TemporaryFolder folder;
    AudioOutput output (folder.path ("a.flac"), mono ({ Container::flac, Width::bits24 }));
    output.write (bufferOf ({ 0.5f, -1.5f, 1.0f, 1.25f }), 0, 4);
    EXPECT_EQ (output.peak(), 1.5f);
    EXPECT_EQ (output.clippedCount(), 2);
}

TEST (AudioOutputTest, leavesNothingAndKeepsTheOldFileWithoutCommit)
{
    const TemporaryFolder folder;
    store (folder.path ("a.wav"), floatWav, { 0.125f });
    const auto old = bytesOf (folder.path ("a.wav"));

    {
        AudioOutput output (folder.path ("a.wav"), mono (floatWav));
        output.write (bufferOf ({ 0.5f }), 0, 1);
        EXPECT_EQ (folder.names().size(), 2U);
    }

    EXPECT_THAT (folder.names(), ElementsAre ("a.wav"));
    EXPECT_TRUE (bytesOf (folder.path ("a.wav")) == old);
}

TEST (AudioOutputTest, takesThePlaceOfAnOldFileWithItsPermissions)
{
    const TemporaryFolder folder;
    store (folder.path ("a.wav"), floatWav, { 0.125f });
    const auto old = bytesOf (folder.path ("a.wav"));
    ASSERT_EQ (::chmod (folder.path ("a.wav").c_str(), 0640), 0);

    store (folder.path ("a.wav"), floatWav, { 0.25f });

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

    store (folder.path ("link.wav"), floatWav, { 0.25f });

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
    store (folder.path ("link") + "/../out.wav", floatWav, { 0.25f });
    EXPECT_TRUE (folder.file ("real/out.wav").existsAsFile());
    EXPECT_FALSE (folder.file ("out.wav").exists());

    store (folder.path ("link") + "/l.wav", floatWav, { 0.5f });
    EXPECT_TRUE (folder.file ("real/other/target.wav").existsAsFile());
    EXPECT_FALSE (folder.file ("other").exists());
}

TEST (AudioOutputTest, aFileThatOthersMayNotReadIsClosedWhileItIsMadeAnew)
{
    const TemporaryFolder folder;
    store (folder.path ("a.wav"), floatWav, { 0.25f });
    ASSERT_EQ (::chmod (folder.path ("a.wav").c_str(), 0600), 0);
    const AudioOutput output (folder.path ("a.wav"), mono (floatWav));

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
    const auto refusal = [&] (const std::string& place)
    { return refusalOf (ExitCode::unwritableOutput, [&] { const AudioOutput output (place, mono (floatWav)); }); };

    EXPECT_THAT (refusal (folder.path ("pipe.wav")), HasSubstr ("is not an ordinary file"));
    EXPECT_THAT (refusal ("/dev/null"), HasSubstr ("is not an ordinary file"));
    EXPECT_THAT (refusal (folder.path (".")), HasSubstr ("is a folder"));
    EXPECT_THAT (refusal (folder.path ("nowhere/a.wav")), HasSubstr ("There is no folder"));
    EXPECT_THAT (folder.names(), ElementsAre ("pipe.wav"));
}
} // namespace
