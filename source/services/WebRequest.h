#pragma once

#include <juce_core/juce_core.h>

#include <atomic>
#include <optional>

/** One GET for a short text, which another thread can call off. Used once. */
class WebRequest
{
public:
    /** Asks nobody yet. */
    explicit WebRequest (const juce::URL& address);

    /** An answer longer than this counts as none: nobody who means us sends as much. */
    static constexpr int longestAnswer = 4 << 20;

    /** Waits for the whole answer. Empty where the address is a placeholder, where nobody answers, where the answer is
        a refusal (a status that is no success) or too long, and after a cancel. Any thread but one. */
    [[nodiscard]] std::optional<juce::String> read();

    /** Makes read() return within a second, from whatever it waits for but a name that is being looked up; before
        read(), keeps it from asking. Any thread. */
    void cancel();

private:
    [[nodiscard]] bool answered();

    const bool placeholder;
    juce::WebInputStream stream;
    std::atomic<bool> cancelled { false };

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (WebRequest)
};
