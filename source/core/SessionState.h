#pragma once

#include "core/PluginModel.h"

#include <juce_audio_processors/juce_audio_processors.h>

#include <mutex>

/** What a host keeps of an instance: one block with the parameter tree as XML text in the framework's binary wrapping.

    Both calls run on a thread of the host's choosing. The session lock keeps two of them from meeting. */
class SessionState
{
public:
    SessionState (PluginModel& model, juce::AudioProcessorValueTreeState& parameters);

    void write (juce::MemoryBlock& destination);

    /** Takes a block over. One that does not parse is ignored, but the notification is sent all the same. */
    void read (const void* data, int size);

private:
    void storeBandGains() noexcept;

    PluginModel& model;
    juce::AudioProcessorValueTreeState& parameters;
    std::mutex sessionLock;
};
