#pragma once

#include <iostream>
#include <string>
#include <vector>

/** Standard input and output as places of sound files. A `-` on the command line means them, and so do the system's
    names for them. */
namespace StandardStreams
{
/** Opens what the program was started without, so that no file of its own gets one of the three numbers and is taken
   for a stream. Reading from it, or printing to it, fails at once. To be called before anything is opened. */
void openClosed();

/** Whether a file name on the command line means the standard input. */
[[nodiscard]] bool isInput (const std::string& path) noexcept;

/** Whether it means the standard output. */
[[nodiscard]] bool isOutput (const std::string& path) noexcept;

/** That the standard input is among the files to be read once at most, since nothing is left of it then. Throws
    CommandError. */
void requireNamedOnce (const std::vector<std::string>& inputs);

/** Waits until a descriptor is ready for an event of poll(). Throws CommandError (interrupted) when a signal comes,
    so that Ctrl-C is heard while nothing else is. */
void waitFor (int descriptor, short event);

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
