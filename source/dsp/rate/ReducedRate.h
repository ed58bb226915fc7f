#pragma once

#include <optional>

/** Bands at or below this frequency run at the reduced rate, the others at the host's rate. */
constexpr double lowPathLimitHz = 1500.0;

/** The factor between host rate and reduced rate, or nothing when the rate is not one of the six that we serve. */
[[nodiscard]] std::optional<int> decimationFactorFor (double sampleRate) noexcept;
