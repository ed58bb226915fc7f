#pragma once

// One binary for every x86-64 machine: hot functions exist in several versions, and the machine's own is chosen at run
// time. SOLVANE_FUNCTION_VERSIONS before a function's definition lets the compiler make and choose the versions;
// SOLVANE_HAS_FUNCTION_VERSIONS tells code that chooses by itself (SimdLevel.h) whether there is anything to choose.
// A build defines SOLVANE_NO_FUNCTION_VERSIONS where versions do harm, as under the thread sanitizer.

#if defined(__x86_64__) && defined(__GNUC__) && ! defined(__clang__) && ! defined(SOLVANE_NO_FUNCTION_VERSIONS)
    #define SOLVANE_HAS_FUNCTION_VERSIONS 1
    #define SOLVANE_FUNCTION_VERSIONS __attribute__ ((target_clones ("arch=x86-64-v4", "arch=x86-64-v3", "default")))
#else
    #define SOLVANE_HAS_FUNCTION_VERSIONS 0
    #define SOLVANE_FUNCTION_VERSIONS
#endif
