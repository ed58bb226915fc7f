#include "gui/band/GainLimits.h"

#include "gui/band/BandLayout.h"

#include <algorithm>
#include <cmath>
#include <limits>

float GainLimits::largestGainDb() const noexcept
{
    if (mode == FilterMode::mix)
        return std::numeric_limits<float>::infinity();

    if (gainScalePercent <= 0.0f)
        return Settings::bandGainLimitDb;

    return std::min (Settings::masterGainLimitDb / (gainScalePercent / 100.0f), Settings::bandGainLimitDb);
}

bool GainLimits::exceedsMaster (float gainDb) const noexcept
{
    return std::abs (gainDb * gainScalePercent / 100.0f) > Settings::masterGainLimitDb;
}

float GainLimits::limitDepth (float depth) const noexcept
{
    if (mode == FilterMode::mix)
        return depth;

    const auto largest = largestGainDb();
    const auto gain = std::clamp (gainAtDepth (depth, scaleDb), -largest, largest);
    return std::clamp (depthOfGain (gain, scaleDb), 0.0f, 1.0f);
}

float GainLimits::limitQ (float q) const noexcept
{
    return mode == FilterMode::mix ? q : std::min (q, Settings::masterQLimit);
}
