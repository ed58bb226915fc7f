#pragma once

#include "core/parameters/Settings.h"

#include <juce_events/juce_events.h>

#include <array>
#include <atomic>
#include <functional>

/** Takes changes of a band's parameters from any thread to the message thread.

    A host may automate a parameter many times in a block, and the message queue is no place for that: for each kind the
    latest value waits here, and one message at a time fetches what waits. Made and destroyed on the message thread;
   once it is gone, a message that is still under way finds nobody. */
class BandInbox
{
public:
    using Kind = Settings::Parameter;

    /** The kinds that a band's control wants to hear of; its frequency it is told by the room. */
    static constexpr std::array kinds { Kind::q, Kind::solo, Kind::bypass, Kind::highShelf, Kind::midSide, Kind::gain };

    /** @param taker gets each change on the message thread */
    BandInbox (int band, std::function<void (Kind kind, float value)> taker);

    /** Which of the band's kinds a parameter is; its place in `kinds`, or -1. Any thread. */
    [[nodiscard]] int indexOf (const juce::String& parameterId) const noexcept;

    /** Leaves a value. Any thread. @param index from indexOf() */
    void post (int index, float value);

private:
    void serve();

    const std::function<void (Kind, float)> take;
    std::array<juce::String, kinds.size()> ids;
    std::array<std::atomic<float>, kinds.size()> values {};

    /** One bit for each kind that waits. */
    std::atomic<unsigned> waiting { 0 };

    // The reference is made once, here; other threads only copy it.
    JUCE_DECLARE_WEAK_REFERENCEABLE (BandInbox)
    const juce::WeakReference<BandInbox> self { this };
};
