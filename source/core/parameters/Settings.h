#pragma once

#include "dsp/design/BandDesign.h"

/** Enumerations and records that several layers share. */
namespace Settings
{
/** The kinds of a band's parameter, in the order in which raw pointers to them are kept. */
enum class Parameter
{
    frequency = 0,
    gain = 1,
    q = 2,
    solo = 3,
    bypass = 4,
    active = 5,
    highShelf = 6,
    midSide = 7
};

constexpr int bandParameterKindCount = 8;

/** What the burger menu asks for. */
enum class BurgerMenuCallback
{
    addSmartBands = 0,
    resetTargets = 1,
    deleteAllBands = 2,
    closeMenu = 3,
    addBands = 4 ///< with a number from 1 to 10
};

/** Gains and Qs beyond these are refused by the short filters of Master. */
constexpr float masterGainLimitDb = 4.0f;
constexpr float masterQLimit = 1.5f;

/** Range of a band's gain in dB. */
constexpr float bandGainLimitDb = 12.0f;

/** Range of a band's Q. */
constexpr float lowestQ = 0.5f;
constexpr float highestQ = 5.0f;
} // namespace Settings
