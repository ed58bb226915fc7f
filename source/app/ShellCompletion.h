#pragma once

#include "app/CommandDescription.h"

#include <string>

/** A program's commands, options and their words for the shells that complete them. Values that help calls FILE are
    completed with files, FOLDER with folders, and what is given by its place with files. */
namespace ShellCompletion
{
/** A file for bash, which needs no package beside it. */
[[nodiscard]] std::string bash (const CommandDescription& program);

/** A file for a folder of zsh's `fpath`. */
[[nodiscard]] std::string zsh (const CommandDescription& program);
} // namespace ShellCompletion
