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

    if (running)
        ++begunCount;

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
        ++endedCount;
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

void ThreadSignal::runPass()
{
    std::unique_lock guard (lock);

    // Not by whether work is pending: the audio thread may leave some that nobody wakes the thread for.
    const auto begunBefore = begunCount;
    workPending = true;
    wakeUp.notify_one();
    done.wait (guard,
               [this, begunBefore] { return exitRequested.load() || static_cast<int> (endedCount - begunBefore) > 0; });
}
