#pragma once

#include "BenchSignal.h"
#include "support/PluginRig.h"

#include <string>

/** Our processor with ten bands, as a host's audio thread calls it. */
class OwnEqualiser
{
public:
    enum class Layout
    {
        mono,
        stereo,
        midSide,
        both
    };

    struct Setup
    {
        double sampleRate = 48000.0;
        FilterMode mode = FilterMode::mix;
        FilterPhase phase = FilterPhase::linear;
        Layout layout = Layout::stereo;
    };

    [[nodiscard]] static std::string nameOf (Layout layout);

    /** Sets everything up and waits until every filter is designed and in use. */
    OwnEqualiser (const Setup& setup, int blockSize);

    /** Processes the whole signal once. */
    void process (const BenchSignal& signal);

private:
    void setBands (Layout layout);

    PluginRig rig;
    const int channelCount;
    const int blockSize;
    juce::AudioBuffer<float> block;
    juce::MidiBuffer noMidi;
};
