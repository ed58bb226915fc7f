#include "support/FileZoo.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <sstream>

namespace
{
using FileZoo::Maker;

std::string number (auto value, int bytes)
{
    std::string text;

    for (int index = 0; index < bytes; ++index)
        text += static_cast<char> ((static_cast<std::uint64_t> (value) >> (8 * index)) & 0xff);

    return text;
}

struct WavHead
{
    int bits = 16;
    int channels = 2;
    std::uint64_t dataBytes = 0;

    /** Of `bits`, where a header tells of both. */
    int validBits = 0;
    int rate = 44100;

    [[nodiscard]] std::string format() const
    {
        const auto bytes = (bits + 7) / 8;
        const auto plain = number (validBits > 0 ? 0xfffe : 1, 2) + number (channels, 2) + number (rate, 4)
                           + number (rate * channels * bytes, 4) + number (channels * bytes, 2) + number (bits, 2);

        if (validBits == 0)
            return "fmt " + number (plain.size(), 4) + plain;

        const auto extensible = plain + number (22, 2) + number (validBits, 2) + number (channels == 2 ? 3 : 4, 4)
                                + number (1, 2) + std::string ("\0\0\0\0\x10\0\x80\0\0\xaa\0\x38\x9b\x71", 14);
        return "fmt " + number (extensible.size(), 4) + extensible;
    }

    [[nodiscard]] std::string wav() const
    {
        const auto rest = "WAVE" + format() + "data" + number (dataBytes, 4);
        return "RIFF" + number (rest.size() + dataBytes, 4) + rest;
    }

    [[nodiscard]] std::string rf64() const
    {
        const auto frames = dataBytes / static_cast<std::uint64_t> (channels * ((bits + 7) / 8));
        const auto sizes = number (dataBytes + 72, 8) + number (dataBytes, 8) + number (frames, 8) + number (0, 4);
        return "RF64" + number (0xffffffff, 4) + "WAVE" + "ds64" + number (sizes.size(), 4) + sizes + format() + "data"
               + number (0xffffffff, 4);
    }
};

/** The samples of the WAV that all is compared with: whole numbers of 16 bits, left and right. */
std::string samplesOf (const TemporaryFolder& folder)
{
    return wholeNumbersBySox (folder.path ("stereo.wav"), 16);
}

/** Those samples with fewer or more bits, in the upper bits of as many bytes as they need. */
Maker wavOf (int bits, int validBits = 0)
{
    return [=] (const TemporaryFolder& folder, const std::string& path)
    {
        const auto narrow = samplesOf (folder);
        const auto dropped = std::max (0, 16 - (validBits > 0 ? validBits : bits));
        std::string data;

        for (std::size_t index = 0; index < narrow.size(); index += 2)
        {
            const auto sample = narrow.substr (index, 2);
            const auto low = static_cast<char> (static_cast<unsigned char> (sample[0]) & (0xffu << dropped));
            data += std::string (bits > 16 ? 1 : 0, '\0') + low + sample[1];
        }

        WavHead head;
        head.bits = bits;
        head.validBits = validBits;
        head.dataBytes = data.size();
        writeBytes (path, head.wav() + data);
    };
}

Maker ffmpeg (const std::string& options, const std::string& from = "stereo.wav")
{
    return [=] (const TemporaryFolder& folder, const std::string& path)
    { convertWithFfmpeg (folder.path (from), options, path); };
}

Maker sox (const std::string& options, const std::string& effects = {}, const std::string& from = "stereo.wav")
{
    return [=] (const TemporaryFolder& folder, const std::string& path)
    { convertWithSox (folder.path (from), options, path, effects); };
}

Maker bytes (const std::string& content)
{
    return [=] (const TemporaryFolder&, const std::string& path) { writeBytes (path, content); };
}

/** Something that is made, and then changed byte by byte. */
Maker changed (const Maker& make, const std::function<std::string (std::string)>& change)
{
    return [=] (const TemporaryFolder& folder, const std::string& path)
    {
        make (folder, path);
        writeBytes (path, change (bytesOf (path)));
    };
}

Maker cut (const Maker& make)
{
    return changed (make, [] (const std::string& whole) { return whole.substr (0, whole.size() * 2 / 3); });
}

std::string withDataSize (std::string wav, std::uint32_t size)
{
    return wav.replace (wav.find ("data") + 4, 4, number (size, 4));
}

/** An ID3 tag with a picture's worth of bytes, and one of the old kind at the end. */
std::string tagged (const std::string& sound)
{
    constexpr std::size_t length = 20000;
    auto tag = std::string ("ID3\x04\0\0", 6);

    for (int shift = 21; shift >= 0; shift -= 7)
        tag += static_cast<char> ((length >> shift) & 0x7f);

    return tag + std::string (length, 'p') + sound + "TAG" + std::string (125, ' ');
}

/** Two samples that are no number, in the float data. */
std::string withNoNumbers (std::string wav)
{
    const auto notANumber = number (0x7fc00000, 4);
    const auto start = wav.find ("data") + 8;
    return wav.replace (start + 4000, 4, notANumber).replace (start + 9000, 4, notANumber);
}

/** As many as an int32 can count, in the last 36 bits before the checksum. */
std::string withManySamples (std::string flac)
{
    flac[21] = static_cast<char> (static_cast<unsigned char> (flac[21]) & 0xf0);
    return flac.replace (22, 4, "\x7f\xff\xff\xff", 4);
}

const auto cutRefusal = 3;
const auto unservedRefusal = 4;
} // namespace

