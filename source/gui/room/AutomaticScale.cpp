#include "gui/room/AutomaticScale.h"

#include <algorithm>
#include <cmath>

float AutomaticScale::scaleFor (std::span<const Band> bands) noexcept
{
    auto need = 0.0f;

    for (const auto& band : bands)
        need = std::max ({ need, std::abs (band.gainDb) + marginDb, std::abs (band.typedDb) });

    const auto* choice = std::ranges::upper_bound (choices, need);
    return choice != choices.end() ? *choice : need;
}

bool AutomaticScale::isOutgrown (float scaleDb, float gainDb) noexcept
{
    return scaleDb - marginDb < std::abs (gainDb) && scaleDb != choices.back();
}
