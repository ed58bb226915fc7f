#include "dsp/RateFilterKernel.h"

#include "dsp/RateFilterTable.h"

#include <cstddef>

namespace RateFilterKernel
{
void decimatingSums (const RateFilterTable& table,
                     const double* const* input,
                     double* output,
                     int channelCount,
                     int outputCount) noexcept
{
    const auto count = table.feedForwardCount;

    for (int i = 0; i < outputCount; ++i)
    {
        for (int c = 0; c < channelCount; ++c)
        {
            const auto* oldest = input[c] + i * table.factor - (count - 1);
            double sum = 0.0;

            for (int k = 0; k < count; ++k)
                sum += table.decimating[static_cast<std::size_t> (k)] * oldest[k];

            output[i * channelCount + c] = sum;
        }
    }
}

void recursion (const RateFilterTable& table, double* frames, int channelCount, int frameCount) noexcept
{
    for (int i = 0; i < frameCount * channelCount; ++i)
        for (int k = table.order; k > 0; --k)
            frames[i] -= table.recursive[static_cast<std::size_t> (k)] * frames[i - k * channelCount];
}

void interpolatingSums (const RateFilterTable& table,
                        const double* const* held,
                        double* const* output,
                        int channelCount,
                        int inputCount) noexcept
{
    for (int c = 0; c < channelCount; ++c)
    {
        for (int n = 0; n < inputCount * table.factor; ++n)
        {
            double sum = 0.0;

            for (int i = 0; i < table.branchTapCount; ++i)
                sum +=
                    table.interpolating[static_cast<std::size_t> (i * RateFilterTable::branchWidth + n % table.factor)]
                    * held[c][n - i * table.factor];

            output[c][n] = sum;
        }
    }
}
} // namespace RateFilterKernel
