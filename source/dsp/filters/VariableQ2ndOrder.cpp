#include "dsp/filters/VariableQ2ndOrder.h"

#include <cmath>
#include <numbers>

namespace orvik
{
template <typename T>
void VariableQ2ndOrder<T>::setResponse (double q, float frequency, float sampleRate, int type) noexcept
{
    if (type != lowPass && type != highPass)
        return;

    const auto warped =
        std::tan (std::numbers::pi * static_cast<double> (frequency) / static_cast<double> (sampleRate));

    // The high-pass is the low-pass mirrored at a quarter of the rate: the tangent is inverted and the signs of the
    // odd coefficients change.
    const auto sign = type == lowPass ? 1.0 : -1.0;
    const auto k = type == lowPass ? warped : 1.0 / warped;
    const auto divisor = k / q + k * k + 1.0;
    const auto gain = k * k / divisor;

    this->a0 = T { 1 };
    this->a1 = static_cast<T> (sign * 2.0 * (gain - 1.0 / divisor));
    this->a2 = static_cast<T> (gain - (k / q - 1.0) / divisor);
    this->b0 = static_cast<T> (gain);
    this->b1 = static_cast<T> (sign * 2.0 * gain);
    this->b2 = static_cast<T> (gain);
}

template class VariableQ2ndOrder<double>;
} // namespace orvik
