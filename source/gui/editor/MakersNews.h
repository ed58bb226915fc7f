#pragma once

#include "core/model/InterfaceState.h"
#include "services/WebAddresses.h"
#include "services/WebRequest.h"

#include <juce_events/juce_events.h>

#include <functional>
#include <future>
#include <memory>

/** Asks the maker's server, in the background, for a newer version and for a new product: once in the life of an
    instance, whichever of its windows comes first. What it hears stands in the interface's state.

    The window may close while a request is under way: it is called off, and destroying this object takes no longer than
    its ending does. It is not asked again. Message thread. */
class MakersNews
{
public:
    /** @param interfaceState outlives this object
        @param onAnswer called on the message thread after an answer, or none, has come */
    MakersNews (InterfaceState& interfaceState, const WebHosts& hosts, std::function<void()> onAnswer);
    ~MakersNews();

    /** Starts what this instance has not started yet. Where the hosts are placeholders, nobody is asked. */
    void askOnce();

    /** Whether this object itself has asked, answered or not. */
    [[nodiscard]] bool hasAsked() const noexcept { return updateQuestion != nullptr || newsQuestion != nullptr; }

private:
    struct Question
    {
        explicit Question (const juce::URL& address) : request (address) {}

        WebRequest request;
        std::future<void> end;
    };

    [[nodiscard]] std::function<void (bool)> writeInto (std::atomic<bool>& result, std::atomic<bool>* answered);

    InterfaceState& state;
    const WebHosts hosts;
    const std::function<void()> tell;
    std::unique_ptr<Question> updateQuestion, newsQuestion;

    JUCE_DECLARE_WEAK_REFERENCEABLE (MakersNews)
    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (MakersNews)
};
