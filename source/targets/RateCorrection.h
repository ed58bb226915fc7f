#pragma once

#include "dsp/meters/BandAnalyser.h"

#include <array>

/** What a track lost in its conversion from the rate of its file to the session's: the decibels to add to each band.
    All 0 for equal rates and for pairs that no table row names; a few of its rates are odd, and stay so that figures of
    earlier sessions come out again. Rates in Hz. */
[[nodiscard]] std::array<float, analysisBandCount> rateCorrectionDb (double sessionRate, double fileRate) noexcept;
