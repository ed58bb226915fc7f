#pragma once

#include "window/PluginWindow.h"

/** Bands as a host's automation hangs them, for pictures whose point is not the hanging. */
namespace BandsByHost
{
struct Band
{
    double frequencyHz;
    double gainDb;
    double q = 1.0;
    bool shelf = false;
    double midSide = 0.5;
};

/** @param number from 1 */
void hang (PluginWindow& window, int number, const Band& band);

/** Ten, up and down. */
void hangTen (PluginWindow& window);
} // namespace BandsByHost
