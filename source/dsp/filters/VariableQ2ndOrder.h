#pragma once

#include "dsp/filters/BiQuad.h"

namespace orvik
{
/** Second-order low-pass or high-pass with a free Q, made by the bilinear transform. */
template <typename T>
class VariableQ2ndOrder : public BiQuad<T>
{
public:
    static constexpr int highPass = 0;
    static constexpr int lowPass = 1;

    /** Computes the coefficients; the state stays. Real-time safe.

        @param q          above 0
        @param frequency  corner in Hz, below half the sample rate
        @param sampleRate in Hz
        @param type       `lowPass` or `highPass`; any other value leaves the coefficients unchanged */
    void setResponse (double q, float frequency, float sampleRate, int type) noexcept;
};

extern template class VariableQ2ndOrder<double>;
} // namespace orvik
