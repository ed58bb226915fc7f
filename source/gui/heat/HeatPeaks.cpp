#include "gui/heat/HeatPeaks.h"

#include <algorithm>

void HeatPeaks::update (Magnitudes magnitudes) noexcept
{
    for (std::size_t bin = 0; bin < binCount; ++bin)
    {
        // In this order, so that what is no number becomes 0.
        const auto magnitude = std::min (std::max (0.0f, magnitudes[bin]), 1.0f);
        peaks[bin] = magnitude >= peaks[bin] ? magnitude : peaks[bin] * decay;
    }
}

void HeatPeaks::fall() noexcept
{
    for (auto& peak : peaks)
        peak *= decay;
}
