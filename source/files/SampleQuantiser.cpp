#include "files/SampleQuantiser.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr int widestDitheredBits = 16;
constexpr int bitsOfResult = 32;
} // namespace

SampleQuantiser::SampleQuantiser (int wantedBits, int channelCount) noexcept
    : channels (channelCount),
      scale (std::ldexp (1.0, wantedBits - 1)),
      shift (bitsOfResult - wantedBits),
      mayDither (wantedBits <= widestDitheredBits)
{
}

bool SampleQuantiser::fits (const float* frame) const noexcept
{
    return std::all_of (frame,
                        frame + channels,
                        [this] (float sample)
                        {
                            const auto value = static_cast<double> (sample) * scale;
                            return value == std::floor (value);
                        });
}

void SampleQuantiser::convert (const float* frame, int* result) noexcept
{
    dithering = dithering || (mayDither && ! fits (frame));

    for (int channel = 0; channel < channels; ++channel)
    {
        const auto value = static_cast<double> (frame[channel]) * scale + (dithering ? dither.next() : 0.0);
        const auto held = std::isnan (value) ? 0.0 : std::clamp (value, -scale, scale - 1.0);
        result[channel] = static_cast<int> (std::llrint (held) * (1LL << shift));
    }
}
