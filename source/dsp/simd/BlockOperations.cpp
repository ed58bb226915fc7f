#include "dsp/simd/BlockOperations.h"

#include "dsp/simd/SimdLanes.h"
#include "dsp/simd/SimdLevel.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <limits>

// No loop here carries anything from one sample to the next, also where two of its blocks may be the same.
#if defined(__clang__)
    #define SOLVANE_INDEPENDENT_SAMPLES _Pragma ("clang loop vectorize(assume_safety)")
#elif defined(__GNUC__)
    #define SOLVANE_INDEPENDENT_SAMPLES _Pragma ("GCC ivdep")
#else
    #define SOLVANE_INDEPENDENT_SAMPLES
#endif

// Defines a function in all versions from `loop`, an inlined function of the same arguments.
#if SOLVANE_HAS_FUNCTION_VERSIONS
    #define SOLVANE_BLOCK_OPERATION(name, loop, parameters, arguments)                                                 \
        namespace                                                                                                      \
        {                                                                                                              \
        SOLVANE_TARGET_V3 void name##V3 parameters noexcept                                                            \
        {                                                                                                              \
            loop arguments;                                                                                            \
        }                                                                                                              \
        SOLVANE_TARGET_V4 void name##V4 parameters noexcept                                                            \
        {                                                                                                              \
            loop arguments;                                                                                            \
        }                                                                                                              \
        }                                                                                                              \
        void BlockOperations::name parameters noexcept                                                                 \
        {                                                                                                              \
            switch (simdLevel())                                                                                       \
            {                                                                                                          \
                case SimdLevel::v4:                                                                                    \
                    return name##V4 arguments;                                                                         \
                case SimdLevel::v3:                                                                                    \
                    return name##V3 arguments;                                                                         \
                case SimdLevel::baseline:                                                                              \
                    break;                                                                                             \
            }                                                                                                          \
            loop arguments;                                                                                            \
        }
#else
    #define SOLVANE_BLOCK_OPERATION(name, loop, parameters, arguments)                                                 \
        void BlockOperations::name parameters noexcept                                                                 \
        {                                                                                                              \
            loop arguments;                                                                                            \
        }
#endif

namespace
{
template <typename From, typename To>
SOLVANE_ALWAYS_INLINE void convertLoop (const From* input, To* output, int count) noexcept
{
    SOLVANE_INDEPENDENT_SAMPLES
    for (int i = 0; i < count; ++i)
        output[i] = static_cast<To> (input[i]);
}

// The bits of a magnitude are ordered like an integer, which unlike a number may be compared several at a time.
SOLVANE_ALWAYS_INLINE void limitToFiniteLoop (const float* input, float largest, float* output, int count) noexcept
{
    constexpr std::int32_t magnitudeMask = 0x7fffffff;
    constexpr auto infinity = std::bit_cast<std::int32_t> (std::numeric_limits<float>::infinity());
    const auto limit = std::bit_cast<std::int32_t> (largest);

    SOLVANE_INDEPENDENT_SAMPLES
    for (int i = 0; i < count; ++i)
    {
        const auto bits = std::bit_cast<std::int32_t> (input[i]);
        const auto magnitude = bits & magnitudeMask;
        const auto limited = (magnitude < limit ? magnitude : limit) | (bits & ~magnitudeMask);
        output[i] = std::bit_cast<float> (magnitude < infinity ? limited : 0);
    }
}

SOLVANE_ALWAYS_INLINE void addLoop (double* target, const double* addend, int count) noexcept
{
    SOLVANE_INDEPENDENT_SAMPLES
    for (int i = 0; i < count; ++i)
        target[i] += addend[i];
}

SOLVANE_ALWAYS_INLINE void subtractLoop (double* target, const double* subtrahend, int count) noexcept
{
    SOLVANE_INDEPENDENT_SAMPLES
    for (int i = 0; i < count; ++i)
        target[i] -= subtrahend[i];
}

template <typename Sample>
SOLVANE_ALWAYS_INLINE void exchangeLoop (const Sample* input, double* stored, double* output, int count) noexcept
{
    SOLVANE_INDEPENDENT_SAMPLES
    for (int i = 0; i < count; ++i)
    {
        const auto before = stored[i];
        stored[i] = static_cast<double> (input[i]);
        output[i] = before;
    }
}

SOLVANE_ALWAYS_INLINE void
interleaveLoop (const double* left, const double* right, double* interleaved, int count) noexcept
{
    SOLVANE_INDEPENDENT_SAMPLES
    for (int i = 0; i < count; ++i)
    {
        interleaved[2 * i] = left[i];
        interleaved[2 * i + 1] = right[i];
    }
}

SOLVANE_ALWAYS_INLINE void deinterleaveLoop (const double* interleaved, double* left, double* right, int count) noexcept
{
    SOLVANE_INDEPENDENT_SAMPLES
    for (int i = 0; i < count; ++i)
    {
        left[i] = interleaved[2 * i];
        right[i] = interleaved[2 * i + 1];
    }
}

template <int factor>
SOLVANE_ALWAYS_INLINE void holdSamples (const double* input, int stride, double* output, int count) noexcept
{
    constexpr auto lanes = 4;
    using Vector = typename SimdLanes<lanes>::Vector;

    for (int i = 0; i < count; ++i)
    {
        const Vector held = input[i * stride] - Vector {};

        for (int lane = 0; lane < factor; lane += lanes)
            lanesAt<lanes> (output + i * factor + lane) = held;
    }
}

SOLVANE_ALWAYS_INLINE void holdLoop (const double* input, int stride, double* output, int factor, int count) noexcept
{
    if (factor == 4)
        holdSamples<4> (input, stride, output, count);
    else
        holdSamples<8> (input, stride, output, count);
}

template <typename Sample>
SOLVANE_ALWAYS_INLINE void
splitLoop (const Sample* left, const Sample* right, double* mid, double* side, int count) noexcept
{
    SOLVANE_INDEPENDENT_SAMPLES
    for (int i = 0; i < count; ++i)
    {
        const auto l = static_cast<double> (left[i]);
        const auto r = static_cast<double> (right[i]);
        mid[i] = (l + r) * 0.5;
        side[i] = (r - l) * 0.5;
    }
}

SOLVANE_ALWAYS_INLINE void
joinMidSideLoop (const double* mid, const double* side, float* left, float* right, int count) noexcept
{
    SOLVANE_INDEPENDENT_SAMPLES
    for (int i = 0; i < count; ++i)
    {
        left[i] = static_cast<float> (mid[i] - side[i]);
        right[i] = static_cast<float> (side[i] + mid[i]);
    }
}

SOLVANE_ALWAYS_INLINE void joinPathsLoop (const double* wet,
                                          const double* dry,
                                          const double* a,
                                          const double* b,
                                          double sign,
                                          float* output,
                                          int count) noexcept
{
    SOLVANE_INDEPENDENT_SAMPLES
    for (int i = 0; i < count; ++i)
        output[i] = static_cast<float> ((wet[i] - dry[i]) + (a[i] + sign * b[i]));
}
} // namespace

