#pragma once

#include <atomic>
#include <filesystem>

/** A file that must not be left behind if the program ends in haste. */
class Remnant
{
public:
    /** From now on removeAll() removes it. */
    explicit Remnant (const std::filesystem::path& place);

    /** From now on it stays. */
    ~Remnant();

    Remnant (const Remnant&) = delete;
    Remnant& operator= (const Remnant&) = delete;

    /** Removes the files of all that live. A signal's handler may call it. */
    static void removeAll() noexcept;

private:
    std::atomic<char*>* slot = nullptr;
};
