#include "app/AudioInput.h"

#include "app/CommandError.h"
#include "support/SoundFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace
{
using testing::HasSubstr;

juce::AudioBuffer<float> everythingIn (AudioInput& input)
{
    juce::AudioBuffer<float> buffer (input.channelCount(), static_cast<int> (input.length()));
    input.read (buffer, 0, buffer.getNumSamples());
    return buffer;
}

std::string refusalOf (const std::string& file)
{
    try
    {
        AudioInput input (file);
        std::ignore = everythingIn (input);
    }
    catch (const CommandError& error)
    {
        EXPECT_EQ (error.code(), ExitCode::unreadableInput);
        return error.what();
    }

    return "read";
}

class AudioInputTest : public testing::Test
{
protected:
    std::string made (const std::string& name, const std::string& options = "-b 16", const std::string& effects = {})
    {
        convertWithSox (recordedLoop(), options, folder.path (name), effects);
        return folder.path (name);
    }

    TemporaryFolder folder;
};

TEST_F (AudioInputTest, readsWavAiffAndFlacToTheSameSamples)
{
    AudioInput original (recordedLoop());
    const auto expected = everythingIn (original);
    EXPECT_EQ (original.formatName(), "FLAC");

    for (const auto* name : { "a.wav", "a.aiff", "a.flac" })
    {
        AudioInput copy (made (name));
        EXPECT_EQ (copy.sampleRate(), 44100.0) << name;
        ASSERT_EQ (copy.length(), original.length()) << name;

        const auto samples = everythingIn (copy);

        for (int channel = 0; channel < 2; ++channel)
            EXPECT_EQ (std::memcmp (samples.getReadPointer (channel),
                                    expected.getReadPointer (channel),
                                    sizeof (float) * static_cast<std::size_t> (samples.getNumSamples())),
                       0)
                << name;
    }
}

TEST_F (AudioInputTest, goesByTheContentAndNotByTheEnding)
{
    ASSERT_TRUE (juce::File (juce::String (made ("a.flac"))).moveFileTo (folder.file ("b.wav")));
    EXPECT_EQ (AudioInput (folder.path ("b.wav")).formatName(), "FLAC");
}

/** Frames of different sizes and no word about their number: a reader's guess from the first frame misses the end. */
TEST_F (AudioInputTest, findsTheEndOfAnMp3OfVariableRate)
{
    constexpr int frameLength = 1152;
    const auto original = AudioInput (recordedLoop()).length();

    for (const auto* options : { "-C 128.2", "-C -2.2", "-c 1 -C 64.2" })
    {
        made ("a.mp3", options);
        const AudioInput whole (folder.path ("a.mp3"));
        EXPECT_EQ (whole.formatName(), "MP3");
        EXPECT_GE (whole.length(), original) << options;
        EXPECT_LE (whole.length(), original + 3 * frameLength) << options;
    }

    // The first frame of a file by this encoder tells the number of frames; without it nothing does. It begins with the
    // same four bytes as its successor but for the rate, so the second frame is found by its sync.
    made ("variable.mp3", "-C -2.2");
    const auto bytes = bytesOf (folder.path ("variable.mp3"));
    const auto second = bytes.find ("\xff\xfb", 4);
    ASSERT_NE (second, std::string::npos);
    writeBytes (folder.path ("headless.mp3"), bytes.substr (second));

    const AudioInput headless (folder.path ("headless.mp3"));
    EXPECT_GE (headless.length(), original);
    EXPECT_LE (headless.length(), original + 3 * frameLength);
}

TEST_F (AudioInputTest, noticesAFileThatEndsEarly)
{
    for (const auto* name : { "a.wav", "a.aiff", "a.flac" })
    {
        const auto whole = bytesOf (made (name));
        EXPECT_EQ (refusalOf (folder.path (name)), "read");

        // Also where only the very end is missing.
        for (const auto kept : { whole.size() / 2, whole.size() - 4 })
        {
            writeBytes (folder.path ("cut"), whole.substr (0, kept));
            EXPECT_THAT (refusalOf (folder.path ("cut")), HasSubstr ("ends before its header says so")) << name;
        }
    }
}

/** A tag such as carries a cover. */
std::string tagOf (int length)
{
    std::string tag ("ID3\x04\0\0", 6);

    for (int shift = 21; shift >= 0; shift -= 7)
        tag += static_cast<char> ((length >> shift) & 0x7f);

    return tag + std::string (static_cast<std::size_t> (length), 'p');
}

float peakOfLastThird (AudioInput& input)
{
    const auto samples = everythingIn (input);
    const auto third = samples.getNumSamples() / 3;
    return samples.getMagnitude (2 * third, third);
}

TEST_F (AudioInputTest, readsShortMp3sToTheirEnd)
{
    struct Case
    {
        const char* seconds;
        const char* options;
    };

    for (const auto& [seconds, options] : { Case { "0.1", "-C 320.2" },
                                            Case { "0.4", "-C 128.2" },
                                            Case { "0.46", "-C 128.2" },
                                            Case { "0.5", "-C 64.2" } })
    {
        const auto frames = static_cast<juce::int64> (44100.0 * std::stod (seconds));
        made ("short.mp3", options, std::string ("trim 0 ") + seconds);
        AudioInput input (folder.path ("short.mp3"));
        EXPECT_GE (input.length(), frames) << seconds;
        EXPECT_LE (input.length(), frames + 3 * 1152) << seconds;
        EXPECT_GT (peakOfLastThird (input), 0.01f) << seconds;
    }
}

TEST_F (AudioInputTest, readsAHalfRateMp3AtItsLength)
{
    made ("half.mp3", "-r 22050 -C 64.2");
    AudioInput input (folder.path ("half.mp3"));
    const auto original = AudioInput (recordedLoop()).length() / 2;
    EXPECT_EQ (input.sampleRate(), 22050.0);
    EXPECT_GE (input.length(), original);
    EXPECT_LE (input.length(), original + 4 * 576);
    EXPECT_GT (peakOfLastThird (input), 0.01f);
}

TEST_F (AudioInputTest, readsOnBehindATagBetweenTwoMp3s)
{
    const auto bytes = bytesOf (made ("a.mp3", "-C 128.2"));
    const auto length = AudioInput (folder.path ("a.mp3")).length();
    writeBytes (folder.path ("two.mp3"),
                tagOf (40000) + bytes + tagOf (40000) + bytes + "TAG" + std::string (125, ' '));

    AudioInput two (folder.path ("two.mp3"));
    EXPECT_EQ (two.length(), 2 * length);
    EXPECT_GT (peakOfLastThird (two), 0.01f);
}

TEST_F (AudioInputTest, noticesAnMp3ThatIsNotWhole)
{
    // With a variable rate, this encoder states how many frames there are.
    const auto counted = bytesOf (made ("counted.mp3", "-C -2.2"));
    EXPECT_EQ (refusalOf (folder.path ("counted.mp3")), "read");
    writeBytes (folder.path ("cut.mp3"), counted.substr (0, counted.size() / 2));
    EXPECT_THAT (refusalOf (folder.path ("cut.mp3")), HasSubstr ("ends before its header says so"));

    auto holed = bytesOf (made ("a.mp3", "-C 128.2"));
    std::fill_n (holed.begin() + static_cast<std::ptrdiff_t> (holed.size() / 3), 5000, '\0');
    writeBytes (folder.path ("holed.mp3"), holed);
    EXPECT_THAT (refusalOf (folder.path ("holed.mp3")), HasSubstr ("or is damaged"));
}

TEST_F (AudioInputTest, knowsAFlacBehindATag)
{
    const auto bytes = bytesOf (made ("a.flac"));
    writeBytes (folder.path ("tagged.mp3"), tagOf (20) + tagOf (3000) + bytes);
    AudioInput plain (folder.path ("a.flac"));
    AudioInput tagged (folder.path ("tagged.mp3"));
    EXPECT_EQ (tagged.formatName(), "FLAC");
    ASSERT_EQ (tagged.length(), plain.length());
    const auto expected = everythingIn (plain);
    const auto actual = everythingIn (tagged);
    EXPECT_EQ (std::memcmp (actual.getReadPointer (1),
                            expected.getReadPointer (1),
                            sizeof (float) * static_cast<std::size_t> (expected.getNumSamples())),
               0);

    writeBytes (folder.path ("tag-alone.mp3"), tagOf (3000));
    EXPECT_THAT (refusalOf (folder.path ("tag-alone.mp3")), HasSubstr ("is not a sound file"));
}

TEST_F (AudioInputTest, saysWhatIsWrongWithAFile)
{
    writeBytes (folder.path ("empty.wav"), "");
    writeBytes (folder.path ("text.mp3"), "This is no music.");
    made ("none.wav", "-b 16", "trim 0 0");

    EXPECT_THAT (refusalOf (folder.path ("absent.wav")), HasSubstr ("There is no file"));
    EXPECT_THAT (refusalOf (folder.path (".")), HasSubstr ("is a folder"));
    EXPECT_THAT (refusalOf (folder.path ("empty.wav")), HasSubstr ("is not a sound file"));
    EXPECT_THAT (refusalOf (folder.path ("text.mp3")), HasSubstr ("is not a sound file"));
    EXPECT_THAT (refusalOf (folder.path ("none.wav")), HasSubstr ("holds no sound"));
}
} // namespace
