#pragma once

#include <array>

/** Predicts the level of the band at 18 kHz from those at 6, 10 and 15 kHz, by running the curve through the three on
    beyond its end. 18 kHz lies above what lossy sources keep, so it is never taken as measured.

    @param threeValues levels in dB
    @param result      written in dB; left as it is where the curve is undefined, as for three equal levels
    Not real-time safe. */
void makeTopBandValue (const std::array<double, 3>& threeValues, float* result);
