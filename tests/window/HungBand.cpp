#include "window/HungBand.h"

#include <cmath>
#include <vector>

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

void hangTen (PluginWindow& window)
{
    const std::vector<HungBand> bands {
        { 400.0, -3.0 },  { 640.0, 2.0 },  { 1000.0, -4.0, 2.0 }, { 1500.0, 1.5 },       { 2400.0, 5.0, 1.5 },
        { 3600.0, -2.5 }, { 5000.0, 3.5 }, { 7200.0, -6.0, 2.5 }, { 10000.0, 4.0, 1.5 }, { 14000.0, 6.0, 1.0, true }
    };

    for (std::size_t index = 0; index < bands.size(); ++index)
        hang (window, static_cast<int> (index) + 1, bands[index]);
}
