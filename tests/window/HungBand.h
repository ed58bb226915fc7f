#pragma once

#include "window/PluginWindow.h"

/** A band as a host sets it. */
struct HungBand
{
    double frequencyHz;
    double gainDb = 0.0;
    double q = 1.0;
    bool shelf = false;

    /** 0 is the middle, 1 the sides. */
    double midSide = 0.5;
};

/** Sets the parameters of a band by its number, 1 to 10; that it is in use comes last, so that whoever follows that one
    finds the others as they stay. */
void hang (PluginWindow& window, int number, const HungBand& band);

/** Ten of them, up and down, for pictures. */
void hangTen (PluginWindow& window);
