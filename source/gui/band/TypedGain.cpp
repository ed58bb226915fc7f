#include "gui/band/TypedGain.h"

#include <algorithm>
#include <cmath>

TypedGain typedGain (double number, const GainLimits& limits) noexcept
{
    const auto largest = std::min (limits.largestGainDb(), Settings::bandGainLimitDb);
    const auto gain =
        static_cast<float> (std::clamp (number, -static_cast<double> (largest), static_cast<double> (largest)));
    return { gain, std::abs (gain) > limits.scaleDb };
}
