#pragma once

#include "app/Measurement.h"

#include <nlohmann/json.hpp>

/** Measurements as a table for people and as JSON for scripts. */
namespace MeasurementReport
{
void printTarget (const MeasurementTarget& target);
void print (const Measurement& measurement, const MeasurementTarget& target);
[[nodiscard]] nlohmann::json toJson (const Measurement& measurement, const MeasurementTarget& target);

// What other reports are made of as well.

/** Null for what is not finite. */
[[nodiscard]] nlohmann::json numberOrNull (float value);
[[nodiscard]] nlohmann::json listOf (const Measurement::Levels& levels);

/** The id is null for a target that is no preset. */
[[nodiscard]] nlohmann::json toJson (const MeasurementTarget& target);

/** The names of the columns, as a line. */
[[nodiscard]] std::string headingText();

/** A line of levels without its end; a dash for what is not finite. */
[[nodiscard]] std::string rowText (const std::string& label, float lufs, const Measurement::Levels& levels);
} // namespace MeasurementReport
