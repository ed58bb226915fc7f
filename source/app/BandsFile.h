#pragma once

#include "app/BandOption.h"

#include <string>
#include <vector>

/** A text file of bands: one to a line, in the form of `--band`. Empty lines, and what follows a `#`, are passed over.
 */
namespace BandsFile
{
/** Throws CommandError, which names the line where one is wrong. */
[[nodiscard]] std::vector<BandOption> read (const std::string& path);
} // namespace BandsFile
