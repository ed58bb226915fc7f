#pragma once

#include <cmath>
#include <vector>

/** Frequencies in Hz for a fit to look at, at equal steps of octaves, from below what music has much of to 20 kHz. */
[[nodiscard]] inline std::vector<double> fitGrid (double pointsPerOctave)
{
    constexpr auto lowestHz = 25.0;
    constexpr auto highestHz = 20000.0;
    std::vector<double> result;

    for (auto hz = lowestHz; hz <= highestHz; hz *= std::exp2 (1.0 / pointsPerOctave))
        result.push_back (hz);

    return result;
}
