#pragma once

namespace juce
{
// The framework's own plug-in thread calls this; no header declares it.
bool dispatchNextMessageOnSystemQueue (bool returnIfNoPendingMessages);
} // namespace juce

namespace Messages
{
/** Delivers what was posted to the message thread, and what that posts in turn. On the message thread. */
inline void deliver()
{
    while (juce::dispatchNextMessageOnSystemQueue (true))
    {
    }
}
} // namespace Messages
