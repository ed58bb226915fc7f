#include "core/audio/LiveSpectrum.h"

#include <algorithm>

bool LiveSpectrum::publish (const Magnitudes& fresh)
{
    const std::scoped_lock guard (lock);

    if (frozen)
        return false;

    magnitudes = fresh;
    isFresh = true;
    return true;
}

bool LiveSpectrum::copy (std::span<float, SpectrumAnalyser::binCount> destination)
{
    const std::scoped_lock guard (lock);
    std::copy (magnitudes.begin(), magnitudes.end(), destination.begin());
    return isFresh.exchange (false);
}

void LiveSpectrum::clear()
{
    const std::scoped_lock guard (lock);
    magnitudes.fill (0.0f);
}
