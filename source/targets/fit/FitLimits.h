#pragma once

#include "dsp/design/FirLengths.h"

/** How far a fit's bands may go. */
struct FitLimits
{
    double gainDb = 12.0;
    double lowestQ = 0.5;
    double highestQ = 2.0;

    static constexpr double lowestHz = 320.0;
    static constexpr double highestHz = 18000.0;
    static constexpr double lowestShelfHz = 1600.0;
    static constexpr double highestShelfHz = 12000.0;

    /** Mix's filters would follow a Q of 5, but a band as narrow as that follows a note, and rings. */
    [[nodiscard]] static FitLimits of (FilterMode mode) noexcept
    {
        return mode == FilterMode::master ? FitLimits { .gainDb = 4.0, .highestQ = 1.5 } : FitLimits {};
    }
};
