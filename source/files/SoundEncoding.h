#pragma once

#include <optional>
#include <string>
#include <vector>

/** What a sound file is: its container, and how wide its samples are. */
struct SoundEncoding
{
    enum class Container
    {
        wav,
        rf64,
        w64,
        aiff,
        caf,
        flac,
        vorbis,
        opus,
        mp3
    };

    enum class Width
    {
        bits8,
        bits16,
        bits24,
        bits32,
        floats,
        doubles,

        /** No width at all: what is stored is what is heard. */
        lossy
    };

    Container container = Container::wav;
    Width width = Width::floats;

    [[nodiscard]] bool operator== (const SoundEncoding&) const noexcept = default;

    /** Bits of a whole number: 8, 16, 24 or 32; 0 for everything else. */
    [[nodiscard]] int wholeNumberBits() const noexcept;

    /** Whether samples beyond full scale are kept. */
    [[nodiscard]] bool keepsOvers() const noexcept { return width == Width::floats || width == Width::doubles; }

    /** For people: "WAV, 32 bits floating point", "Ogg Vorbis". */
    [[nodiscard]] std::string description() const;

    /** For a command line: "wav-float", "flac-16", "ogg". */
    [[nodiscard]] std::string name() const;

    /** Whether files can be written so. */
    [[nodiscard]] bool isWritable() const;

    /** The width of its own that a container gets where `wanted` does not fit: the nearest wider one, else the widest
        of whole numbers. What a lossy file decodes to fits everything: floating point where a WAV can hold it, else 24
        bits. */
    [[nodiscard]] static SoundEncoding nearest (Container container, Width wanted);

    /** By name() in any case; nothing for another word. */
    [[nodiscard]] static std::optional<SoundEncoding> fromName (const std::string& name);

    /** All that can be written, by container, narrow before wide. */
    [[nodiscard]] static std::vector<SoundEncoding> all();

    /** By the ending of a file's name in any case, without the dot: "wav", "aif". */
    [[nodiscard]] static std::optional<Container> containerByEnding (const std::string& ending);

    /** "WAV", "Ogg Vorbis". */
    [[nodiscard]] static std::string containerName (Container container);

    /** Endings of all containers, without the dot. */
    [[nodiscard]] static std::vector<std::string> endings();

    /** The library's number for it, and back. Nothing for containers that the product does not serve; compressions
        within a WAV, such as mu-law, count as the width that they decode to. */
    [[nodiscard]] int libraryFormat() const noexcept;
    [[nodiscard]] static std::optional<SoundEncoding> fromLibraryFormat (int format) noexcept;
};
