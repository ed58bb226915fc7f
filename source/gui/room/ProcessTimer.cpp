#include "gui/room/ProcessTimer.h"

#include <algorithm>

namespace orvik
{
using Clock = std::chrono::steady_clock;

ProcessTimer::ProcessTimer (std::function<void()> callbackToUse) : callback (std::move (callbackToUse)) {}

ProcessTimer::~ProcessTimer()
{
    stop();
}

void ProcessTimer::start (std::chrono::milliseconds interval)
{
    stop();
    exitRequested = false;
    thread = std::thread ([this, interval] { run (interval); });
}

void ProcessTimer::stop()
{
    {
        const std::scoped_lock guard (mutex);
        exitRequested = true;
    }

    wake.notify_all();

    if (thread.joinable())
        thread.join();
}

void ProcessTimer::run (std::chrono::milliseconds interval)
{
    auto next = Clock::now() + interval;
    std::unique_lock guard (mutex);

    while (! wake.wait_until (guard, next, [this] { return exitRequested; }))
    {
        next = std::max (next + interval, Clock::now());
        guard.unlock();
        callback();
        guard.lock();
    }
}
} // namespace orvik
