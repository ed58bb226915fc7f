#pragma once

struct RateFilterTable;

/** The FIR part of rate conversion, which makes or reads only the samples that are not dropped or zero. On a given
    machine the results do not depend, to the last bit, on the count per call or the number of channels. Real-time safe;
    pointer arrays hold one entry per channel. */
namespace PolyphaseKernel
{
/** Decimates. output[i * channelCount + c] takes the samples up to input[c][i * factor], with `feedForwardCount` - 1
    earlier ones before input[c]. */
void decimatingSums (const RateFilterTable& table,
                     const double* const* input,
                     double* output,
                     int channelCount,
                     int outputCount) noexcept;

/** Interpolates. Each input value is given factor times in a row, with (branchTapCount - 1) * factor earlier ones
    before held[c], and SampleLine::readableAround readable doubles behind; inputCount * factor outputs are written. */
void interpolatingSums (const RateFilterTable& table,
                        const double* const* held,
                        double* const* output,
                        int channelCount,
                        int inputCount) noexcept;
} // namespace PolyphaseKernel
