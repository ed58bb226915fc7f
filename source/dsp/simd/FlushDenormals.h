#pragma once

#if defined(__SSE2__)
    #include <xmmintrin.h>
#endif

namespace orvik
{
/** Flushes denormals to zero on this thread for as long as it lives: a recursive filter that fades into silence would
    otherwise run a hundred times slower. Real-time safe. Does nothing on other processors than x86-64. */
class FlushDenormals
{
public:
#if defined(__SSE2__)
    FlushDenormals() noexcept : previous (_mm_getcsr())
    {
        _mm_setcsr (previous | flushToZero | denormalsAreZero);
    }
    ~FlushDenormals()
    {
        _mm_setcsr (previous);
    }
#else
    FlushDenormals() noexcept = default;
#endif

    FlushDenormals (const FlushDenormals&) = delete;
    FlushDenormals& operator= (const FlushDenormals&) = delete;

private:
#if defined(__SSE2__)
    static constexpr unsigned int flushToZero = 0x8000;
    static constexpr unsigned int denormalsAreZero = 0x0040;

    unsigned int previous;
#endif
};
} // namespace orvik
