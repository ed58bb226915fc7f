#pragma once

#include "dsp/simd/FunctionVersions.h"

#include <cstddef>

// Pieces for loops that are written once for any vector width, and compiled once for each level of vector code.
// They use the vector extension that GCC and Clang share. A loop is a template that is always inlined into one function
// for each level; vectors must not be passed by value between functions, since their calling convention depends on
// the level.

#define SOLVANE_ALWAYS_INLINE inline __attribute__ ((always_inline))

#if SOLVANE_HAS_FUNCTION_VERSIONS
    #define SOLVANE_TARGET_V3 __attribute__ ((target ("arch=x86-64-v3")))
    #define SOLVANE_TARGET_V4 __attribute__ ((target ("arch=x86-64-v4")))
#endif

// Makes the compiler load a vector once, where it would otherwise read it from memory again for each of its uses.
#if defined(__x86_64__)
    #define SOLVANE_KEEP_IN_REGISTER(vector) __asm__("" : "+v"(vector))
#else
    #define SOLVANE_KEEP_IN_REGISTER(vector) static_cast<void> (vector)
#endif

/** A count as the size of an array. */
constexpr std::size_t extent (int count) noexcept
{
    return static_cast<std::size_t> (count);
}

/** `count` doubles side by side. */
template <int count>
struct SimdLanes
{
    typedef double Vector __attribute__ ((vector_size (extent (count) * sizeof (double))));

    /** The same lanes at any address of a double. */
    typedef double InMemory __attribute__ ((vector_size (extent (count) * sizeof (double)), aligned (8), may_alias));
};

template <int count>
SOLVANE_ALWAYS_INLINE const typename SimdLanes<count>::InMemory& lanesAt (const double* address) noexcept
{
    return *reinterpret_cast<const typename SimdLanes<count>::InMemory*> (address);
}

template <int count>
SOLVANE_ALWAYS_INLINE typename SimdLanes<count>::InMemory& lanesAt (double* address) noexcept
{
    return *reinterpret_cast<typename SimdLanes<count>::InMemory*> (address);
}

/** Writes the first `kept` lanes, which may be none or all. */
template <int count>
SOLVANE_ALWAYS_INLINE void
storeLanes (const typename SimdLanes<count>::Vector& vector, double* output, int kept) noexcept
{
    if (kept >= count)
    {
        lanesAt<count> (output) = vector;
        return;
    }

    for (int lane = 0; lane < kept; ++lane)
        output[lane] = vector[lane];
}
