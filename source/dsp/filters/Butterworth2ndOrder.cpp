#include "dsp/filters/Butterworth2ndOrder.h"

#include <cmath>
#include <numbers>

namespace orvik
{
template <typename T>
void Butterworth2ndOrder<T>::setCutoff (float cutoff, float sampleRate) noexcept
{
    const auto k = std::tan (std::numbers::pi * static_cast<double> (cutoff) / static_cast<double> (sampleRate));

    // The constant has single precision, and the denominator is made from the stored b0: with a corner far below the
    // rate the gain at 0 Hz then stays as close to 1 as the stored coefficients allow.
    const auto damping = static_cast<double> (std::numbers::sqrt2_v<float>) * k;
    const auto divisor = damping + k * k + 1.0;

    this->b0 = static_cast<T> (k * k / divisor);
    const auto stored = static_cast<double> (this->b0);
    this->b1 = static_cast<T> (2.0 * stored);
    this->b2 = this->b0;
    this->a0 = T { 1 };
    this->a1 = static_cast<T> (2.0 * (stored - 1.0 / divisor));
    this->a2 = static_cast<T> (stored - (damping - 1.0) / divisor);
}

template class Butterworth2ndOrder<float>;
} // namespace orvik
