#pragma once

#include "app/Measurement.h"

#include <string>
#include <vector>

/** Draws measured levels, the target at equal loudness, and the adjustments over frequency into a PNG file. Throws
    CommandError when the file cannot be written. */
void drawMeasurements (const std::vector<Measurement>& measurements,
                       const MeasurementTarget& target,
                       const std::string& path);
