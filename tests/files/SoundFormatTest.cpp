#include "files/SoundFormat.h"

#include "support/SoundFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{
/** Tells when it dies. */
class WatchedStream final : public juce::MemoryInputStream
{
public:
    WatchedStream (const std::string& bytes, bool& diedFlag)
        : MemoryInputStream (bytes.data(), bytes.size(), true), died (diedFlag)
    {
    }

    ~WatchedStream() override { died = true; }

private:
    bool& died;
};

TEST (SoundFormatTest, givesAFormatManagerReadersForAllThatIsServed)
{
    const TemporaryFolder folder;
    juce::AudioFormatManager manager;
    manager.registerFormat (new SoundFormat(), true);

    for (const auto* name : { "a.wav", "a.aiff", "a.flac", "a.ogg", "a.caf", "a.w64", "a.mp3" })
    {
        convertWithSox (recordedLoop(), "", folder.path (name), "trim 0 1");
        const std::unique_ptr<juce::AudioFormatReader> reader (manager.createReaderFor (folder.file (name)));
        ASSERT_NE (reader, nullptr) << name;
        EXPECT_EQ (reader->sampleRate, 44100.0) << name;
        EXPECT_GE (reader->lengthInSamples, 44100) << name;
    }
}

TEST (SoundFormatTest, leavesTheStreamToItsOwnerWhereAskedTo)
{
    using namespace std::string_literals;
    const auto tagAlone = "ID3\x04\0\0\0\0\0\x05ppppp and no sound behind it"s;

    for (const auto& bytes : { std::string ("no sound at all"), tagAlone })
    {
        auto died = false;
        auto* const stream = new WatchedStream (bytes, died);
        EXPECT_EQ (SoundFormat().createReaderFor (stream, false), nullptr);
        ASSERT_FALSE (died);
        delete stream;

        died = false;
        EXPECT_EQ (SoundFormat().createReaderFor (new WatchedStream (bytes, died), true), nullptr);
        EXPECT_TRUE (died);
    }
}

TEST (SoundFormatTest, writesWhatItReads)
{
    juce::MemoryBlock bytes;
    juce::AudioBuffer<float> buffer (1, 3);
    buffer.setSample (0, 0, 0.25f);
    buffer.setSample (0, 1, -1.5f);
    buffer.setSample (0, 2, 1.0e-9f);

    {
        auto stream = std::make_unique<juce::MemoryOutputStream> (bytes, false);
        const std::unique_ptr<juce::AudioFormatWriter> writer (
            SoundFormat().createWriterFor (stream.get(), 48000.0, 1, 32, {}, 0));
        ASSERT_NE (writer, nullptr);
        juce::ignoreUnused (stream.release());
        EXPECT_TRUE (writer->writeFromAudioSampleBuffer (buffer, 0, 3));
    }

    const std::unique_ptr<juce::AudioFormatReader> reader (
        SoundFormat().createReaderFor (new juce::MemoryInputStream (bytes, false), true));
    ASSERT_NE (reader, nullptr);
    juce::AudioBuffer<float> back (1, 3);
    EXPECT_TRUE (reader->read (&back, 0, 3, 0, true, true));

    for (int sample = 0; sample < 3; ++sample)
        EXPECT_EQ (back.getSample (0, sample), buffer.getSample (0, sample));
}
} // namespace