Maker FileZoo::hugeWav (std::uint64_t dataBytes, bool rf64, int bits, int channels)
{
    return [=] (const TemporaryFolder& folder, const std::string& path)
    {
        WavHead head;
        head.bits = bits;
        head.channels = channels;
        head.dataBytes = dataBytes;
        const auto start = rf64 ? head.rf64() : head.wav();
        writeBytes (path, start + samplesOf (folder));
        std::filesystem::resize_file (path, start.size() + dataBytes);
    };
}

void FileZoo::makeOriginals (const TemporaryFolder& folder)
{
    convertWithSox (recordedLoop(), "-b 16", folder.path ("stereo.wav"), "gain -6");
    convertWithSox (folder.path ("stereo.wav"), "-b 16", folder.path ("twice.wav"), "remix 1 1");
}

const std::vector<FileZoo::Specimen>& FileZoo::specimens()
{
    static const std::vector<Specimen> all {
        { "wav 8.wav", "WAV, 8 bits", ffmpeg ("-c:a pcm_u8"), 0.1 },
        { "wav 12.wav", "WAV, 12 bits", wavOf (12), 0.001 },
        { "wav 16.wav", "WAV, 16 bits", ffmpeg ("-c:a pcm_s16le") },
        { "wav 20.wav", "WAV, 20 bits", wavOf (20) },
        { "wav 24.wav", "WAV, 24 bits", wavOf (24) },
        { "wav 32.wav", "WAV, 32 bits", ffmpeg ("-c:a pcm_s32le") },
        { "wav float.wav", "WAV, 32 bits floating point", ffmpeg ("-c:a pcm_f32le") },
        { "wav double.wav", "WAV, 64 bits floating point", ffmpeg ("-c:a pcm_f64le") },
        { "extensible 12.wav", "extensible WAV, 12 bits of 16", wavOf (16, 12), 0.001 },
        { "extensible 20.wav", "extensible WAV, 20 bits of 24", wavOf (24, 20) },
        { "extensible 24.wav", "extensible WAV, 24 bits", wavOf (24, 24) },
        { "mu-law.wav", "WAV, mu-law", ffmpeg ("-c:a pcm_mulaw"), 0.05 },
        { "rf64.wav", "RF64, 24 bits", ffmpeg ("-rf64 always -c:a pcm_s24le") },
        { "wave64.w64", "W64, 16 bits", ffmpeg ("-c:a pcm_s16le") },
        { "aiff 8.aiff", "AIFF, 8 bits", ffmpeg ("-c:a pcm_s8"), 0.1 },
        { "aiff 16.aif", "AIFF, 16 bits", sox ("-b 16") },
        { "aiff 24.aiff", "AIFF, 24 bits", sox ("-b 24") },
        { "aiff 32.aiff", "AIFF, 32 bits", ffmpeg ("-c:a pcm_s32be") },
        { "aiff float.aiff", "AIFF-C, 32 bits floating point", ffmpeg ("-c:a pcm_f32be") },
        { "aiff little.aiff", "AIFF-C, 16 bits, low byte first", ffmpeg ("-c:a pcm_s16le") },
        { "core.caf", "CAF, 24 bits", ffmpeg ("-c:a pcm_s24be") },
        { "flac 16.flac", "FLAC, 16 bits", sox ("-b 16 -C 8") },
        { "flac 24.flac", "FLAC, 24 bits", sox ("-b 24") },
        { "flac tagged.flac", "FLAC behind an ID3 tag", changed (sox ("-b 16"), tagged) },
        { "mp3 constant.mp3", "MP3, 128 kbit/s, which its encoder makes 0.4 dB softer", ffmpeg ("-b:a 128k"), 0.6 },
        { "mp3 best.mp3", "MP3, 320 kbit/s", ffmpeg ("-b:a 320k"), 0.02 },
        { "mp3 variable.mp3", "MP3, variable rate", ffmpeg ("-q:a 2"), 0.3 },
        { "mp3 headless.mp3",
          "MP3 without a frame that tells its length",
          ffmpeg ("-write_xing 0 -b:a 320k"),
          0.05,
          0,
          "stereo.wav",
          "",
          9,
          0.0,
          false },
        { "mp3 tagged.mp3",
          "MP3 between an ID3 tag and one of the old kind",
          changed (ffmpeg ("-b:a 320k"), tagged),
          0.02 },
        { "vorbis.ogg", "Ogg Vorbis", ffmpeg ("-c:a libvorbis -q:a 6"), 0.4 },
        { "opus.opus", "Opus, which is always at 48 kHz", ffmpeg ("-c:a libopus -b:a 160k"), 1.0 },
        { "aac.m4a", "AAC", ffmpeg ("-c:a aac"), 0.0, cutRefusal },
        { "mono.wav",
          "WAV, mono: half as loud as both together",
          sox ("-b 16", "remix 1"),
          0.01,
          0,
          "twice.wav",
          "",
          9,
          3.0103 },
        { "mono.flac", "FLAC, mono", sox ("-b 16", "remix 1"), 0.01, 0, "twice.wav", "", 9, 3.0103 },
        { "six.wav", "WAV, six channels", sox ("-b 16", "remix 1 2 1 2 1 2"), 0.0, unservedRefusal },
        { "six.flac", "FLAC, six channels", sox ("-b 16", "remix 1 2 1 2 1 2"), 0.0, unservedRefusal },
        { "8 kHz.wav", "WAV, 8 kHz", sox ("-r 8000"), 0.0, unservedRefusal },
        { "8 kHz in 48.wav", "the same with `--rate 48000`", sox ("-r 8000"), 1.2, 0, "stereo.wav", "--rate 48000", 3 },
        { "22 kHz.mp3", "MP3, 22.05 kHz", sox ("-r 22050 -C 96.2"), 0.0, unservedRefusal },
        { "32 kHz.wav", "WAV, 32 kHz", sox ("-r 32000"), 0.0, unservedRefusal },
        { "32 kHz in 44.wav",
          "the same with `--rate 44100`",
          sox ("-r 32000"),
          0.3,
          0,
          "stereo.wav",
          "--rate 44100",
          4 },
        { "48 kHz.flac", "FLAC, 48 kHz", sox ("-b 24 -r 48000"), 0.1, 0, "stereo.wav", "", 7 },
        { "88 kHz.wav", "WAV, 88.2 kHz", sox ("-b 24 -r 88200"), 0.4, 0, "stereo.wav", "", 7 },
        { "96 kHz.flac", "FLAC, 96 kHz", sox ("-b 24 -r 96000"), 0.4, 0, "stereo.wav", "", 7 },
        { "176 kHz.wav", "WAV, 176.4 kHz", sox ("-b 24 -r 176400"), 0.4, 0, "stereo.wav", "", 7 },
        { "192 kHz.wav", "WAV, 192 kHz", sox ("-b 24 -r 192000"), 0.4, 0, "stereo.wav", "", 7 },
        { "192 kHz in 48.wav",
          "the same with `--rate 48000`",
          sox ("-b 24 -r 192000"),
          0.5,
          0,
          "stereo.wav",
          "--rate 48000",
          8 },
        { "  spaces in  a name .wav", "a name with spaces", sox ("-b 16") },
        { "Größe, déjà vu, Łódź.flac", "a name with accents", sox ("-b 16") },
        { "日本語の曲名.wav", "a name in Japanese", sox ("-b 16") },
        { "...many.dots..in.a.name....wav", "a name with dots", sox ("-b 16") },
        { "no ending", "a name without an ending", sox ("-b 16 -t wav") },
        { "wrong ending.txt", "a FLAC by another name", sox ("-b 16 -t flac") },
        { "wrong kind.mp3", "a WAV that calls itself MP3", sox ("-b 16 -t wav") },
        { "cut.wav", "WAV, cut short", cut (sox ("-b 16")), 0.0, cutRefusal },
        { "cut rf64.wav", "RF64, cut short", cut (ffmpeg ("-rf64 always")), 0.0, cutRefusal },
        { "cut.aiff", "AIFF, cut short", cut (sox ("-b 16")), 0.0, cutRefusal },
        { "cut.flac", "FLAC, cut short", cut (sox ("-b 16")), 0.0, cutRefusal },
        { "cut.mp3", "MP3, cut short", cut (ffmpeg ("-b:a 128k")), 0.0, cutRefusal },
        { "cut.ogg", "Ogg Vorbis, cut short", cut (ffmpeg ("-c:a libvorbis")), 0.0, cutRefusal },
        { "cut.opus", "Opus, cut short", cut (ffmpeg ("-c:a libopus")), 0.0, cutRefusal },
        { "lies.wav",
          "WAV whose header promises 256 MB",
          changed (sox ("-b 16"), [] (const std::string& wav) { return withDataSize (wav, 0x10000000); }),
          0.0,
          cutRefusal },
        { "piped.wav",
          "WAV whose header leaves its size open",
          changed (sox ("-b 16"), [] (const std::string& wav) { return withDataSize (wav, 0xffffffff); }) },
        { "no rate.wav",
          "WAV whose header says 0 Hz",
          changed (sox ("-b 16"), [] (std::string wav) { return wav.replace (24, 4, number (0, 4)); }),
          0.0,
          cutRefusal },
        { "hasty.wav",
          "WAV whose header says 3 MHz",
          changed (sox ("-b 16"), [] (std::string wav) { return wav.replace (24, 4, number (3000000, 4)); }),
          0.0,
          unservedRefusal },
        { "slow.wav",
          "WAV whose header says 1 Hz",
          changed (sox ("-b 16"), [] (std::string wav) { return wav.replace (24, 4, number (1, 4)); }),
          0.0,
          unservedRefusal },
        { "false.flac",
          "FLAC of silence whose header says 13 hours",
          changed (sox ("-b 16", "vol 0"), withManySamples),
          0.0,
          cutRefusal },
        { "not numbers.wav",
          "floats, two of which are no numbers",
          changed (ffmpeg ("-c:a pcm_f32le"), withNoNumbers),
          0.01 },
        { "head.wav", "nothing but a header", sox ("-b 16", "trim 0 0"), 0.0, cutRefusal },
        { "empty.wav", "no byte at all", bytes (""), 0.0, cutRefusal },
        { "text.wav", "text", bytes ("This is no music.\n"), 0.0, cutRefusal },
        { "zeros.mp3", "100 kB of zeros", bytes (std::string (100000, '\0')), 0.0, cutRefusal },
        { "picture.flac", "a picture", bytes ("\x89PNG\r\n\x1a\n" + std::string (1000, 'x')), 0.0, cutRefusal },
        { "silent.wav", "silence", sox ("-b 16", "vol 0"), 0.0, 1 },
        { "short.wav", "half a second", sox ("-b 16", "trim 0 0.5"), 0.0, 1 },
        { "2 GB.wav",
          "WAV of 2 GB, of which `--range 0-5`",
          hugeWav (0x7fff0000, false),
          0.0,
          0,
          "stereo.wav",
          "--range 0-5",
          9,
          0.0,
          false },
        { "4 GB.wav",
          "RF64 of 5 GB, of which `--range 0-5`",
          hugeWav (5000000000, true),
          0.0,
          0,
          "stereo.wav",
          "--range 0-5",
          9,
          0.0,
          false },
        { "day.wav", "RF64 of 2.2 GB, 8 bits, mono", hugeWav (2200000000, true, 8, 1), 0.0, unservedRefusal },
    };
    return all;
}

void FileZoo::expectDocument (const std::string& path, const std::string& text)
{
    if (std::getenv ("SOLVANE_WRITE_FILES_TABLE") != nullptr)
        writeBytes (path, text);

    std::istringstream written (bytesOf (path));
    std::istringstream found (text);

    // Line by line: a difference in so long a text is hard to find.
    for (std::string writtenLine, foundLine; std::getline (found, foundLine) && std::getline (written, writtenLine);)
        EXPECT_EQ (foundLine, writtenLine);

    EXPECT_EQ (text.size(), bytesOf (path).size()) << path;
}
