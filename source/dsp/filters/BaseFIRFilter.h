#pragma once

#include <vector>

namespace orvik
{
/** What an owner of any sample-by-sample FIR filter can do without knowing its length. */
class BaseFIRFilter
{
public:
    virtual ~BaseFIRFilter() = default;

    /** Replaces the coefficients; the history stays. Not for the audio thread: the sequence is passed by value. */
    virtual void setCoefficients (std::vector<double> values) = 0;
};
} // namespace orvik
