#pragma once

/** Whether a sanitizer watches every access to memory, which slows a convolution down a hundredfold: signals that are
    long for the sake of coverage may then be shorter. */
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr bool isSanitizedBuild = true;
#else
inline constexpr bool isSanitizedBuild = false;
#endif
