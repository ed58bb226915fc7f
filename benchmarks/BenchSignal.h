#pragma once

#include <array>
#include <cstddef>
#include <vector>

/** Two channels of noise that turns hand to an equaliser block by block, over and over. */
class BenchSignal
{
public:
    BenchSignal();

    /** Frames that one pass over the signal has; a multiple of every block size in use. */
    static constexpr int frameCount = 1 << 14;

    [[nodiscard]] const float* channel (int index) const noexcept
    {
        return samples[static_cast<std::size_t> (index)].data();
    }

    /** Room for a result of the same length. */
    [[nodiscard]] float* output (int index) noexcept { return results[static_cast<std::size_t> (index)].data(); }

private:
    std::array<std::vector<float>, 2> samples;
    std::array<std::vector<float>, 2> results;
};
