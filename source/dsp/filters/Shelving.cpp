#include "dsp/filters/Shelving.h"

#include <cmath>
#include <numbers>

namespace orvik
{
namespace
{
constexpr double rootOfTwo = 1.4142135623730951;
}

// With the prototype's frequency in units of the corner, a high shelf is (V s^2 + sqrt(2V) s + 1) / (s^2 + sqrt(2) s +
// 1) and a low shelf has V at the other end. The bilinear transform puts (1/K)(1 - z)/(1 + z) for s. A cut swaps
// numerator and denominator of the boost by 1/V, which V on both sides keeps free of a second division.
template <typename T>
void Shelving<T>::updateCoefficients() noexcept
{
    const auto k = std::tan (std::numbers::pi * static_cast<double> (frequency) / static_cast<double> (sampleRate));
    const auto kk = k * k;
    const auto v = std::pow (10.0, static_cast<double> (gainDb) / 20.0);
    const auto s = std::sqrt (2.0 * v);
    const auto p = 1.0 + rootOfTwo * k + kk;
    const auto m = 1.0 - rootOfTwo * k + kk;
    const auto boost = gainDb >= 0.0f;

    if (highShelf != 0)
    {
        if (boost)
            setCoefficients ({ v + s * k + kk, 2.0 * (kk - v), v - s * k + kk }, { p, 2.0 * (kk - 1.0), m });
        else
            setCoefficients ({ v * p, 2.0 * v * (kk - 1.0), v * m },
                             { 1.0 + s * k + v * kk, 2.0 * (v * kk - 1.0), 1.0 - s * k + v * kk });
    }
    else
    {
        if (boost)
            setCoefficients ({ 1.0 + s * k + v * kk, 2.0 * (v * kk - 1.0), 1.0 - s * k + v * kk },
                             { p, 2.0 * (kk - 1.0), m });
        else
            setCoefficients ({ v * p, 2.0 * v * (kk - 1.0), v * m },
                             { v + s * k + kk, 2.0 * (kk - v), v - s * k + kk });
    }
}

template <typename T>
void Shelving<T>::setCoefficients (const double (&numerator)[3], const double (&denominator)[3]) noexcept
{
    const auto divisor = denominator[0];
    this->b0 = static_cast<T> (numerator[0] / divisor);
    this->b1 = static_cast<T> (numerator[1] / divisor);
    this->b2 = static_cast<T> (numerator[2] / divisor);
    this->a0 = T { 1 };
    this->a1 = static_cast<T> (denominator[1] / divisor);
    this->a2 = static_cast<T> (denominator[2] / divisor);
}

template class Shelving<double>;
} // namespace orvik
