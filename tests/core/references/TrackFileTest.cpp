#include "core/references/TrackFile.h"

#include "support/SoundFiles.h"

#include <gtest/gtest.h>

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
