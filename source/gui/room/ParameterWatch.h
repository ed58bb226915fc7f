#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

#include <atomic>
#include <functional>
#include <memory>
#include <vector>

/** Tells the message thread which parameters have changed, whoever changed them.

    A change on the message thread is told at its next turn. A change on any other thread, which may be the audio
   thread, only leaves a mark: serve() finds it, and who owns the watch calls that regularly. Several changes of a
   parameter may be told as one; its value is read when it is told. Construct and destroy on the message thread. */
class ParameterWatch final : private juce::AsyncUpdater
{
public:
    /** @param changed gets the index of an id in `ids`, on the message thread */
    ParameterWatch (juce::AudioProcessorValueTreeState& tree,
                    const juce::StringArray& ids,
                    std::function<void (int index)> changed);
    ~ParameterWatch() override;

    /** Has marks of other threads told. Any thread but the audio thread. */
    void serve();

private:
    class Slot;

    void handleAsyncUpdate() override;

    const std::function<void (int)> changed;
    std::atomic<bool> anyMarked { false };
    std::vector<std::unique_ptr<Slot>> slots; ///< last: they listen
};
