#include "support/SoundFiles.h"

#include <juce_audio_formats/juce_audio_formats.h>

#include <array>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <unistd.h>

namespace
{
std::string outputOf (const std::string& command)
{
    const std::unique_ptr<std::FILE, int (*) (std::FILE*)> pipe (::popen (command.c_str(), "r"), ::pclose);

    if (pipe == nullptr)
        throw std::runtime_error ("cannot start: " + command);

    std::string text;
    std::array<char, 65536> part {};

    for (std::size_t count = 1; count > 0;)
    {
        count = std::fread (part.data(), 1, part.size(), pipe.get());
        text.append (part.data(), count);
    }

    return text;
}

template <typename Number>
Number numberAt (const std::string& bytes, std::size_t position)
{
    Number number {};
    std::memcpy (&number, bytes.data() + position, sizeof (number));
    return number;
}
} // namespace

std::string recordedLoop()
{
    return SOLVANE_RECORDINGS "/loop_amen_full.flac";
}

void convertWithSox (const std::string& input,
                     const std::string& options,
                     const std::string& output,
                     const std::string& effects)
{
    const auto command = "'" SOLVANE_SOX "' -V1 -D '" + input + "' " + options + " '" + output + "' " + effects;

    if (std::system (command.c_str()) != 0)
        throw std::runtime_error ("failed: " + command);
}

std::string wholeNumbersBySox (const std::string& file, int bits)
{
    return outputOf ("'" SOLVANE_SOX "' -V1 -D '" + file + "' -e signed-integer -b " + std::to_string (bits)
                     + " -t raw -");
}

void convertWithFfmpeg (const std::string& input, const std::string& options, const std::string& output)
{
    const auto command =
        "'" SOLVANE_FFMPEG "' -nostdin -loglevel error -y -i '" + input + "' " + options + " '" + output + "'";

    if (std::system (command.c_str()) != 0)
        throw std::runtime_error ("failed: " + command);
}

PluginRig::Signal decodedByFfmpeg (const std::string& file, int channelCount, const std::string& decoder)
{
    const auto bytes =
        outputOf ("'" SOLVANE_FFMPEG "' -nostdin -loglevel error " + (decoder.empty() ? "" : "-c:a " + decoder)
                  + " -i '" + file + "' -f f32le -c:a pcm_f32le -");
    const auto channels = static_cast<std::size_t> (channelCount);
    PluginRig::Signal signal (channels);

    for (std::size_t sample = 0; sample < bytes.size() / sizeof (float); ++sample)
        signal[sample % channels].push_back (numberAt<float> (bytes, sample * sizeof (float)));

    return signal;
}

void writeFloatWav (const std::string& file, const PluginRig::Signal& signal, double sampleRate)
{
    const auto channelCount = static_cast<int> (signal.size());
    const auto length = static_cast<int> (signal[0].size());
    juce::AudioBuffer<float> buffer (channelCount, length);

    for (int channel = 0; channel < channelCount; ++channel)
        buffer.copyFrom (channel, 0, signal[static_cast<std::size_t> (channel)].data(), length);

    auto stream = std::make_unique<juce::FileOutputStream> (juce::File (juce::String (file)));
    const std::unique_ptr<juce::AudioFormatWriter> writer (juce::WavAudioFormat().createWriterFor (
        stream.get(), sampleRate, static_cast<unsigned> (channelCount), 32, {}, 0));

    if (writer == nullptr)
        throw std::runtime_error ("cannot write " + file);

    stream.release(); // the writer owns it now
    writer->writeFromAudioSampleBuffer (buffer, 0, length);
}

PluginRig::Signal readFloatWav (const std::string& file)
{
    const auto bytes = bytesOf (file);
    constexpr std::size_t firstChunk = 12;
    constexpr std::size_t chunkHeader = 8;
    constexpr unsigned short extensible = 0xfffe;
    std::size_t channelCount = 0;

    for (auto position = firstChunk; position + chunkHeader <= bytes.size();)
    {
        const auto name = bytes.substr (position, 4);
        const auto size = numberAt<std::uint32_t> (bytes, position + 4);
        const auto content = position + chunkHeader;

        if (name == "fmt ")
        {
            const auto tag = numberAt<std::uint16_t> (bytes, content);
            const auto subTag = tag == extensible ? numberAt<std::uint16_t> (bytes, content + 24) : tag;
            channelCount = numberAt<std::uint16_t> (bytes, content + 2);

            if (subTag != 3 || numberAt<std::uint16_t> (bytes, content + 14) != 32)
                throw std::runtime_error (file + " does not hold floats");
        }

        if (name == "data" && channelCount > 0)
        {
            PluginRig::Signal signal (channelCount);

            for (std::size_t sample = 0; sample < size / 4; ++sample)
                signal[sample % channelCount].push_back (numberAt<float> (bytes, content + 4 * sample));

            return signal;
        }

        position = content + size + (size & 1);
    }

    throw std::runtime_error (file + " has no samples");
}

std::string bytesOf (const std::string& file)
{
    std::ifstream stream (file, std::ios::binary);
    return { std::istreambuf_iterator<char> (stream), {} };
}

void writeBytes (const std::string& file, const std::string& bytes)
{
    std::ofstream (file, std::ios::binary) << bytes;
}
