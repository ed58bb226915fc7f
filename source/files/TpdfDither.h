#pragma once

#include <cstdint>

/** Dither of triangular probability: the sum of two independent even ones, from -1 to 1 steps of the coming
    quantiser, of the variance 1/6. It makes error's mean and power independent of the signal (S. P. Lipshitz, R. A.
    Wannamaker and J. Vanderkooy, "Quantization and Dither: A Theoretical Survey", 1992).

    The same sequence every time. Real-time safe. */
class TpdfDither
{
public:
    /** The next value, in steps. */
    [[nodiscard]] double next() noexcept { return even() - even(); }

private:
    /** 0 to below 1, from the upper bits of SplitMix64 (G. L. Steele, D. Lea and C. H. Flood, 2014). */
    [[nodiscard]] double even() noexcept;

    std::uint64_t state = 0x5eed;
};
