#pragma once

/** Simple loops over blocks of samples, in vector code that is chosen at run time. `count` may be 0. Unless stated
    otherwise blocks must not overlap. Real-time safe. */
namespace BlockOperations
{
void convert (const float* input, double* output, int count) noexcept;
void convert (const double* input, float* output, int count) noexcept;

/** Copies samples with their magnitude cut to `largest`, and 0 in place of what is no number or infinite. Input and
    output may be the same block. */
void limitToFinite (const float* input, float largest, float* output, int count) noexcept;

/** target[i] += addend[i] */
void add (double* target, const double* addend, int count) noexcept;

/** target[i] -= subtrahend[i] */
void subtract (double* target, const double* subtrahend, int count) noexcept;

/** Puts `input` into `stored` and what was there into `output`. Input and output may be the same block. */
void exchange (const float* input, double* stored, double* output, int count) noexcept;
void exchange (const double* input, double* stored, double* output, int count) noexcept;

/** interleaved[2 * i] = left[i], interleaved[2 * i + 1] = right[i] */
void interleave (const double* left, const double* right, double* interleaved, int count) noexcept;

/** The reverse of interleave(). */
void deinterleave (const double* interleaved, double* left, double* right, int count) noexcept;

/** output[i] = input[i / factor * stride], for factor 4 or 8 and factor * count outputs. */
void hold (const double* input, int stride, double* output, int factor, int count) noexcept;

/** mid = (left + right) / 2, side = (right - left) / 2 */
void splitMidSide (const float* left, const float* right, double* mid, double* side, int count) noexcept;
void splitMidSide (const double* left, const double* right, double* mid, double* side, int count) noexcept;

/** left = mid - side, right = side + mid */
void joinMidSide (const double* mid, const double* side, float* left, float* right, int count) noexcept;

/** output = (wet - dry) + (a + sign * b), for a sign of 1 or -1 */
void joinPaths (const double* wet,
                const double* dry,
                const double* a,
                const double* b,
                double sign,
                float* output,
                int count) noexcept;
} // namespace BlockOperations
