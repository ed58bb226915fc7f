#pragma once

#include "dsp/filters/PeakCoefficients.h"
#include "dsp/filters/Shelving.h"

#include <span>

/** Points of every magnitude curve, from 0 Hz to half the design rate with both ends included. */
constexpr int curvePointCount = 1024;

/** Evaluates second-order sections as curves of linear magnitude.

    The points of `curve` lie at pi k / (N - 1) radians, N being its length. Curves of `curvePointCount` points read
   their sines and cosines from tables that are made before main; any other length computes them, with the same result
   to the bit. Nothing is allocated. */
void curveOfCoefficients (double a0,
                          double a1,
                          double a2,
                          double b0,
                          double b1,
                          double b2,
                          std::span<double> curve) noexcept;

void curveOfCoefficients (const PeakCoefficients& peak, std::span<double> curve) noexcept;

void curveOfCoefficients (const orvik::Shelving<double>& shelf, std::span<double> curve) noexcept;
