#include "app/MeasureCommand.h"

#include "app/AudioInput.h"
#include "app/CommandError.h"
#include "app/Interrupt.h"
#include "app/Measurement.h"
#include "app/MeasurementPicture.h"
#include "app/MeasurementReport.h"
#include "app/OfflineMeasurement.h"
#include "app/PictureFile.h"
#include "app/PresetChoice.h"
#include "app/Printable.h"
#include "app/ProgressBar.h"
#include "app/ServedAudio.h"
#include "app/StandardStreams.h"
#include "app/TimeRange.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <utility>

namespace
{
constexpr int blockLength = 4096;

/** The first and the end sample of a range within a file. */
std::pair<juce::int64, juce::int64> samplesOf (const TimeRange& range, const AudioInput& input, const std::string& path)
{
    const auto toSample = [&] (double seconds)
    {
        const auto last = static_cast<double> (input.length());
        return static_cast<juce::int64> (std::min (std::round (seconds * input.sampleRate()), last));
    };

    const auto start = toSample (range.start);

    if (start >= input.length())
        throw CommandError (ExitCode::badArguments,
                            "'" + path + "' ends at "
                                + TimeRange::textOf (static_cast<double> (input.length()) / input.sampleRate())
                                + ", before --range starts.");

    return { start, range.end.has_value() ? toSample (*range.end) : input.length() };
}

Measurement measure (const std::string& path, const TimeRange& range, bool quiet)
{
    AudioInput input (path);
    requireServedAudio (input, path);

    const auto [start, end] = samplesOf (range, input, path);
    const auto stereo = input.channelCount() == 2;
    OfflineMeasurement meters (input.sampleRate(), input.channelCount());
    juce::AudioBuffer<float> block (input.channelCount(), blockLength);
    ProgressBar progress ("Measuring " + path, quiet);

    juce::int64 notFiniteBefore = 0;

    // Read from the first sample on, wherever the range starts: not every format can be entered in its middle.
    for (juce::int64 position = 0; position < end;)
    {
        Interrupt::throwIfRequested();
        const auto next = position < start ? start : end;
        const auto count = static_cast<int> (std::min<juce::int64> (blockLength, next - position));

        if (position == start)
            notFiniteBefore = input.notFiniteCount();

        input.read (block, position, count);

        if (position >= start)
            meters.process (block.getReadPointer (0), stereo ? block.getReadPointer (1) : nullptr, count);

        progress.show (static_cast<double> (position) / static_cast<double> (end));
        position += count;
    }

    Measurement result;
    result.file = path;
    result.sampleRate = input.sampleRate();
    result.channels = input.channelCount();
    result.seconds = static_cast<double> (input.length()) / input.sampleRate();
    result.rangeStart = static_cast<double> (start) / input.sampleRate();
    result.rangeEnd = static_cast<double> (end) / input.sampleRate();
    result.notFinite = input.notFiniteCount() - notFiniteBefore;
    result.inputNotes = input.notes (path, result.notFinite);
    result.lufs = meters.lufs();
    result.bands = meters.bands();
    return result;
}
} // namespace

void MeasureCommand::run() const
{
    const Presets::Library library;
    const auto target = MeasurementTarget::of (library, PresetChoice::find (library, preset));
    const auto part = range.empty() ? TimeRange() : TimeRange::parse (range);
    auto list = nlohmann::json::array();
    std::vector<Measurement> measurements;

    StandardStreams::requireNamedOnce (files);

    if (! picture.empty())
        PictureFile::requireItMayStand (picture, "--picture", files);

    for (const auto& file : files)
    {
        try
        {
            auto measurement = measure (file, part, quiet);
            measurement.adjustments = target.adjustmentsFor (measurement.lufs, measurement.bands);
            measurements.push_back (measurement);

            if (! json && measurements.size() == 1)
                MeasurementReport::printTarget (target);

            if (json)
                list.push_back (MeasurementReport::toJson (measurement, target));
            else
                MeasurementReport::print (measurement, target);

            if (! quiet)
                for (const auto& note : measurement.notes())
                    std::cerr << "Note: " << printable (note) << '\n';
        }
        catch (const CommandError& error)
        {
            if (files.size() == 1 || error.code() == ExitCode::interrupted)
                throw;

            std::cerr << "solvane: " << printable (error.what()) << '\n';
            list.push_back ({ { "file", file }, { "error", error.what() } });
        }
    }

    // A name that is not UTF-8 cannot stand in JSON.
    if (json)
        std::cout << list.dump (1, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';

    if (! picture.empty() && ! measurements.empty())
        drawMeasurements (measurements, target, picture);

    if (const auto failed = files.size() - measurements.size(); failed > 0)
        throw CommandError (ExitCode::failure,
                            std::to_string (failed) + " of " + std::to_string (files.size())
                                + " files could not be measured.");
}
