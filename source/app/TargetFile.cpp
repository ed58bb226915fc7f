#include "app/TargetFile.h"

#include "app/CommandError.h"
#include "app/FileArgument.h"
#include "app/InputFile.h"
#include "app/StandardOutputFile.h"
#include "app/StandardStreams.h"
#include "files/AtomicFile.h"
#include "files/OutputPlace.h"
#include "targets/TargetDocument.h"

#include <memory>

namespace
{
std::unique_ptr<IOutputFile> placeFor (const std::string& path)
{
    if (StandardStreams::isOutput (path))
        return std::make_unique<StandardOutputFile>();

    return std::make_unique<AtomicFile> (fileFor (path));
}
} // namespace

std::string TargetFile::text() const
{
    TargetDocument document { .name = name, .target = target, .tracks = {} };

    for (const auto& track : tracks)
        document.tracks.push_back (
            { track.path, track.fileRate, track.sessionRate, track.seconds, track.ranges, track.reading });

    return document.text();
}

TargetFile TargetFile::read (const std::string& path)
{
    const auto parsed = TargetDocument::parse (InputFile::read (path));

    if (const auto* refusal = std::get_if<TargetDocument::Refusal> (&parsed))
        throw CommandError (ExitCode::unreadableInput, "'" + path + "' " + refusal->reason + ".");

    const auto& document = std::get<TargetDocument> (parsed);
    return { .name = document.name.empty() ? path : document.name, .target = document.target, .tracks = {} };
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
