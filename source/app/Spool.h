#pragma once

#include "files/Descriptor.h"

#include <string>

/** What comes through a pipe, as a file: some kinds of sound files are not read in one go. */
namespace Spool
{
/** A file without a name, in the folder for temporary ones. Throws CommandError where none can be made. */
[[nodiscard]] Descriptor makeFile();

/** Everything that a pipe gives until its end, in a file without a name. Throws CommandError.
    @param name of the pipe, as a sentence begins with it */
[[nodiscard]] Descriptor take (int pipe, const std::string& name);
} // namespace Spool
