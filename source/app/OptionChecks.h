#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

/** What the parser checks, with a sentence for what is wrong. Numbers are read the same in every locale. */
namespace OptionChecks
{
/** Shows its default in the help text. */
CLI::Option* setUp (CLI::Option* option, const char* valueName);

/** One of two words. */
[[nodiscard]] CLI::Validator eitherOf (const std::string& first, const std::string& second);

/** Something, as opposed to a variable of a shell that holds nothing. */
[[nodiscard]] CLI::Validator notEmpty();

/** @param unit what follows the largest number in the sentence, with a blank before it */
[[nodiscard]] CLI::Validator numberWithin (double lowest, double highest, const char* unit);
[[nodiscard]] CLI::Validator wholeNumberWithin (int lowest, int highest);
} // namespace OptionChecks
