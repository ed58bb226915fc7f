#include "app/MeasurementReport.h"

#include "app/Printable.h"
#include "app/TimeRange.h"

#include <juce_core/juce_core.h>

#include <cmath>
#include <iomanip>
#include <iostream>

namespace
{
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

nlohmann::json toJson (const MeasurementTarget& target)
{
    return { { "id", target.id },
             { "name", target.name },
             { "lufs", target.exists ? numberOrNull (target.lufs) : nlohmann::json() },
             { "values", target.exists ? listOf (target.values) : nlohmann::json() } };
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
} // namespace

void MeasurementReport::printTarget (const MeasurementTarget& target)
{
    std::cout << "Target: " << target.title << " (id " << target.id
              << (target.exists ? ")" : "): no target, so no adjustment") << '\n';
}

void MeasurementReport::print (const Measurement& measurement, const MeasurementTarget& target)
{
    const auto whole = measurement.rangeStart == 0.0 && measurement.rangeEnd == measurement.seconds;

    std::cout << printable (measurement.file) << " (" << juce::String (measurement.sampleRate, 0) << " Hz, "
              << (measurement.channels == 1 ? "mono" : "stereo") << ", " << std::fixed << std::setprecision (2)
              << measurement.seconds << " s"
              << (whole ? std::string()
                        : ", of which " + TimeRange::textOf (measurement.rangeStart) + " to "
                              + TimeRange::textOf (measurement.rangeEnd))
              << ")\n"
              << std::defaultfloat << std::left << std::setw (14) << "LUFS" << std::right << std::setw (8) << "overall";

    for (const auto centre : analysisCentresHz)
        std::cout << std::setw (8) << juce::String (static_cast<int> (centre)).toStdString();

    std::cout << '\n';
    printRow ("measured", measurement.lufs, measurement.bands);

    if (! target.exists)
    {
        std::cout << std::left << std::setw (14) << "adjustment dB" << std::right << std::setw (8) << "none" << '\n';
        return;
    }

    printRow ("target", target.lufs, target.values);
    printRow ("adjustment dB", std::numeric_limits<float>::quiet_NaN(), measurement.adjustments);
}

nlohmann::json MeasurementReport::toJson (const Measurement& measurement, const MeasurementTarget& target)
{
    return { { "file", measurement.file },
             { "sampleRate", measurement.sampleRate },
             { "channels", measurement.channels },
             { "seconds", measurement.seconds },
             { "range", { measurement.rangeStart, measurement.rangeEnd } },
             { "frequencies", analysisCentresHz },
             { "lufs", numberOrNull (measurement.lufs) },
             { "bands", listOf (measurement.bands) },
             { "target", ::toJson (target) },
             { "adjustments", target.exists ? listOf (measurement.adjustments) : nlohmann::json() },
             { "notFiniteSamples", measurement.notFinite },
             { "notes", measurement.notes() } };
}
