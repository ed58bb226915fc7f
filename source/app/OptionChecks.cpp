#include "app/OptionChecks.h"

#include <charconv>
#include <sstream>

namespace
{
template <typename Number>
std::string complaint (const std::string& given, Number lowest, Number highest, const std::string& unit)
{
    Number value {};
    const auto* first = given.data() + (given.starts_with ('+') ? 1 : 0);
    const auto* last = given.data() + given.size();

    // What is no number fails both comparisons.
    if (const auto [end, error] = std::from_chars (first, last, value);
        error == std::errc() && end == last && value >= lowest && value <= highest)
        return {};

    std::ostringstream text;
    text << "'" << given << "' is not a number from " << lowest << " to " << highest << unit << '.';
    return text.str();
}
} // namespace

CLI::Option* OptionChecks::setUp (CLI::Option* option, const char* valueName)
{
    return option->type_name (valueName)->capture_default_str();
}

CLI::Validator OptionChecks::eitherOf (const std::string& first, const std::string& second)
{
    return CLI::Validator (
        [first, second] (const std::string& given)
        {
            return given == first || given == second ? std::string()
                                                     : "'" + given + "' is neither " + first + " nor " + second + ".";
        },
        "");
}

CLI::Validator OptionChecks::notEmpty()
{
    return CLI::Validator ([] (const std::string& given)
                           { return given.empty() ? std::string ("what it names is empty.") : std::string(); },
                           "");
}

CLI::Validator OptionChecks::numberWithin (double lowest, double highest, const char* unit)
{
    return CLI::Validator ([=] (const std::string& given) { return complaint (given, lowest, highest, unit); }, "");
}

CLI::Validator OptionChecks::wholeNumberWithin (int lowest, int highest)
{
    return CLI::Validator (
        [=] (const std::string& given) { return complaint (given, lowest, highest, " without a fraction"); }, "");
}
