#pragma once

#include "dsp/rate/ReducedRate.h"

/** A band of the equaliser while its place is still being looked for. */
struct FitBand
{
    double frequencyHz = 1000.0;
    double gainDb = 0.0;

    /** Means nothing for a shelf. */
    double q = 1.0;
    bool highShelf = false;

    /** Bands on the two sides of 1500 Hz have a filter each: among themselves they add, across they multiply. */
    [[nodiscard]] bool isLow() const noexcept { return frequencyHz <= lowPathLimitHz; }
};
