#pragma once

#include "dsp/filters/BiQuad.h"

namespace orvik
{
/** Second-order Butterworth low-pass, for smoothing of control values. */
template <typename T>
class Butterworth2ndOrder : public BiQuad<T>
{
public:
    /** Computes the coefficients; the state stays. Real-time safe.

        @param cutoff     in Hz, below half the sample rate
        @param sampleRate in Hz: the rate at which `process` is called, whatever its clock is */
    void setCutoff (float cutoff, float sampleRate) noexcept;
};

extern template class Butterworth2ndOrder<float>;
} // namespace orvik
