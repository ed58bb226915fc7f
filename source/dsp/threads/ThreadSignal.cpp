#include "dsp/threads/ThreadSignal.h"

ThreadSignal::ThreadSignal (std::function<void()> workToUse) : work (std::move (workToUse)) {}

void ThreadSignal::run()
{
    while (takesWork())
    {
        work();
        endsWork();
    }
}

bool ThreadSignal::takesWork()
{
    std::unique_lock guard (lock);
    wakeUp.wait (guard, [this] { return workPending.load() || exitRequested.load(); });
    running = ! exitRequested;
    workPending = false;
    guard.unlock();

    if (! running)
        done.notify_all();

    return running;
}

void ThreadSignal::endsWork()
{
    {
        const std::lock_guard guard (lock);
        running = false;
    }

    // Told without the lock, or who wakes from it would have to wait for it.
    done.notify_all();
}

void ThreadSignal::requestExit()
{
    {
        const std::lock_guard guard (lock);
        exitRequested = true;
    }

    wakeUp.notify_all();
    done.notify_all();
}

void ThreadSignal::wake()
{
    {
        const std::lock_guard guard (lock);
        workPending = true;
    }

    wakeUp.notify_one();
}

void ThreadSignal::wakeFromAudioThread (bool atOnce) noexcept
{
    workPending = true;

    if (atOnce)
        wakeUp.notify_one();
}

void ThreadSignal::waitUntilIdle()
{
    std::unique_lock guard (lock);
    done.wait (guard, [this] { return exitRequested.load() || (! workPending && ! running); });
}
