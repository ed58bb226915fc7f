#include "core/session/ReferenceTrackRequest.h"

#include <algorithm>
#include <atomic>

juce::int64 TrackLoop::makeId()
{
    static std::atomic<juce::int64> last { 0 };
    auto previous = last.load();
    juce::int64 next;

    do
        next = std::max (juce::Time::currentTimeMillis(), previous + 1);
    while (! last.compare_exchange_weak (previous, next));

    return next;
}
