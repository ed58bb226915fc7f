#pragma once

#include "app/Measurement.h"
#include "app/ReferenceFile.h"

#include <functional>
#include <string>
#include <vector>

/** The target that smart bands are derived from, for inputs of a sample rate in Hz. Throws CommandError. One thread. */
using SmartBandsTarget = std::function<MeasurementTarget (double sampleRate)>;

namespace SmartBandsTargets
{
/** A preset, by id or name. Throws CommandError, also where it is none to go by. */
[[nodiscard]] SmartBandsTarget ofPreset (const std::string& preset);

/** A target file. Throws CommandError. */
[[nodiscard]] SmartBandsTarget ofFile (const std::string& path);

/** Reference tracks, measured in a session of the input's rate; once for each rate that is asked for. */
[[nodiscard]] SmartBandsTarget ofReferences (const std::vector<ReferenceFile>& references, bool quiet);
} // namespace SmartBandsTargets
