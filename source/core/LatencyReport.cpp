#include "core/LatencyReport.h"

#include <utility>

LatencyReport::LatencyReport (std::function<void()> tellHostToUse, std::chrono::milliseconds longestWaitToUse)
    : tellHost (std::move (tellHostToUse)), longestWait (longestWaitToUse)
{
}

void LatencyReport::tell()
{
    const auto self = std::this_thread::get_id();
    std::unique_lock held (lock);
    const auto mayTell = [&] { return teller == std::thread::id {} || teller == self; };

    if (! turnEnded.wait_for (held, longestWait, mayTell))
        return;

    const auto outer = std::exchange (teller, self);

    while (requested.exchange (false))
    {
        held.unlock();
        tellHost();
        held.lock();
    }

    teller = outer;
    held.unlock();
    turnEnded.notify_all();
}
