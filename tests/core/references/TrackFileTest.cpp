#include "core/references/TrackFile.h"

#include "support/SoundFiles.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <utility>

#include <sys/stat.h>

namespace
{
TEST (TrackFileTest, namesAreStemsInUpperCase)
{
    EXPECT_EQ (TrackFile::stemOf ("/music/My Mix.final.wav"), "MY MIX.FINAL");
    EXPECT_EQ (TrackFile::stemOf ("/mu.sic/mix"), "/MU.SIC/MIX") << "without a dot the whole path";
    EXPECT_EQ (TrackFile::stemOf ("mix.flac"), "MIX");
    EXPECT_EQ (TrackFile::stemOf (""), "");
    EXPECT_EQ (TrackFile::stemOf (juce::String::fromUTF8 ("/m/take \u591c.1.mp3")),
               juce::String::fromUTF8 ("TAKE \u591c.1"));
}

class TrackFileOpenTest : public testing::Test
{
protected:
    [[nodiscard]] std::unique_ptr<juce::AudioFormatReader> open (const std::string& name)
    {
        return files.open (folder.file (name));
    }

    TemporaryFolder folder;
    TrackFile files;
};

TEST_F (TrackFileOpenTest, everyExtensionOfTheChooserButOneHasAReader)
{
    writeFloatWav (folder.path ("a.wav"), signals::noise (2, 60000, 1), 48000.0);

    for (const auto* name : { "b.aif", "c.aiff", "d.flac", "e.mp3" })
        convertWithSox (folder.path ("a.wav"), "-b 16", folder.path (name));

    for (const auto* name : { "a.wav", "b.aif", "c.aiff", "d.flac" })
    {
        const auto reader = open (name);
        ASSERT_NE (reader, nullptr) << name;
        EXPECT_EQ (reader->lengthInSamples, 60000) << name;
        EXPECT_EQ (reader->sampleRate, 48000.0) << name;
        EXPECT_EQ (reader->numChannels, 2u) << name;
    }

    ASSERT_NE (open ("e.mp3"), nullptr);
    writeBytes (folder.path ("f.fla"), bytesOf (folder.path ("d.flac")));
    EXPECT_EQ (open ("f.fla"), nullptr) << "offered by the chooser, claimed by no format";
}

TEST_F (TrackFileOpenTest, whatIsNoSoundHasNoReader)
{
    writeBytes (folder.path ("a.wav"), "this is a letter");
    writeBytes (folder.path ("b.wav"), "");
    writeBytes (folder.path ("c.txt"), "RIFF");
    EXPECT_EQ (open ("a.wav"), nullptr);
    EXPECT_EQ (open ("b.wav"), nullptr);
    EXPECT_EQ (open ("c.txt"), nullptr);
    EXPECT_EQ (open ("gone.wav"), nullptr);
    EXPECT_EQ (files.open (folder.file ("")), nullptr) << "a folder";
}

TEST_F (TrackFileOpenTest, aFolderOrAPipeWithASoundsNameHasNoReader)
{
    ASSERT_TRUE (folder.file ("folder.wav").createDirectory());
    EXPECT_EQ (open ("folder.wav"), nullptr);

    // Nobody will ever write into it.
    ASSERT_EQ (::mkfifo (folder.path ("pipe.wav").c_str(), 0600), 0);
    EXPECT_EQ (open ("pipe.wav"), nullptr);
}

TEST_F (TrackFileOpenTest, lookingThroughAFileCanBeBrokenOff)
{
    writeFloatWav (folder.path ("a.wav"), signals::noise (2, 600000, 1), 48000.0);
    convertWithSox (folder.path ("a.wav"), "-C 128", folder.path ("b.mp3"));
    const auto whole = bytesOf (folder.path ("b.mp3"));
    writeBytes (folder.path ("cut.mp3"), whole.substr (0, whole.size() * 2 / 3));

    // The second one is taken by another decoder than the first.
    for (const auto* name : { "b.mp3", "cut.mp3" })
    {
        const auto readings = [&] (int allowed)
        {
            auto asked = 0;
            const auto reader = files.open (folder.file (name), [&] { return ++asked <= allowed; });
            return std::pair (reader != nullptr, asked);
        };
        const auto [opens, needed] = readings (std::numeric_limits<int>::max());
        ASSERT_TRUE (opens);
        ASSERT_GT (needed, 100) << "an MP3 is looked through frame by frame";
        EXPECT_FALSE (readings (10).first);
        EXPECT_LT (readings (10).second, needed / 2);

        for (auto allowed = 1; allowed < needed; allowed += needed / 20)
            juce::ignoreUnused (readings (allowed)); // Returns, wherever it is broken off.
    }
}

TEST_F (TrackFileOpenTest, aRateThatNoRecorderHasIsRefused)
{
    writeFloatWav (folder.path ("a.wav"), signals::noise (2, 60000, 1), 48000.0);
    const auto bytes = bytesOf (folder.path ("a.wav"));
    const auto withRate = [&] (std::uint32_t rate)
    {
        auto changed = bytes;

        for (std::size_t index = 0; index < 4; ++index)
            changed[changed.find ("fmt ") + 12 + index] = static_cast<char> ((rate >> (8 * index)) & 0xff);

        writeBytes (folder.path ("b.wav"), changed);
        return open ("b.wav") != nullptr;
    };
    EXPECT_FALSE (withRate (999));
    EXPECT_TRUE (withRate (1000));
    EXPECT_TRUE (withRate (1000000));
    EXPECT_FALSE (withRate (1000001));
}

TEST_F (TrackFileOpenTest, aHeaderThatPromisesMoreThanThereIsHasNoReader)
{
    writeFloatWav (folder.path ("a.wav"), signals::noise (2, 60000, 1), 48000.0);
    convertWithSox (folder.path ("a.wav"), "-b 16", folder.path ("b.aiff"));

    for (const auto* name : { "a.wav", "b.aiff" })
    {
        auto bytes = bytesOf (folder.path (name));
        writeBytes (folder.path (std::string ("cut-") + name), bytes.substr (0, bytes.size() / 2));
        EXPECT_EQ (open (std::string ("cut-") + name), nullptr) << name;
    }
}
} // namespace
