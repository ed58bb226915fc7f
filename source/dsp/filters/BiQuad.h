#pragma once

namespace orvik
{
/** One second-order section in direct form I, with the histories of input and output kept apart.

    The owner writes the coefficients; until then the section passes its input. The state starts at zero, and writing
    coefficients leaves it as it is: an owner that needs a clean start zeroes the four fields.
    Nothing is checked: `a0` must not be 0. One thread at a time. Denormals are the caller's affair. */
template <typename T>
class BiQuad
{
public:
    virtual ~BiQuad() = default;

    /** Filters one sample. Real-time safe. */
    virtual T process (T sample) noexcept;

    /** The last two inputs and outputs, newest first. */
    T x1 {};
    T x2 {};
    T y1 {};
    T y2 {};

    /** Coefficients, denominator first. */
    T a0 { 1 };
    T a1 {};
    T a2 {};
    T b0 { 1 };
    T b1 {};
    T b2 {};
};

template <typename T>
inline T BiQuad<T>::process (T sample) noexcept
{
    const auto output = (sample * b0 + x1 * b1 + x2 * b2 - y1 * a1 - y2 * a2) * (T { 1 } / a0);
    x2 = x1;
    x1 = sample;
    y2 = y1;
    y1 = output;
    return output;
}

extern template class BiQuad<float>;
extern template class BiQuad<double>;
} // namespace orvik
