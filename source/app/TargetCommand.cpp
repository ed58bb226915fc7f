#include "app/TargetCommand.h"

#include "app/CommandError.h"
#include "app/MeasurementReport.h"
#include "app/Printable.h"
#include "app/StandardStreams.h"
#include "app/TargetFile.h"

#include <filesystem>
#include <iostream>
#include <limits>

MeanTarget meanOf (const std::vector<ReferenceReading>& readings)
{
    std::vector<TrackReading> tracks;

    for (const auto& each : readings)
        tracks.push_back (each.reading);

    if (const auto mean = MeanTarget::of (tracks); mean.has_value())
        return *mean;

    throw CommandError (ExitCode::failure,
                        "Nothing could be measured: a reading needs more than a second of sound that is louder than "
                        "-70 LUFS.");
}

void TargetCommand::run() const
{
    std::optional<StandardStreams::PrintToErrors> outputIsTarget;
    std::vector<std::string> paths;

    for (const auto& reference : references)
        paths.push_back (reference.path);

    StandardStreams::requireNamedOnce (paths);
    TargetFile::requireItMayStand (output, paths);

    if (StandardStreams::isOutput (output))
        outputIsTarget.emplace();

    TargetFile file;
    file.name = StandardStreams::isOutput (output) ? "target" : std::filesystem::path (output).stem().string();

    for (const auto& reference : references)
        file.tracks.push_back (measureReference (reference, sampleRate, quiet));

    file.target = meanOf (file.tracks);
    file.write (output);

    if (json)
        std::cout << file.text();
    else if (! quiet)
    {
        std::cout << MeasurementReport::headingText();

        for (const auto& track : file.tracks)
            std::cout << MeasurementReport::rowText ("measured", track.reading.lufs, track.reading.bands) << "  "
                      << printable (track.path) << '\n';

        std::cout << MeasurementReport::rowText ("target", file.target.lufs, file.target.values) << "  "
                  << printable (output) << '\n';
    }

    if (! quiet)
        for (const auto& track : file.tracks)
            for (const auto& note : track.notes)
                std::cerr << "Note: " << printable (note) << '\n';
}
