#pragma once

/** Put before a function's definition to have it compiled for several instruction sets; the loader picks one.

    Empty where the compiler does not know the attribute, and where SOLVANE_NO_FUNCTION_VERSIONS is defined. */
#if defined(__x86_64__) && defined(__GNUC__) && ! defined(__clang__) && ! defined(SOLVANE_NO_FUNCTION_VERSIONS)
    #define SOLVANE_FUNCTION_VERSIONS __attribute__ ((target_clones ("arch=x86-64-v4", "arch=x86-64-v3", "default")))
#else
    #define SOLVANE_FUNCTION_VERSIONS
#endif