SOLVANE_BLOCK_OPERATION (convert, convertLoop, (const float* input, double* output, int count), (input, output, count))
SOLVANE_BLOCK_OPERATION (convert, convertLoop, (const double* input, float* output, int count), (input, output, count))
SOLVANE_BLOCK_OPERATION (limitToFinite,
                         limitToFiniteLoop,
                         (const float* input, float largest, float* output, int count),
                         (input, largest, output, count))
SOLVANE_BLOCK_OPERATION (add, addLoop, (double* target, const double* addend, int count), (target, addend, count))
SOLVANE_BLOCK_OPERATION (subtract,
                         subtractLoop,
                         (double* target, const double* subtrahend, int count),
                         (target, subtrahend, count))
SOLVANE_BLOCK_OPERATION (exchange,
                         exchangeLoop,
                         (const float* input, double* stored, double* output, int count),
                         (input, stored, output, count))
SOLVANE_BLOCK_OPERATION (exchange,
                         exchangeLoop,
                         (const double* input, double* stored, double* output, int count),
                         (input, stored, output, count))
SOLVANE_BLOCK_OPERATION (interleave,
                         interleaveLoop,
                         (const double* left, const double* right, double* interleaved, int count),
                         (left, right, interleaved, count))
SOLVANE_BLOCK_OPERATION (deinterleave,
                         deinterleaveLoop,
                         (const double* interleaved, double* left, double* right, int count),
                         (interleaved, left, right, count))
SOLVANE_BLOCK_OPERATION (hold,
                         holdLoop,
                         (const double* input, int stride, double* output, int factor, int count),
                         (input, stride, output, factor, count))
SOLVANE_BLOCK_OPERATION (splitMidSide,
                         splitLoop,
                         (const float* left, const float* right, double* mid, double* side, int count),
                         (left, right, mid, side, count))
SOLVANE_BLOCK_OPERATION (splitMidSide,
                         splitLoop,
                         (const double* left, const double* right, double* mid, double* side, int count),
                         (left, right, mid, side, count))
SOLVANE_BLOCK_OPERATION (joinMidSide,
                         joinMidSideLoop,
                         (const double* mid, const double* side, float* left, float* right, int count),
                         (mid, side, left, right, count))
SOLVANE_BLOCK_OPERATION (
    joinPaths,
    joinPathsLoop,
    (const double* wet, const double* dry, const double* a, const double* b, double sign, float* output, int count),
    (wet, dry, a, b, sign, output, count))
