#include "files/SoundReader.h"

#include "support/SignalMatchers.h"
#include "support/SoundFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace
{
using Failure = SoundReader::Failure;

SoundReader::Opened opened (const juce::File& file)
{
    std::unique_ptr<juce::InputStream> stream = file.createInputStream();
    return SoundReader::open (stream);
}

/** Whether everything could be read. */
bool readAll (SoundReader& reader, PluginRig::Signal& signal)
{
    const auto length = static_cast<int> (reader.lengthInSamples);
    juce::AudioBuffer<float> buffer (static_cast<int> (reader.numChannels), length);
    const auto complete = reader.read (&buffer, 0, length, 0, true, true);
    signal.clear();

    for (int channel = 0; channel < buffer.getNumChannels(); ++channel)
        signal.emplace_back (buffer.getReadPointer (channel), buffer.getReadPointer (channel) + length);

    return complete;
}

/** Whether a file is refused, when it is opened or when it is read. */
bool isRefused (const juce::File& file)
{
    const auto [reader, failure] = opened (file);
    PluginRig::Signal signal;
    return reader == nullptr || ! readAll (*reader, signal);
}

//======================================================================================================================
struct StoredSound
{
    const char* file;
    const char* options;

    /** Largest difference from the other decoder. */
    double tolerance;

    /** Which one; its own choice unless one is named. */
    const char* decoder = "";
};

void PrintTo (const StoredSound& sound, std::ostream* stream)
{
    *stream << sound.file << ' ' << sound.options;
}

class DecodedSoundTest : public testing::TestWithParam<std::tuple<StoredSound, int>>
{
};

TEST_P (DecodedSoundTest, isWhatAnotherDecoderFinds)
{
    const auto& [sound, channels] = GetParam();
    const TemporaryFolder folder;
    convertWithFfmpeg (recordedLoop(),
                       "-ar 48000 -ac " + std::to_string (channels) + " -af volume=-9dB " + sound.options,
                       folder.path (sound.file));

    const auto [reader, failure] = opened (folder.file (sound.file));
    ASSERT_EQ (failure, Failure::none);
    EXPECT_EQ (reader->numChannels, static_cast<unsigned> (channels));
    EXPECT_EQ (reader->sampleRate, 48000.0);

    PluginRig::Signal signal;
    ASSERT_TRUE (readAll (*reader, signal));
    const auto expected = decodedByFfmpeg (folder.path (sound.file), channels, sound.decoder);
    ASSERT_EQ (signal[0].size(), expected[0].size());
    EXPECT_THAT (signal, IsSignalNear (expected, sound.tolerance));
}

/** Whole numbers and floats are exact. Decoders of lossy sound round in different places. Of Opus the makers' own
   decoder counts, which ffmpeg rounds to 16 bits; ffmpeg's is up to 0.01 away from it in stereo. */
INSTANTIATE_TEST_SUITE_P (
    Containers,
    DecodedSoundTest,
    testing::Combine (testing::Values (StoredSound { "a.wav", "-c:a pcm_u8", 0.0 },
                                       StoredSound { "a.wav", "-c:a pcm_s16le", 0.0 },
                                       StoredSound { "a.wav", "-c:a pcm_s24le", 0.0 },
                                       StoredSound { "a.wav", "-c:a pcm_s32le", 0.0 },
                                       StoredSound { "a.wav", "-c:a pcm_f32le", 0.0 },
                                       StoredSound { "a.wav", "-c:a pcm_f64le", 1.0e-7 },
                                       StoredSound { "a.wav", "-c:a pcm_mulaw", 0.0 },
                                       StoredSound { "a.wav", "-c:a pcm_alaw", 0.0 },
                                       StoredSound { "a.wav", "-rf64 always -c:a pcm_s24le", 0.0 },
                                       StoredSound { "a.w64", "-c:a pcm_s16le", 0.0 },
                                       StoredSound { "a.w64", "-c:a pcm_s24le", 0.0 },
                                       StoredSound { "a.aiff", "-c:a pcm_s8", 0.0 },
                                       StoredSound { "a.aiff", "-c:a pcm_s16be", 0.0 },
                                       StoredSound { "a.aiff", "-c:a pcm_s16le", 0.0 },
                                       StoredSound { "a.aiff", "-c:a pcm_s24be", 0.0 },
                                       StoredSound { "a.aiff", "-c:a pcm_s32be", 0.0 },
                                       StoredSound { "a.aiff", "-c:a pcm_f32be", 0.0 },
                                       StoredSound { "a.caf", "-c:a pcm_s16be", 0.0 },
                                       StoredSound { "a.caf", "-c:a pcm_s24le", 0.0 },
                                       StoredSound { "a.caf", "-c:a pcm_f32le", 0.0 },
                                       StoredSound { "a.flac", "-sample_fmt s16", 0.0 },
                                       StoredSound { "a.flac", "-sample_fmt s32", 0.0 },
                                       StoredSound { "a.ogg", "-c:a libvorbis", 5.0e-6 },
                                       StoredSound { "a.opus", "-c:a libopus", 1.6e-5, "libopus" },
                                       StoredSound { "a.mp3", "-b:a 128k", 5.0e-6 },
                                       StoredSound { "a.mp3", "-q:a 2", 5.0e-6 }),
                      testing::Values (1, 2)));

//======================================================================================================================
class DamagedSoundTest : public testing::TestWithParam<StoredSound>
{
protected:
    void SetUp() override
    {
        convertWithFfmpeg (recordedLoop(), GetParam().options, folder.path (GetParam().file));
        whole = bytesOf (folder.path (GetParam().file));
    }

    [[nodiscard]] bool isRefusedAs (const std::string& bytes) const
    {
        writeBytes (folder.path ("damaged"), bytes);
        return isRefused (folder.file ("damaged"));
    }

    const TemporaryFolder folder;
    std::string whole;
};

TEST_P (DamagedSoundTest, isReadWhereItIsWhole)
{
    EXPECT_FALSE (isRefusedAs (whole));
}

TEST_P (DamagedSoundTest, isRefusedWhereItIsCutShort)
{
    for (const auto share : { 0.1, 0.35, 0.5, 0.77, 0.99 })
        EXPECT_TRUE (
            isRefusedAs (whole.substr (0, static_cast<std::size_t> (share * static_cast<double> (whole.size())) | 1u)))
            << share;

    for (const auto missing : { 1u, 4u, 100u })
        EXPECT_TRUE (isRefusedAs (whole.substr (0, whole.size() - missing))) << missing;
}

INSTANTIATE_TEST_SUITE_P (Containers,
                          DamagedSoundTest,
                          testing::Values (StoredSound { "a.wav", "-c:a pcm_s16le", 0.0 },
                                           StoredSound { "a.wav", "-rf64 always", 0.0 },
                                           StoredSound { "a.w64", "", 0.0 },
                                           StoredSound { "a.aiff", "", 0.0 },
                                           StoredSound { "a.caf", "", 0.0 },
                                           StoredSound { "a.flac", "", 0.0 },
                                           StoredSound { "a.ogg", "-c:a libvorbis", 0.0 },
                                           StoredSound { "a.opus", "-c:a libopus", 0.0 },
                                           StoredSound { "a.mp3", "-q:a 2", 0.0 },
                                           StoredSound { "a.mp3", "-write_xing 0 -b:a 128k", 0.0 }));

/** Those that can tell: their sound is in frames that check themselves. */
class HoledSoundTest : public DamagedSoundTest
{
};

TEST_P (HoledSoundTest, isRefused)
{
    std::mt19937 random (11);
    const auto third = static_cast<std::ptrdiff_t> (whole.size() / 3);
    auto zeros = whole;
    std::fill_n (zeros.begin() + third, 5000, '\0');
    EXPECT_TRUE (isRefusedAs (zeros));

    auto noise = whole;
    std::generate_n (noise.begin() + third, 5000, [&] { return static_cast<char> (random() & 0x7f); });
    EXPECT_TRUE (isRefusedAs (noise));

    EXPECT_TRUE (isRefusedAs (whole.substr (0, whole.size() / 3) + whole.substr (whole.size() / 3 + 5000)));
}

INSTANTIATE_TEST_SUITE_P (Containers,
                          HoledSoundTest,
                          testing::Values (StoredSound { "a.flac", "", 0.0 },
                                           StoredSound { "a.ogg", "-c:a libvorbis", 0.0 },
                                           StoredSound { "a.opus", "-c:a libopus", 0.0 },
                                           StoredSound { "a.mp3", "-q:a 2", 0.0 },
                                           StoredSound { "a.mp3", "-write_xing 0 -b:a 128k", 0.0 }));

//======================================================================================================================
std::string number32 (std::uint32_t number)
{
    return { static_cast<char> (number & 0xff),
             static_cast<char> ((number >> 8) & 0xff),
             static_cast<char> ((number >> 16) & 0xff),
             static_cast<char> (number >> 24) };
}

std::string swapped (std::string bytes)
{
    return { bytes.rbegin(), bytes.rend() };
}

class SoundReaderTest : public testing::Test
{
protected:
    std::string made (const std::string& name, const std::string& options = "-b 16")
    {
        convertWithSox (recordedLoop(), options, folder.path (name), "trim 0 0.5");
        return bytesOf (folder.path (name));
    }

    Failure failureOf (const std::string& bytes)
    {
        writeBytes (folder.path ("tried"), bytes);
        return opened (folder.file ("tried")).failure;
    }

    /** A WAV whose samples hold so many of 16 or 24 bits, in the upper ones. */
    static std::string oddWav (int bits, const std::vector<int>& samples)
    {
        const auto bytes = bits > 16 ? 3 : 2;
        std::string data;

        for (const auto sample : samples)
            data += number32 (static_cast<std::uint32_t> (sample) << (8 * bytes - bits))
                        .substr (0, static_cast<std::size_t> (bytes));

        const auto dataSize = static_cast<std::uint32_t> (data.size());
        return "RIFF" + number32 (36 + dataSize) + "WAVEfmt " + number32 (16)
               + number32 (1 | 1 << 16) // whole numbers, mono
               + number32 (48000) + number32 (static_cast<std::uint32_t> (48000 * bytes))
               + number32 (static_cast<std::uint32_t> (bytes | bits << 16)) + "data" + number32 (dataSize) + data;
    }

    const TemporaryFolder folder;
};

/** Samples of 12 and 20 bits stand in the upper bits of two and three bytes. */
TEST_F (SoundReaderTest, reads12And20Bits)
{
    for (const auto bits : { 12, 20 })
    {
        const auto scale = static_cast<float> (1 << (bits - 1));
        writeBytes (folder.path ("odd.wav"), oddWav (bits, { 0, 1, -1, 100, -2000, 2047 }));
        const auto [reader, failure] = opened (folder.file ("odd.wav"));
        ASSERT_EQ (failure, Failure::none) << bits;
        PluginRig::Signal signal;
        ASSERT_TRUE (readAll (*reader, signal));
        EXPECT_THAT (
            signal[0],
            testing::ElementsAre (0.0f, 1.0f / scale, -1.0f / scale, 100.0f / scale, -2000.0f / scale, 2047.0f / scale))
            << bits;
    }
}

/** Who writes into a pipe cannot go back and fill in the size. */
TEST_F (SoundReaderTest, readsWhatCameOutOfAPipe)
{
    const auto wav = made ("a.wav");
    const auto length = opened (folder.file ("a.wav")).reader->lengthInSamples;
    const auto data = wav.find ("data") + 4;

    for (const auto size : { 0xffffffffu, 0x7ffff000u, 0x7fffffffu, 0x80000000u })
    {
        auto piped = wav;
        piped.replace (4, 4, number32 (size));
        piped.replace (data, 4, number32 (size));
        writeBytes (folder.path ("piped.wav"), piped);
        const auto [reader, failure] = opened (folder.file ("piped.wav"));
        ASSERT_EQ (failure, Failure::none) << size;
        EXPECT_EQ (reader->lengthInSamples, length) << size;
        EXPECT_EQ (reader->promisedSize().verdict, PromisedSize::Verdict::open) << size;
        EXPECT_EQ (reader->promisedSize().promisedBytes, size);
        EXPECT_EQ (reader->promisedSize().presentBytes, static_cast<juce::int64> (wav.size() - data - 4));
        PluginRig::Signal signal;
        EXPECT_TRUE (readAll (*reader, signal));
    }
}

TEST_F (SoundReaderTest, refusesAHeaderThatPromisesMoreThanThereIs)
{
    auto wav = made ("a.wav");
    const auto data = wav.find ("data") + 4;

    for (const auto size : { 0x10000000u, 0xc0000000u })
    {
        wav.replace (data, 4, number32 (size));
        EXPECT_EQ (failureOf (wav), Failure::damaged) << size;
    }

    auto aiff = made ("a.aiff");
    aiff.replace (aiff.find ("SSND") + 4, 4, swapped (number32 (0x10000000u)));
    EXPECT_EQ (failureOf (aiff), Failure::damaged);

    // The number of frames stands apart from the size of the samples.
    aiff = made ("a.aiff");
    aiff.replace (aiff.find ("COMM") + 10, 4, swapped (number32 (0x00100000u)));
    EXPECT_EQ (failureOf (aiff), Failure::damaged);
}

TEST_F (SoundReaderTest, tellsWhatIsNoSound)
{
    EXPECT_EQ (failureOf (""), Failure::unknown);
    EXPECT_EQ (failureOf ("This is no music."), Failure::unknown);
    EXPECT_EQ (failureOf (std::string (100000, '\0')), Failure::unknown);
    convertWithSox (recordedLoop(), "-b 16", folder.path ("none.wav"), "trim 0 0");
    EXPECT_EQ (opened (folder.file ("none.wav")).failure, Failure::empty);
}

TEST_F (SoundReaderTest, readsFromAnywhereAndFallsSilentBehindTheEnd)
{
    made ("a.flac");
    const auto reader = std::move (opened (folder.file ("a.flac")).reader);
    PluginRig::Signal whole;
    ASSERT_TRUE (readAll (*reader, whole));

    for (const auto start : { 20000, 5, 11000, 11100 })
    {
        juce::AudioBuffer<float> part (2, 100);
        EXPECT_TRUE (reader->read (&part, 0, 100, start, true, true));

        for (int sample = 0; sample < 100; ++sample)
            ASSERT_EQ (part.getSample (1, sample), whole[1][static_cast<std::size_t> (start + sample)]) << start;
    }

    juce::AudioBuffer<float> part (2, 100);
    EXPECT_TRUE (reader->read (&part, 0, 100, reader->lengthInSamples - 50, true, true));
    EXPECT_EQ (part.getMagnitude (50, 50), 0.0f);
    EXPECT_GT (part.getMagnitude (0, 50), 0.0f);
}

TEST_F (SoundReaderTest, tellsEncodingAndTags)
{
    convertWithFfmpeg (recordedLoop(),
                       "-metadata title=Aria -metadata artist='A. Singer' -metadata album=Live -c:a pcm_s24le",
                       folder.path ("a.wav"));
    const auto reader = std::move (opened (folder.file ("a.wav")).reader);
    EXPECT_EQ (reader->encoding().name(), "wav-24");
    EXPECT_EQ (reader->bitsPerSample, 24u);

    std::vector<std::string> texts;

    for (const auto& [kind, text] : reader->extras().texts)
        texts.push_back (text);

    EXPECT_THAT (texts, testing::UnorderedElementsAre ("Aria", "A. Singer", "Live"));
}
} // namespace
