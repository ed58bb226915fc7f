#pragma once

#include <cstdint>
#include <filesystem>

/** An open file of the system, closed with the object. */
class Descriptor
{
public:
    Descriptor() = default;

    /** Takes over what open() and the like gave; below 0 there is nothing. */
    explicit Descriptor (int numberToOwn) noexcept : owned (numberToOwn) {}
    ~Descriptor();

    Descriptor (Descriptor&& other) noexcept;
    Descriptor& operator= (Descriptor&& other) noexcept;

    /** Names are bytes here, in whatever encoding. Nothing where the file may not be read; errno says why. Does not
       wait for a pipe's other end. */
    [[nodiscard]] static Descriptor toRead (const std::filesystem::path& place);

    /** Makes a file that must not be there yet. Nothing where that fails; errno says why. */
    [[nodiscard]] static Descriptor toMake (const std::filesystem::path& place);

    /** A file for this user alone that has lost its name already, so that it is gone with its last descriptor however
        the program ends. Nothing where the folder takes none; errno says why. */
    [[nodiscard]] static Descriptor withoutName (const std::filesystem::path& folder);

    [[nodiscard]] bool isOpen() const noexcept { return owned >= 0; }
    [[nodiscard]] int number() const noexcept { return owned; }

    /** Size of the file in bytes; 0 where it has none. */
    [[nodiscard]] std::int64_t size() const noexcept;

private:
    int owned = -1;
};
