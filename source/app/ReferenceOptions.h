#pragma once

#include "app/ReferenceFile.h"

#include <CLI/CLI.hpp>

#include <vector>

/** Reference tracks on the command line: a `--range` belongs to the file that was named last before it. */
namespace ReferenceOptions
{
/** As many as the plug-in holds. */
inline constexpr std::size_t mostFiles = 20;

/** Adds `--range`. Its texts are read by filesOf(). */
CLI::Option* addRange (CLI::App& command);

/** The files of one option with their ranges, in order. Throws CommandError where a range has no file before it or is
    no range, and where there are too many files. @param first, skippedAtEnd which of the files are no references */
[[nodiscard]] std::vector<ReferenceFile> filesOf (const CLI::App& command,
                                                  const CLI::Option& files,
                                                  const CLI::Option& range,
                                                  std::size_t first = 0,
                                                  std::size_t skippedAtEnd = 0);
} // namespace ReferenceOptions
