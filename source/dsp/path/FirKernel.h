#pragma once

/** One filter and the channels that it runs over, for convolve(). */
struct FirJob
{
    const double* taps = nullptr;
    int tapCount = 0;

    /** The taps read the same from both ends, bit for bit, which lets a kernel fold them. */
    bool symmetric = false;

    /** Newest samples of each channel, with `tapCount` - 1 earlier ones before them, and with
        SampleLine::readableAround readable doubles on either side of all these. */
    const double* const* input = nullptr;
    double* const* output = nullptr;
    int channelCount = 0;
    int sampleCount = 0;
};

/** Direct-form convolution: output[i] is the sum of taps[k] * input[i - k].

    Each output's sum has one order on a given machine, wherever the sample lies in a block, so that the result does
    not depend, to the last bit, on how a signal is cut into blocks; and a unit impulse gives the delayed input itself.
    Exactly `sampleCount` outputs are written; input and output must not overlap. Real-time safe. */
void convolve (const FirJob& job) noexcept;
