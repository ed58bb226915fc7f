#pragma once

#include "files/TpdfDither.h"

/** Floating point to whole numbers, to the nearest, stopped at full scale; what is no number becomes 0.

    Widths of 16 bits and less get dither, from the first frame on that does not fit the width exactly. So what came
   from a file of the same width and was not changed keeps its bits, and silence before the music stays silent. */
class SampleQuantiser
{
public:
    /** @param wantedBits 8, 16, 24 or 32 */
    SampleQuantiser (int wantedBits, int channelCount) noexcept;

    /** One frame: a sample of each channel, interleaved. The results stand in the upper bits of 32. */
    void convert (const float* frame, int* result) noexcept;

private:
    [[nodiscard]] bool fits (const float* frame) const noexcept;

    const int channels;
    const double scale;
    const int shift;
    const bool mayDither;
    bool dithering = false;
    TpdfDither dither;
};
