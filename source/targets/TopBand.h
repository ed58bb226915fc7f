#pragma once

#include <array>
#include <optional>

/** Predicts the level of the band at 18 kHz from those at 6, 10 and 15 kHz, by running the curve through the three on
    beyond its end. 18 kHz lies above what lossy sources keep, so it is never taken as measured.

    @param threeValues levels in dB
    @param result      written in dB; left as it is where the curve is undefined, as for three equal levels
    Not real-time safe. */
void makeTopBandValue (const std::array<double, 3>& threeValues, float* result);

/** The prediction alone; none where the curve is undefined. Not real-time safe. */
[[nodiscard]] std::optional<float> topBandValueOf (const std::array<double, 3>& threeValues);

/** For levels that are asked for far more often than they change: builds a curve only for others than at the last call.
    One thread at a time. Not real-time safe. */
class RememberedTopBand
{
public:
    /** As the function of this name. */
    void makeTopBandValue (const std::array<double, 3>& threeValues, float* result);

private:
    std::optional<std::array<double, 3>> known;
    std::optional<float> value;
};
