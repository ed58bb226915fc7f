#pragma once

struct RateFilterTable;

/** The three loops that rate conversion spends its time in. All are real-time safe, and give the same bits whatever the
    vector level, the count per call, or the number of channels. Pointer arrays hold one entry per channel. */
namespace RateFilterKernel
{
/** The decimating FIR. output[i * channelCount + c] takes the samples up to input[c][i * factor], with
    `feedForwardCount` - 1 earlier ones before input[c]. */
void decimatingSums (const RateFilterTable& table,
                     const double* const* input,
                     double* output,
                     int channelCount,
                     int outputCount) noexcept;

/** The recursion at the reduced rate, in place on channels that lie interleaved: maxOrder earlier frames of results
    lie before `frames`. Terms are taken off from the oldest to the newest. */
void recursion (const RateFilterTable& table, double* frames, int channelCount, int frameCount) noexcept;

/** The interpolating FIR over input held for factor samples each: writes inputCount * factor outputs per channel.
    (branchTapCount - 1) * factor earlier samples lie before held[c], which starts at a multiple of factor. */
void interpolatingSums (const RateFilterTable& table,
                        const double* const* held,
                        double* const* output,
                        int channelCount,
                        int inputCount) noexcept;
} // namespace RateFilterKernel
