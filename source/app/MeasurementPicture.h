#pragma once

#include "app/Measurement.h"

#include <string>
#include <vector>

/** Throws CommandError where no picture can be written, or where one would destroy something: anything but another PNG,
    and all that is measured. */
void requirePictureMayStand (const std::string& path, const std::vector<std::string>& measuredFiles);

/** Draws measured levels, the target at equal loudness, and the adjustments over frequency into a PNG file. Throws
    CommandError when the file cannot be written. */
void drawMeasurements (const std::vector<Measurement>& measurements,
                       const MeasurementTarget& target,
                       const std::string& path);
