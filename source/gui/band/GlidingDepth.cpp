#include "gui/band/GlidingDepth.h"

#include <vector>

GlidingDepth::GlidingDepth()
{
    smoother.setCoefficients (std::vector<double> (tapCount, 1.0 / tapCount));
}

void GlidingDepth::reset (float depth) noexcept
{
    smoother.reset (depth);
    target = depth;
    stepsLeft = 0;
}

float GlidingDepth::moveTo (float depth) noexcept
{
    target = depth;
    stepsLeft = tapCount - 1;
    return static_cast<float> (smoother.process (depth));
}

std::optional<float> GlidingDepth::rest() noexcept
{
    if (arrived())
        return std::nullopt;

    --stepsLeft;
    return static_cast<float> (smoother.process (target));
}
