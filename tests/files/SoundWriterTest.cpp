#include "files/SoundWriter.h"

#include "files/SoundReader.h"
#include "support/SignalMatchers.h"
#include "support/SoundFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace
{
using Container = SoundEncoding::Container;
using Width = SoundEncoding::Width;

constexpr double rate = 48000.0;

/** Two different tones, below full scale. */
juce::AudioBuffer<float> tones (int channels, int length = 20000)
{
    juce::AudioBuffer<float> buffer (channels, length);

    for (int channel = 0; channel < channels; ++channel)
        for (int sample = 0; sample < length; ++sample)
            buffer.setSample (channel,
                              sample,
                              0.5f
                                  * std::sin (2.0f * std::numbers::pi_v<float> * (300.0f + 500.0f * float (channel))
                                              * float (sample) / float (rate)));

    return buffer;
}

void store (const juce::File& file,
            const SoundEncoding& encoding,
            const juce::AudioBuffer<float>& buffer,
            const SoundExtras& extras = {})
{
    file.deleteFile(); // or the framework would append
    std::unique_ptr<juce::OutputStream> stream = file.createOutputStream();
    auto writer = SoundWriter::create (stream, encoding, rate, buffer.getNumChannels(), extras);
    ASSERT_NE (writer, nullptr);
    ASSERT_TRUE (writer->writeFromAudioSampleBuffer (buffer, 0, buffer.getNumSamples()));
    ASSERT_TRUE (writer->finish());
    EXPECT_EQ (writer->size(), file.getSize());
}

class SoundWriterTest : public testing::TestWithParam<std::tuple<std::size_t, int>>
{
};

TEST_P (SoundWriterTest, writesWhatAnotherDecoderReads)
{
    const auto [index, channels] = GetParam();
    const auto encoding = SoundEncoding::all()[index];
    const TemporaryFolder folder;
    const auto buffer = tones (channels);
    store (folder.file ("a"), encoding, buffer);

    const auto decoded = decodedByFfmpeg (folder.path ("a"), channels);
    const auto bits = encoding.wholeNumberBits();

    // Rounding and dither: a step and a half, or half a step; what floats lose on the way from 32 bits.
    const auto tolerance = encoding.keepsOvers() ? 1.0e-7
                           : bits == 0           ? 0.02
                           : bits > 16           ? 0.51 / std::ldexp (1.0, bits - 1) + 1.0e-7
                                                 : 1.51 / std::ldexp (1.0, bits - 1);

    ASSERT_EQ (decoded.size(), static_cast<std::size_t> (channels));

    // The other decoder leaves out the end of some lossy sound.
    ASSERT_GE (decoded[0].size(), static_cast<std::size_t> (buffer.getNumSamples() - 4000));
    ASSERT_TRUE (encoding.width == Width::lossy
                 || decoded[0].size() == static_cast<std::size_t> (buffer.getNumSamples()));

    // An encoder needs a start; its own tail may lie behind the end.
    for (int channel = 0; channel < channels; ++channel)
        for (int sample = bits == 0 ? 4000 : 0; sample < buffer.getNumSamples() - 4000; ++sample)
            ASSERT_NEAR (decoded[static_cast<std::size_t> (channel)][static_cast<std::size_t> (sample)],
                         buffer.getSample (channel, sample),
                         tolerance)
                << encoding.name() << ", sample " << sample;
}

INSTANTIATE_TEST_SUITE_P (Encodings,
                          SoundWriterTest,
                          testing::Combine (testing::Range (std::size_t { 0 }, SoundEncoding::all().size()),
                                            testing::Values (1, 2)),
                          [] (const auto& tested)
                          {
                              auto name = SoundEncoding::all()[std::get<0> (tested.param)].name();
                              std::replace (name.begin(), name.end(), '-', '_');
                              return name + (std::get<1> (tested.param) == 1 ? "_mono" : "_stereo");
                          });

TEST (SoundWriterCheckTest, saysWhatDoesNotGo)
{
    const auto refusal = [] (const char* name, double sampleRate, juce::int64 length)
    { return SoundWriter::refusal (*SoundEncoding::fromName (name), sampleRate, 2, length).value_or ("goes"); };

    EXPECT_EQ (refusal ("wav-16", 44100.0, 1000), "goes");
    EXPECT_EQ (refusal ("opus", 48000.0, 1000), "goes");
    EXPECT_EQ (refusal ("opus", 44100.0, 1000), "does not go with 44100 Hz");
    EXPECT_EQ (refusal ("mp3", 96000.0, 1000), "does not go with 96000 Hz");
    EXPECT_EQ (refusal ("ogg", 192000.0, 1000), "goes");

    constexpr juce::int64 gigabyteOfFloats = 1 << 27;
    EXPECT_EQ (refusal ("wav-float", 48000.0, 3 * gigabyteOfFloats), "goes");
    EXPECT_THAT (refusal ("wav-float", 48000.0, 4 * gigabyteOfFloats), testing::HasSubstr ("4 GB"));
    EXPECT_THAT (refusal ("aiff-float", 48000.0, 2 * gigabyteOfFloats), testing::HasSubstr ("2 GB"));
    EXPECT_EQ (refusal ("rf64-float", 48000.0, 9 * gigabyteOfFloats), "goes");
    EXPECT_EQ (refusal ("caf-float", 48000.0, 9 * gigabyteOfFloats), "goes");
}

/** An output that takes so many bytes and no more. */
class NarrowStream final : public juce::MemoryOutputStream
{
public:
    explicit NarrowStream (juce::int64 bytesToTake) : room (bytesToTake) {}

    bool write (const void* data, size_t count) override
    {
        return getPosition() + static_cast<juce::int64> (count) <= room && MemoryOutputStream::write (data, count);
    }

private:
    const juce::int64 room;
};

TEST (SoundWriterCheckTest, noticesThatNotAllIsTaken)
{
    const auto buffer = tones (2);

    for (const auto& encoding : SoundEncoding::all())
    {
        std::unique_ptr<juce::OutputStream> stream = std::make_unique<NarrowStream> (1000);
        auto writer = SoundWriter::create (stream, encoding, rate, 2);
        const auto stored = writer != nullptr && writer->writeFromAudioSampleBuffer (buffer, 0, buffer.getNumSamples())
                            && writer->finish();
        EXPECT_FALSE (stored) << encoding.name();
    }
}

TEST (SoundWriterCheckTest, keepsTextsWhereTheContainerHasAPlace)
{
    const TemporaryFolder folder;
    SoundExtras extras;
    extras.texts = { { SF_STR_TITLE, "Aria" }, { SF_STR_ARTIST, "A. Singer" }, { SF_STR_COMMENT, "take 2" } };

    for (const auto* name : { "wav-16", "rf64-24", "aiff-24", "caf-float", "flac-16", "ogg", "opus", "mp3" })
    {
        store (folder.file ("a"), *SoundEncoding::fromName (name), tones (2), extras);
        std::unique_ptr<juce::InputStream> stream = folder.file ("a").createInputStream();
        const auto reader = std::move (SoundReader::open (stream).reader);
        ASSERT_NE (reader, nullptr) << name;
        std::vector<std::string> texts;

        for (const auto& [kind, text] : reader->extras().texts)
            texts.push_back (text);

        EXPECT_THAT (texts, testing::IsSupersetOf ({ "Aria", "A. Singer", "take 2" })) << name;
    }
}

TEST (SoundWriterCheckTest, keepsBroadcastChunkAndCuePoints)
{
    const TemporaryFolder folder;
    convertWithFfmpeg (recordedLoop(),
                       "-write_bext 1 -metadata description='The evening take' -metadata originator=Desk"
                       " -metadata time_reference=4711 -c:a pcm_s24le",
                       folder.path ("in.wav"));

    const auto extrasOf = [&] (const char* name)
    {
        std::unique_ptr<juce::InputStream> stream = folder.file (name).createInputStream();
        return SoundReader::open (stream).reader->extras();
    };

    auto extras = extrasOf ("in.wav");
    ASSERT_FALSE (extras.broadcast.empty());

    SF_CUES_VAR (2) cues {};
    cues.cue_count = 2;
    cues.cue_points[0].indx = 1;
    cues.cue_points[0].position = cues.cue_points[0].sample_offset = 1234;
    cues.cue_points[1].indx = 2;
    cues.cue_points[1].position = cues.cue_points[1].sample_offset = 5678;
    const auto* bytes = reinterpret_cast<const char*> (&cues);
    extras.cues.assign (bytes, bytes + sizeof (cues));

    for (const auto container : { Container::wav, Container::rf64 })
    {
        store (folder.file ("out.wav"), { container, Width::bits24 }, tones (2), extras);
        const auto back = extrasOf ("out.wav");
        ASSERT_FALSE (back.broadcast.empty());
        const std::string broadcast (back.broadcast.begin(), back.broadcast.end());
        EXPECT_THAT (broadcast, testing::StartsWith ("The evening take"));
        EXPECT_THAT (broadcast, testing::HasSubstr ("Desk"));
        EXPECT_EQ (reinterpret_cast<const SF_BROADCAST_INFO*> (back.broadcast.data())->time_reference_low, 4711u);

        if (container != Container::wav)
            continue;

        ASSERT_GE (back.cues.size(), sizeof (cues));
        const auto* points = reinterpret_cast<const SF_CUES*> (back.cues.data());
        EXPECT_EQ (points->cue_count, 2u);
        EXPECT_EQ (points->cue_points[0].sample_offset, 1234u);
        EXPECT_EQ (points->cue_points[1].sample_offset, 5678u);
    }
}
} // namespace
