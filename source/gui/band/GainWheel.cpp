#include "gui/band/GainWheel.h"

#include <algorithm>

namespace
{
constexpr float depthPerUnit = 1.0f / 5.0f;
constexpr double memoryMs = 500.0;

float withinRoom (float depth) noexcept
{
    return std::clamp (depth, 0.0f, 1.0f);
}
} // namespace

float GainWheel::turn (float bandDepth, float delta, double timeMs, const GainLimits& limits) noexcept
{
    if (! turning || timeMs - lastTurnMs > memoryMs)
    {
        wantedDepth = bandDepth;
        glide.reset (bandDepth);
    }

    turning = true;
    lastTurnMs = timeMs;
    wantedDepth = limits.limitDepth (withinRoom (wantedDepth + delta * depthPerUnit));
    return limits.limitDepth (withinRoom (glide.moveTo (wantedDepth)));
}

std::optional<float> GainWheel::rest (const GainLimits& limits) noexcept
{
    const auto depth = glide.rest();
    return depth ? std::optional (limits.limitDepth (withinRoom (*depth))) : std::nullopt;
}

void GainWheel::bandMoved() noexcept
{
    turning = false;
    glide.reset (wantedDepth);
}
