#pragma once

#include "dsp/meters/BandAnalyser.h"

#include <span>
#include <vector>

/** The gain target as a curve over the rows of a picture whose vertical axis is frequency, 320 Hz at the floor and 20
   kHz at the ceiling, on a logarithmic scale. Nothing here is real-time safe. */
namespace DisplayCurve
{
inline constexpr float lowHz = 320.0f;
inline constexpr float highHz = 20000.0f;

/** Rows between two points of the curve. */
inline constexpr int rowStep = 4;

/** The frequencies in hertz of every fourth row, rising, from the second row above the floor on.
    @param height of the picture in pixels; 0 or less gives no rows */
[[nodiscard]] std::vector<double> frequencies (int height);

/** The targets in dB at these frequencies, on a curve through the ten analysis bands that ends level at 20 kHz. Where
    the curve is undefined, as beside a flat stretch, the value is 0. */
[[nodiscard]] std::vector<double> valuesAt (std::span<const double> frequencies,
                                            std::span<const float, analysisBandCount> gainTargets);
} // namespace DisplayCurve
