#include "app/MeasurementReport.h"

#include "app/Printable.h"
#include "app/TimeRange.h"

#include <juce_core/juce_core.h>

#include <cmath>
#include <iomanip>
#include <iostream>
#include <limits>
#include <sstream>

namespace
{
std::string cell (float value)
{
    return std::isfinite (value) ? juce::String (value, 1).toStdString() : "-";
}

void printRow (const std::string& label, float lufs, const Measurement::Levels& levels)
{
    std::cout << MeasurementReport::rowText (label, lufs, levels) << '\n';
}
} // namespace

nlohmann::json MeasurementReport::numberOrNull (float value)
{
    return std::isfinite (value) ? nlohmann::json (value) : nlohmann::json();
}

nlohmann::json MeasurementReport::listOf (const Measurement::Levels& levels)
{
    auto list = nlohmann::json::array();

    for (const auto level : levels)
        list.push_back (numberOrNull (level));

    return list;
}

nlohmann::json MeasurementReport::toJson (const MeasurementTarget& target)
{
    return { { "id", target.id > 0 ? nlohmann::json (target.id) : nlohmann::json() },
             { "name", target.name },
             { "lufs", target.exists ? numberOrNull (target.lufs) : nlohmann::json() },
             { "values", target.exists ? listOf (target.values) : nlohmann::json() } };
}

std::string MeasurementReport::headingText()
{
    std::ostringstream text;
    text << std::left << std::setw (14) << "LUFS" << std::right << std::setw (8) << "overall";

    for (const auto centre : analysisCentresHz)
        text << std::setw (8) << static_cast<int> (centre);

    text << '\n';
    return text.str();
}

std::string MeasurementReport::rowText (const std::string& label, float lufs, const Measurement::Levels& levels)
{
    std::ostringstream text;
    text << std::left << std::setw (14) << label << std::right << std::setw (8) << cell (lufs);

    for (const auto level : levels)
        text << std::setw (8) << cell (level);

    return text.str();
}

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
              << std::defaultfloat << headingText();

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
             { "target", toJson (target) },
             { "adjustments", target.exists ? listOf (measurement.adjustments) : nlohmann::json() },
             { "notFiniteSamples", measurement.notFinite },
             { "notes", measurement.notes() } };
}
