#pragma once

#include <atomic>

/** Lets several threads work out the same thing from values that each of them may change: whoever ends last has seen
    every change.

    A thread that has changed a value raises the count. Whoever works from values looks at the count afterwards, and
    works again if it has moved meanwhile: either the change is seen there, or what was worked out is in place before
    the other thread begins. Any thread; real-time safe as far as the work is. */
class ChangeCount
{
public:
    /** After a value has been changed, and before what follows from it. */
    void raise() noexcept { count.fetch_add (1, std::memory_order_acq_rel); }

    /** Calls `work`, and again as long as the count has moved during it. */
    template <typename Work>
    void untilSettled (Work work)
    {
        unsigned seen;

        do
        {
            seen = count.load (std::memory_order_acquire);
            work();
        } while (count.fetch_add (0, std::memory_order_acq_rel) != seen);
    }

private:
    std::atomic<unsigned> count { 0 };
};
