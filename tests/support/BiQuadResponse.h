#pragma once

#include <cmath>
#include <complex>
#include <numbers>

/** Complex response of six coefficients at a frequency, straight from the transfer function. Hz throughout. */
template <typename Coefficients>
std::complex<double> responseOf (const Coefficients& c, double frequencyHz, double sampleRate)
{
    const auto z = std::polar (1.0, -2.0 * std::numbers::pi * frequencyHz / sampleRate);
    return (double (c.b0) + double (c.b1) * z + double (c.b2) * z * z)
           / (double (c.a0) + double (c.a1) * z + double (c.a2) * z * z);
}

/** The frequency of the analogue prototype, in units of its corner, that the bilinear transform moves to `frequencyHz`.
 */
inline double prototypeFrequency (double frequencyHz, double cornerHz, double sampleRate)
{
    return std::tan (std::numbers::pi * frequencyHz / sampleRate) / std::tan (std::numbers::pi * cornerHz / sampleRate);
}
