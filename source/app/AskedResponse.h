#pragma once

#include "app/HeardResponse.h"
#include "core/PluginProcessor.h"

/** What the engine means to do to each frequency: the sums of its bands' curves, to which its filters are fitted. Needs
    a processor whose designs are finished and that has no soloed band. One thread. */
class AskedResponse
{
public:
    explicit AskedResponse (VelmoraAudioProcessor& processorToRead) : processor (processorToRead) {}

    /** Factor at a frequency in Hz. Cuts that add up to more than everything make it negative. */
    [[nodiscard]] double at (HeardResponse::Signal signal, double frequencyHz) const;

    /** Whether a band does anything to a signal. */
    [[nodiscard]] bool acts (int band, HeardResponse::Signal signal) const;

private:
    [[nodiscard]] double pathAt (BlockProcessorMode mode, double frequencyHz) const;

    VelmoraAudioProcessor& processor;
};
