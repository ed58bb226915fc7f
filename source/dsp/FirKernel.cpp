#include "dsp/FirKernel.h"

void convolve (const FirJob& job) noexcept
{
    for (int c = 0; c < job.channelCount; ++c)
    {
        for (int i = 0; i < job.sampleCount; ++i)
        {
            double sum = 0.0;

            for (int k = 0; k < job.tapCount; ++k)
                sum += job.taps[k] * job.input[c][i - k];

            job.output[c][i] = sum;
        }
    }
}
