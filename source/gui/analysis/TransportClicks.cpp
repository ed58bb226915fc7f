#include "gui/analysis/TransportClicks.h"

#include <cmath>
#include <utility>

int TransportClicks::moveTo (double value, int numSamples, int playPosition) noexcept
{
    const auto position = numSamples * value;

    if (std::abs (playPosition - position) > jumpThreshold)
        jumped = true;

    return static_cast<int> (position);
}

bool TransportClicks::click (bool playing) noexcept
{
    const auto wasJump = std::exchange (jumped, false);
    return ! playing || wasJump;
}
