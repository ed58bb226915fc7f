#include "dsp/filters/FIRFilter.h"

#include <algorithm>
#include <cstddef>

namespace orvik
{
template <int tapCount>
void FIRFilter<tapCount>::setCoefficients (std::vector<double> values)
{
    values.resize (static_cast<std::size_t> (tapCount), 0.0);
    std::copy (values.begin(), values.end(), coefficients.begin());
}

template <int tapCount>
double FIRFilter<tapCount>::process (double sample) noexcept
{
    ring[static_cast<std::size_t> (writeIndex)] = sample;
    auto sum = 0.0;

    for (int k = 0; k < tapCount; ++k)
    {
        const auto readIndex = (writeIndex - k + tapCount) % tapCount;
        sum += coefficients[static_cast<std::size_t> (k)] * ring[static_cast<std::size_t> (readIndex)];
    }

    writeIndex = (writeIndex + 1) % tapCount;
    return sum;
}

template <int tapCount>
void FIRFilter<tapCount>::reset (double value) noexcept
{
    ring.fill (value);
}

template class FIRFilter<4>;
} // namespace orvik
