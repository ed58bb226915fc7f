#include "app/BandOption.h"

#include "app/CommandError.h"
#include "core/parameters/ParameterTable.h"

#include <charconv>
#include <cmath>
#include <set>
#include <sstream>
#include <vector>

namespace
{
/** The parts without the blanks around them. A comma at the end is followed by an empty part. */
std::vector<std::string> splitAtCommas (const std::string& text)
{
    std::vector<std::string> parts;
    std::istringstream stream (text + ',');

    for (std::string part; std::getline (stream, part, ',');)
    {
        const auto first = part.find_first_not_of (' ');
        const auto last = part.find_last_not_of (' ');
        parts.push_back (first == std::string::npos ? std::string() : part.substr (first, last - first + 1));
    }

    return parts;
}

[[noreturn]] void refuse (const std::string& text, const std::string& reason)
{
    throw CommandError (ExitCode::badArguments,
                        text + ": " + reason
                            + " A band is FREQ,GAIN,Q[,shelf][,ms=VALUE][,solo][,bypass], for example 2500,-3,1.4.");
}

/** Below, a shelf's long slope would lie in the filter of the low bands, which ends near a tenth of the sample rate. */
constexpr float lowestShelfHz = 1600.0f;

/** Numbers are read the same in every locale. */
float readNumber (const std::string& text, const std::string& part, const char* what)
{
    auto value = 0.0f;
    const auto* first = part.data() + (part.starts_with ('+') ? 1 : 0);
    const auto* last = part.data() + part.size();
    const auto [end, error] = std::from_chars (first, last, value);

    if (error != std::errc() || end != last || ! std::isfinite (value))
        refuse (text, std::string ("the ") + what + " '" + part + "' is not a number.");

    return value;
}

float readWithin (const std::string& text,
                  const std::string& part,
                  const char* what,
                  Settings::Parameter kind,
                  const char* unit)
{
    const auto thousands = kind == Settings::Parameter::frequency && (part.ends_with ('k') || part.ends_with ('K'));
    const auto number = readNumber (text, thousands ? part.substr (0, part.size() - 1) : part, what);
    const auto value = thousands ? number * 1000.0f : number;

    for (const auto& row : ParameterTable::rows())
        if (row.id == ParameterIds::ofBand (0, kind) && (value < row.minimum || value > row.maximum))
            refuse (text,
                    (juce::String ("the ") + what + " " + part + " is outside " + juce::String (row.minimum) + " to "
                     + juce::String (row.maximum) + unit + ".")
                        .toStdString());

    return value;
}
} // namespace

BandOption BandOption::parse (const std::string& given, const std::string& source)
{
    const auto parts = splitAtCommas (given);
    const auto text = source + given;

    if (parts.size() < 3)
        refuse (text, "frequency, gain and Q are needed.");

    BandOption band;
    band.frequencyHz = readWithin (text, parts[0], "frequency", Settings::Parameter::frequency, " Hz");
    band.gainDb = readWithin (text, parts[1], "gain", Settings::Parameter::gain, " dB");
    band.q = readWithin (text, parts[2], "Q", Settings::Parameter::q, "");

    std::set<std::string> words;

    for (std::size_t index = 3; index < parts.size(); ++index)
    {
        const auto& part = parts[index];
        const auto word = part.substr (0, part.find ('='));

        if (! word.empty() && ! words.insert (word).second)
            refuse (text, "'" + word + "' is given twice.");

        if (part == "shelf")
            band.highShelf = true;
        else if (part == "solo")
            band.solo = true;
        else if (part == "bypass")
            band.bypass = true;
        else if (part.starts_with ("ms="))
            band.midSide = readWithin (text, part.substr (3), "mid/side value", Settings::Parameter::midSide, "");
        else if (part.empty())
            refuse (text, "something is missing after a comma.");
        else
            refuse (text, "'" + part + "' is not known.");
    }

    if (band.highShelf && band.frequencyHz < lowestShelfHz)
        refuse (text, "a high shelf starts at 1600 Hz or above.");

    return band;
}
