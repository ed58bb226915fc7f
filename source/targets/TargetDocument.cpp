#include "targets/TargetDocument.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace
{
// In order, so that a file says first what it is.
using Json = nlohmann::ordered_json;

constexpr auto formatName = "solvane-target";
constexpr int formatVersion = 1;

Json numberOrNull (float value)
{
    return std::isfinite (value) ? Json (value) : Json();
}

Json listOf (const std::array<float, analysisBandCount>& values)
{
    auto list = Json::array();

    for (const auto value : values)
        list.push_back (numberOrNull (value));

    return list;
}

Json jsonOf (const TargetDocument::Track& track)
{
    auto ranges = Json::array();

    for (const auto& range : track.ranges)
        ranges.push_back ({ range.first / track.sessionRate, range.end / track.sessionRate });

    return { { "file", track.path },
             { "sampleRate", track.fileRate },
             { "measuredAt", track.sessionRate },
             { "seconds", track.seconds },
             { "ranges", ranges },
             { "lufs", numberOrNull (track.reading.lufs) },
             { "values", listOf (track.reading.bands) } };
}

/** A level as a file holds it; nothing where it is neither a number that a target can hold nor null. */
std::optional<float> levelOf (const nlohmann::json& value)
{
    constexpr auto furthestDb = 1000.0;

    if (value.is_null())
        return -std::numeric_limits<float>::infinity();

    if (! value.is_number() || ! (std::abs (value.get<double>()) <= furthestDb))
        return std::nullopt;

    return value.get<float>();
}
} // namespace

std::string TargetDocument::text() const
{
    auto list = Json::array();

    for (const auto& track : tracks)
        list.push_back (jsonOf (track));

    const Json document { { "format", formatName },
                          { "version", formatVersion },
                          { "name", name },
                          { "lufs", numberOrNull (target.lufs) },
                          { "frequencies", analysisCentresHz },
                          { "values", listOf (target.values) },
                          { "tracks", list } };
    return document.dump (1, ' ', false, Json::error_handler_t::replace) + '\n';
}

std::variant<TargetDocument, TargetDocument::Refusal> TargetDocument::parse (const std::string& text)
{
    const auto document = nlohmann::json::parse (text, nullptr, false);

    if (! document.is_object() || document.value ("format", nlohmann::json()) != formatName)
        return Refusal { "is not a target file of SOLVANE" };

    if (document.value ("version", nlohmann::json()) != formatVersion)
        return Refusal { "is a target file of another version" };

    TargetDocument result;
    const auto lufs = levelOf (document.value ("lufs", nlohmann::json()));
    const auto values = document.value ("values", nlohmann::json());

    if (! lufs.has_value() || ! std::isfinite (*lufs) || ! values.is_array()
        || values.size() != result.target.values.size())
        return Refusal { "does not hold a loudness and ten values" };

    if (const auto centres = document.value ("frequencies", nlohmann::json());
        ! centres.is_null() && centres != nlohmann::json (analysisCentresHz))
        return Refusal { "has values for other frequencies" };

    result.target.lufs = *lufs;

    for (std::size_t band = 0; band < values.size(); ++band)
    {
        const auto level = levelOf (values[band]);

        if (! level.has_value())
            return Refusal { "holds a value that is no level" };

        result.target.values[band] = *level;
    }

    if (std::ranges::none_of (result.target.values, [] (float level) { return std::isfinite (level); }))
        return Refusal { "holds no reading" };

    const auto given = document.value ("name", nlohmann::json());

    if (given.is_string())
        result.name = given.get<std::string>();

    return result;
}
