#pragma once

#include "dsp/filters/BaseFIRFilter.h"

#include <array>
#include <cstddef>

namespace orvik
{
/** FIR filter of `tapCount` coefficients that takes one sample at a time. Coefficients and history start at zero. */
template <int tapCount>
class FIRFilter final : public BaseFIRFilter
{
public:
    /** Takes the first `tapCount` values; where fewer are given the rest becomes zero. */
    void setCoefficients (std::vector<double> values) override;

    /** Filters one sample. Real-time safe. */
    double process (double sample) noexcept;

    /** Fills the history, as if `value` had been the input for ever. Real-time safe. */
    void reset (double value) noexcept;

private:
    std::array<double, static_cast<std::size_t> (tapCount)> coefficients {};
    std::array<double, static_cast<std::size_t> (tapCount)> ring {};
    int writeIndex = 0;
};

extern template class FIRFilter<4>;
} // namespace orvik
