#include "gui/editor/LevelMatchIcon.h"

#include <cmath>

bool LevelMatchIcon::warns (float outputGainDb, float levelMatchDb) noexcept
{
    return std::abs (outputGainDb - levelMatchDb) > toleranceDb;
}

std::optional<bool> LevelMatchIcon::update (const Levels& levels) noexcept
{
    if (! std::isfinite (levels.levelMatchDb) || levels.soloed || levels.bypassed)
        return {};

    const auto tenths = static_cast<int> (std::abs (levels.outputGainDb - levels.levelMatchDb) * 10.0f);

    if (shownTenths == tenths)
        return {};

    shownTenths = tenths;
    return warns (levels.outputGainDb, levels.levelMatchDb);
}
