#include "window/MixFile.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <fstream>

namespace
{
constexpr std::uint32_t sampleRate = 48000;
constexpr std::uint16_t channelCount = 2;
constexpr std::uint16_t bytesPerFrame = 2 * channelCount;

template <typename Number>
void put (std::ofstream& file, Number number)
{
    file.write (reinterpret_cast<const char*> (&number), sizeof (number));
}

void putHeader (std::ofstream& file, std::uint32_t bytes)
{
    constexpr std::uint32_t headerBytes = 36;
    constexpr std::uint32_t formatBytes = 16;
    constexpr std::uint16_t plainSamples = 1;
    constexpr std::uint16_t bits = 16;
    file << "RIFF";
    put (file, headerBytes + bytes);
    file << "WAVEfmt ";
    put (file, formatBytes);
    put (file, plainSamples);
    put (file, channelCount);
    put (file, sampleRate);
    put (file, sampleRate * bytesPerFrame);
    put (file, bytesPerFrame);
    put (file, bits);
    file << "data";
    put (file, bytes);
}

/** A tone that swells and fades and never falls silent. */
std::int16_t sampleAt (double seconds)
{
    const auto swell = 0.55 + 0.45 * std::sin (0.4 * seconds) * std::sin (0.09 * seconds + 0.4);
    const auto beat = 0.75 + 0.25 * std::sin (9.0 * seconds);
    return static_cast<std::int16_t> (14000.0 * swell * beat * std::sin (6283.0 * seconds));
}
} // namespace

MixFile::MixFile (const std::string& name, double seconds) : path (std::filesystem::path (std::getenv ("HOME")) / name)
{
    const auto frames = static_cast<std::uint32_t> (seconds * sampleRate);
    std::ofstream file (path, std::ios::binary);
    putHeader (file, frames * bytesPerFrame);

    for (std::uint32_t frame = 0; frame < frames; ++frame)
        for (int channel = 0; channel < channelCount; ++channel)
            put (file, sampleAt (static_cast<double> (frame) / sampleRate));
}

MixFile::~MixFile()
{
    std::error_code ignored;
    std::filesystem::remove (path, ignored);
}
