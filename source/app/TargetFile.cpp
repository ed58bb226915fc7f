#include "app/TargetFile.h"

#include "app/CommandError.h"
#include "app/FileArgument.h"
#include "app/InputFile.h"
#include "app/StandardOutputFile.h"
#include "app/StandardStreams.h"
#include "files/AtomicFile.h"
#include "files/OutputPlace.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <limits>
#include <memory>

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

Json jsonOf (const ReferenceReading& track)
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

std::unique_ptr<IOutputFile> placeFor (const std::string& path)
{
    if (StandardStreams::isOutput (path))
        return std::make_unique<StandardOutputFile>();

    return std::make_unique<AtomicFile> (fileFor (path));
}
} // namespace

std::string TargetFile::text() const
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

TargetFile TargetFile::read (const std::string& path)
{
    const auto refuse = [&path] (const std::string& why) -> CommandError {
        return { ExitCode::unreadableInput, "'" + path + "' " + why + "." };
    };

    const auto document = nlohmann::json::parse (InputFile::read (path), nullptr, false);

    if (! document.is_object() || document.value ("format", nlohmann::json()) != formatName)
        throw refuse ("is not a target file of SOLVANE");

    if (document.value ("version", nlohmann::json()) != formatVersion)
        throw refuse ("is a target file of another version");

    TargetFile result;
    const auto lufs = levelOf (document.value ("lufs", nlohmann::json()));
    const auto values = document.value ("values", nlohmann::json());

    if (! lufs.has_value() || ! std::isfinite (*lufs) || ! values.is_array()
        || values.size() != result.target.values.size())
        throw refuse ("does not hold a loudness and ten values");

    result.target.lufs = *lufs;

    for (std::size_t band = 0; band < values.size(); ++band)
    {
        const auto level = levelOf (values[band]);

        if (! level.has_value())
            throw refuse ("holds a value that is no level");

        result.target.values[band] = *level;
    }

    const auto given = document.value ("name", nlohmann::json());
    result.name = given.is_string() ? given.get<std::string>() : path;
    return result;
}

void TargetFile::requireItMayStand (const std::string& path, const std::vector<std::string>& read)
{
    if (StandardStreams::isOutput (path))
        return;

    std::vector<std::filesystem::path> spared;

    for (const auto& each : read)
        if (! StandardStreams::isInput (each))
            spared.push_back (fileFor (each));

    if (const auto refusal = OutputPlace::refusal (fileFor (path), OutputPlace::Kind::target, path, spared);
        refusal.has_value())
        throw CommandError (ExitCode::unwritableOutput, *refusal);
}

void TargetFile::write (const std::string& path) const
{
    const auto file = placeFor (path);
    auto stream = file->open();
    const auto written =
        stream != nullptr && stream->writeText (juce::String::fromUTF8 (text().c_str()), false, false, nullptr);
    stream.reset();

    if (! written || ! file->commit())
        throw CommandError (ExitCode::unwritableOutput,
                            (StandardStreams::isOutput (path) ? "The standard output" : "'" + path + "'")
                                + " could not be written: " + file->reason() + ".");
}
