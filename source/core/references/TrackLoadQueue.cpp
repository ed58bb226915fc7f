#include "core/references/TrackLoadQueue.h"

#include <utility>

TrackLoadQueue::TrackLoadQueue (Handler handlerToUse) : handler (std::move (handlerToUse)), thread ([this] { run(); })
{
}

TrackLoadQueue::~TrackLoadQueue()
{
    stop();
}

void TrackLoadQueue::push (ReferenceTrackRequest request)
{
    {
        const std::scoped_lock lock (mutex);
        pending.push_back (std::move (request));
    }

    workArrived.notify_one();
}

void TrackLoadQueue::requestFlush()
{
    const std::scoped_lock lock (mutex);
    pending.clear();

    // An idle thread has nothing to drop.
    if (busy)
        flushRequested = true;
}

void TrackLoadQueue::flush()
{
    requestFlush();
    std::unique_lock lock (mutex);
    flushed.wait (lock, [this] { return ! flushRequested || stopRequested; });
}

void TrackLoadQueue::setPaused (bool shouldPause)
{
    {
        const std::scoped_lock lock (mutex);
        paused = shouldPause;
    }

    workArrived.notify_one();
}

void TrackLoadQueue::requestStop()
{
    {
        // Under the lock, or the thread could look before and sleep after.
        const std::scoped_lock lock (mutex);
        stopRequested = true;
    }

    workArrived.notify_one();
    flushed.notify_all();
}

void TrackLoadQueue::stop()
{
    requestStop();

    if (thread.joinable())
        thread.join();
}

bool TrackLoadQueue::isBusy() const
{
    const std::scoped_lock lock (mutex);
    return busy || ! pending.empty();
}

void TrackLoadQueue::run()
{
    while (takeBatch())
        serveBatch();
}

bool TrackLoadQueue::takeBatch()
{
    std::unique_lock lock (mutex);
    busy = false;

    // A flush that came in the last moment of the batch before.
    if (flushRequested.exchange (false))
        flushed.notify_all();

    workArrived.wait (lock, [this] { return stopRequested || (! paused && ! pending.empty()); });

    if (stopRequested)
        return false;

    busy = true;
    working.swap (pending);
    return true;
}

void TrackLoadQueue::serveBatch()
{
    for (auto& request : working)
    {
        if (flushRequested || stopRequested)
            break;

        handler (std::move (request));
    }

    working.clear();
}
