#include "app/TimeRange.h"

#include "app/CommandError.h"

#include <algorithm>
#include <charconv>
#include <iomanip>
#include <sstream>

namespace
{
constexpr double secondsPerMinute = 60.0;
constexpr double secondsPerHour = 3600.0;

[[noreturn]] void refuse (const std::string& text, const std::string& reason)
{
    throw CommandError (ExitCode::badArguments,
                        "--range " + text + ": " + reason
                            + " A range is START-END in seconds or minutes, for example 30-90.5 or 0:30-1:30.");
}

/** Reads digits with a point among them, the same in every locale; nothing for all else. */
std::optional<double> numberOf (const std::string& text)
{
    auto value = 0.0;
    const auto* last = text.data() + text.size();

    if (text.empty() || text.find_first_not_of ("0123456789.") != std::string::npos)
        return std::nullopt;

    const auto [end, error] = std::from_chars (text.data(), last, value);
    return error == std::errc() && end == last ? std::optional (value) : std::nullopt;
}

double readTime (const std::string& text, const std::string& time)
{
    std::istringstream parts (time);
    auto seconds = 0.0;
    auto count = 0;

    for (std::string part; std::getline (parts, part, ':'); ++count)
    {
        const auto value = numberOf (part);

        // Behind a colon 60 and above is a slip, and so is a fraction before one.
        if (! value.has_value() || (count > 0 && *value >= secondsPerMinute)
            || (! parts.eof() && part.find ('.') != std::string::npos))
            refuse (text, "'" + time + "' is no time.");

        seconds = seconds * secondsPerMinute + *value;
    }

    if (count < 1 || count > 3 || time.ends_with (':'))
        refuse (text, "'" + time + "' is no time.");

    return seconds;
}
} // namespace

TimeRange TimeRange::parse (const std::string& text)
{
    const auto dash = text.find ('-');

    if (dash == std::string::npos)
        refuse (text, "a dash is missing.");

    TimeRange range;
    range.start = readTime (text, text.substr (0, dash));

    if (dash + 1 < text.size())
        range.end = readTime (text, text.substr (dash + 1));

    if (range.end.has_value() && *range.end <= range.start)
        refuse (text, "it ends before it starts.");

    return range;
}

std::string TimeRange::textOf (double seconds)
{
    const auto whole = static_cast<long long> (seconds);
    const auto hours = whole / static_cast<long long> (secondsPerHour);
    std::ostringstream text;

    if (hours > 0)
        text << hours << ':' << std::setfill ('0') << std::setw (2);

    text << whole / 60 % 60 << ':' << std::setfill ('0') << std::setw (2) << whole % 60;
    return text.str();
}
