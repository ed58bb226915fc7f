#pragma once

#include <juce_events/juce_events.h>

/** Keeps the framework's message thread out of callbacks, its timers' among them, for as long as it exists.

    A timer that is stopped from another thread may still be in its callback, and what it calls must outlive that.
    On the message thread itself, and where the wrapper holds that thread already, there is nothing to do. */
class MessageThreadPause
{
public:
    /** Waits until no callback is under way. Any thread but the audio thread. Gives up after
        `longestWaitMilliseconds`: a host that lets its message thread wait for this one must not hang.
        @param needed whether there is a message thread that calls back; if not, nothing is done */
    explicit MessageThreadPause (bool needed);
    ~MessageThreadPause();

    static constexpr int longestWaitMilliseconds = 2000;

    MessageThreadPause (const MessageThreadPause&) = delete;
    MessageThreadPause& operator= (const MessageThreadPause&) = delete;

private:
    class Stop;
    juce::ReferenceCountedObjectPtr<Stop> stop;
};
