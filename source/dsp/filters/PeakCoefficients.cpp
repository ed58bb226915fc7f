#include "dsp/filters/PeakCoefficients.h"

#include <cmath>
#include <numbers>

void PeakCoefficients::design (double gainDb, double frequencyHz, double q, double designRate) noexcept
{
    const auto k = std::tan (std::numbers::pi * frequencyHz / designRate);
    const auto kk = k * k;
    const auto v = std::pow (10.0, gainDb / 20.0);
    const auto boost = gainDb >= 0.0;
    const auto numeratorWidth = boost ? v * k / q : k / q;
    const auto denominatorWidth = boost ? k / q : k / (v * q);
    const auto divisor = 1.0 + denominatorWidth + kk;

    a0 = 1.0;
    a1 = 2.0 * (kk - 1.0) / divisor;
    a2 = (1.0 - denominatorWidth + kk) / divisor;
    b0 = (1.0 + numeratorWidth + kk) / divisor;
    b1 = a1;
    b2 = (1.0 - numeratorWidth + kk) / divisor;
}
