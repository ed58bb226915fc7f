#include "app/MeasureCommand.h"

#include "app/AudioInput.h"
#include "app/CommandError.h"
#include "app/Interrupt.h"
#include "app/Measurement.h"
#include "app/MeasurementPicture.h"
#include "app/OfflineMeasurement.h"
#include "app/PresetChoice.h"
#include "app/ProgressBar.h"
#include "app/ServedAudio.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <iomanip>
#include <iostream>

namespace
{
constexpr int blockLength = 4096;

Measurement measure (const std::string& path, const MeasurementTarget& target)
{
    auto input = AudioInput::fromArgument (path);
    requireServedAudio (input, path);

    const auto stereo = input.channelCount() == 2;
    OfflineMeasurement meters (input.sampleRate(), input.channelCount());
    juce::AudioBuffer<float> block (input.channelCount(), blockLength);
    ProgressBar progress ("Measuring " + path);

    for (juce::int64 position = 0; position < input.length(); position += blockLength)
    {
        Interrupt::throwIfRequested();
        const auto count = static_cast<int> (std::min<juce::int64> (blockLength, input.length() - position));
        input.read (block, position, count);
        meters.process (block.getReadPointer (0), stereo ? block.getReadPointer (1) : nullptr, count);
        progress.show (static_cast<double> (position) / static_cast<double> (input.length()));
    }

    Measurement result;
    result.file = path;
    result.sampleRate = input.sampleRate();
    result.channels = input.channelCount();
    result.seconds = static_cast<double> (input.length()) / input.sampleRate();
    result.lufs = meters.lufs();
    result.bands = meters.bands();
    result.adjustments = target.adjustmentsFor (result.lufs, result.bands);
    return result;
}

nlohmann::json numberOrNull (float value)
{
    return std::isfinite (value) ? nlohmann::json (value) : nlohmann::json();
}

nlohmann::json listOf (const Measurement::Levels& levels)
{
    auto list = nlohmann::json::array();

    for (const auto level : levels)
        list.push_back (numberOrNull (level));

    return list;
}

nlohmann::json toJson (const Measurement& measurement, const MeasurementTarget& target)
{
    return { { "file", measurement.file },
             { "sampleRate", measurement.sampleRate },
             { "channels", measurement.channels },
             { "seconds", measurement.seconds },
             { "lufs", numberOrNull (measurement.lufs) },
             { "bands", listOf (measurement.bands) },
             { "target",
               { { "id", target.id },
                 { "name", target.name },
                 { "lufs", target.lufs },
                 { "values", listOf (target.values) } } },
             { "adjustments", listOf (measurement.adjustments) } };
}

std::string cell (float value)
{
    return std::isfinite (value) ? juce::String (value, 1).toStdString() : "-";
}

void printRow (const std::string& label, float lufs, const Measurement::Levels& levels)
{
    std::cout << std::left << std::setw (14) << label << std::right << std::setw (8) << cell (lufs);

    for (const auto level : levels)
        std::cout << std::setw (8) << cell (level);

    std::cout << '\n';
}

void print (const Measurement& measurement, const MeasurementTarget& target)
{
    std::cout << measurement.file << " (" << juce::String (measurement.sampleRate, 0) << " Hz, "
              << (measurement.channels == 1 ? "mono" : "stereo") << ", " << std::fixed << std::setprecision (2)
              << measurement.seconds << " s)\n"
              << std::defaultfloat << std::left << std::setw (14) << "LUFS" << std::right << std::setw (8) << "overall";

    for (const auto centre : analysisCentresHz)
        std::cout << std::setw (8) << juce::String (static_cast<int> (centre)).toStdString();

    std::cout << '\n';
    printRow ("measured", measurement.lufs, measurement.bands);
    printRow ("target", target.lufs, target.values);
    printRow ("adjustment dB", std::numeric_limits<float>::quiet_NaN(), measurement.adjustments);
}
} // namespace

void MeasureCommand::run() const
{
    const Presets::Library library;
    const auto& chosen = PresetChoice::find (library, preset);
    const auto target = MeasurementTarget::of (library, chosen);
    std::vector<Measurement> measurements;

    if (! picture.empty())
        requirePictureMayStand (picture, files);

    for (const auto& file : files)
        measurements.push_back (measure (file, target));

    if (json)
    {
        auto list = nlohmann::json::array();

        for (const auto& measurement : measurements)
            list.push_back (toJson (measurement, target));

        std::cout << list.dump (1) << '\n';
    }
    else
    {
        std::cout << "Target: " << target.title << " (id " << target.id << ")\n";

        for (const auto& measurement : measurements)
            print (measurement, target);
    }

    if (! picture.empty())
        drawMeasurements (measurements, target, picture);
}
