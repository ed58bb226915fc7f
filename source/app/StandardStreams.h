#pragma once

#include <juce_core/juce_core.h>

#include <iostream>
#include <memory>
#include <string>

/** Standard input and output as places of sound files. A `-` on the command line means them. */
namespace StandardStreams
{
[[nodiscard]] inline bool isMeant (const std::string& path) noexcept
{
    return path == "-";
}

/** Everything that the standard input gives, from a file without a name, which goes with the stream. Throws
    CommandError. */
[[nodiscard]] std::unique_ptr<juce::InputStream> spoolInput();

/** Copies a file to the standard output; its name is gone before, and the rest afterwards. Throws CommandError. */
void moveToOutput (const juce::File& file);

/** A folder that only this user sees, removed with the object. Throws CommandError. */
class PrivateFolder
{
public:
    PrivateFolder();
    ~PrivateFolder();

    PrivateFolder (const PrivateFolder&) = delete;
    PrivateFolder& operator= (const PrivateFolder&) = delete;

    /** The one file that is meant to stand in it. */
    [[nodiscard]] juce::File file() const { return folder.getChildFile ("sound"); }

private:
    juce::File folder;
};

/** While it lives, what is printed goes to the error stream, since the standard output carries sound. */
class PrintToErrors
{
public:
    PrintToErrors() : before (std::cout.rdbuf (std::cerr.rdbuf())) {}
    ~PrintToErrors() { std::cout.rdbuf (before); }

    PrintToErrors (const PrintToErrors&) = delete;
    PrintToErrors& operator= (const PrintToErrors&) = delete;

private:
    std::streambuf* const before;
};
} // namespace StandardStreams
