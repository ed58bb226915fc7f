#include "window/HungBand.h"

#include <cmath>

namespace
{
float normalised (double value, double low, double high, double skew = 1.0)
{
    return static_cast<float> (std::pow ((value - low) / (high - low), skew));
}
} // namespace

void hang (PluginWindow& window, int number, const HungBand& band)
{
    const auto prefix = "Band " + std::to_string (number) + " ";
    window.setNormalised (prefix + "Frequency", normalised (band.frequencyHz, 320.0, 20000.0, 0.3));
    window.setNormalised (prefix + "Gain", normalised (band.gainDb, -12.0, 12.0));
    window.setNormalised (prefix + "Q", normalised (band.q, 0.5, 5.0));
    window.setNormalised (prefix + "High Shelf", band.shelf ? 1.0f : 0.0f);
    window.setNormalised (prefix + "Mid/Side", static_cast<float> (band.midSide));
    window.setNormalised (prefix + "Active", 1.0f);
}
