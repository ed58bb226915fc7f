#pragma once

#include "app/Measurement.h"

#include <nlohmann/json.hpp>

/** Measurements as a table for people and as JSON for scripts. */
namespace MeasurementReport
{
void printTarget (const MeasurementTarget& target);
void print (const Measurement& measurement, const MeasurementTarget& target);
[[nodiscard]] nlohmann::json toJson (const Measurement& measurement, const MeasurementTarget& target);
} // namespace MeasurementReport
