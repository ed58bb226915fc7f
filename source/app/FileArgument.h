#pragma once

#include <filesystem>
#include <string>

/** The file of a path as the shell gave it, in full: a tilde that is left in there is a letter like any other, and `..`
    behind a symbolic link leads to where the system would go. A link at the end is not followed. Names are bytes, in
    whatever encoding. Throws CommandError for an empty path. */
[[nodiscard]] std::filesystem::path fileFor (const std::string& path);

/** Whether anything stands there; a link that leads nowhere is nothing. Throws as fileFor() does. */
[[nodiscard]] bool isThere (const std::string& path);
