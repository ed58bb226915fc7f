#include "core/MessageThreadPause.h"

/** The message that holds the thread it arrives on. Outlives the pause if it arrives after the waiting was given up. */
class MessageThreadPause::Stop final : public juce::CallbackMessage
{
public:
    void messageCallback() override
    {
        arrived.signal();
        leave.wait();
    }

    juce::WaitableEvent arrived;
    juce::WaitableEvent leave { true };
};

MessageThreadPause::MessageThreadPause (bool needed)
{
    const auto* messages = juce::MessageManager::getInstanceWithoutCreating();

    if (! needed || messages == nullptr || messages->currentThreadHasLockedMessageManager())
        return;

    stop = *new Stop();

    if (stop->post())
        stop->arrived.wait (longestWaitMilliseconds);
}

MessageThreadPause::~MessageThreadPause()
{
    if (stop != nullptr)
        stop->leave.signal();
}
