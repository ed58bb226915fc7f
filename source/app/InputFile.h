#pragma once

#include "files/Descriptor.h"

#include <string>

/** A file that the command line names and the program reads. */
struct InputFile
{
    /** A regular one, or one without a name that keeps what a pipe gave. */
    Descriptor file;
    bool cameThroughPipe = false;

    /** Throws CommandError with what is wrong: there is none, it may not be read, it is a folder, a terminal and so on.
     */
    [[nodiscard]] static InputFile open (const std::string& path);

    /** All bytes of a file, for what is small. Throws CommandError. */
    [[nodiscard]] static std::string read (const std::string& path);
};
