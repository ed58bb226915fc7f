#include "dsp/meters/LoudnessScale.h"

#include <cmath>
#include <limits>

namespace orvik
{
namespace
{
constexpr float scaleOffsetDb = 0.691f;
} // namespace

float loudnessOf (float power) noexcept
{
    return 10.0f * std::log10 (power) - scaleOffsetDb;
}

float powerOfResetLevel (float levelDb) noexcept
{
    const auto exponent = (static_cast<double> (levelDb) + 0.691) / 10.0;
    return std::pow (10.0f, static_cast<float> (exponent));
}

float smallestPowerAbove (float levelDb) noexcept
{
    // The inverse alone can be some dozen floats off, since many neighbouring powers share one level.
    const auto estimate = std::pow (10.0, (static_cast<double> (levelDb) + 0.691) / 10.0);
    auto power = static_cast<float> (estimate);

    while (! (loudnessOf (power) > levelDb) && power < std::numeric_limits<float>::max())
        power = std::nextafter (power, std::numeric_limits<float>::infinity());

    for (;;)
    {
        const auto below = std::nextafter (power, 0.0f);

        if (! (loudnessOf (below) > levelDb))
            return power;

        power = below;
    }
}
} // namespace orvik
