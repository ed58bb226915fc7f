#include "gui/room/ScaleAnimation.h"

#include <cmath>

float ScaleAnimation::nextScale (float drawnDb, float targetDb) noexcept
{
    constexpr float slowness = 2.5f;
    constexpr float closeEnoughDb = 0.1f;

    const auto next = drawnDb + (targetDb - drawnDb) / slowness;
    return std::abs (targetDb - next) < closeEnoughDb ? targetDb : next;
}
