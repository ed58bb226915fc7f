#pragma once

#include "dsp/filters/BiQuad.h"

namespace orvik
{
/** Second-order shelf with a section Q of 1/sqrt(2). A cut is the exact inverse of the boost of equal size. */
template <typename T>
class Shelving : public BiQuad<T>
{
public:
    /** Computes the coefficients from the four fields below; the state stays. Real-time safe. */
    void updateCoefficients() noexcept;

    /** Corner in Hz, below half the sample rate. */
    float frequency = 1000.0f;

    /** In Hz. */
    float sampleRate = 48000.0f;

    float gainDb = 0.0f;

    /** 0 is a low shelf, anything else a high shelf. */
    int highShelf = 1;

private:
    void setCoefficients (const double (&numerator)[3], const double (&denominator)[3]) noexcept;
};

extern template class Shelving<double>;
} // namespace orvik
