#include "dsp/ThreadSignal.h"

ThreadSignal::ThreadSignal (std::function<void()> workToUse) : work (std::move (workToUse)) {}

void ThreadSignal::run()
{
    std::unique_lock guard (lock);

    while (true)
    {
        wakeUp.wait (guard, [this] { return workPending.load() || exitRequested.load(); });

        if (exitRequested)
            break;

        workPending = false;
        running = true;
        guard.unlock();
        work();
        guard.lock();
        running = false;
        done.notify_all();
    }

    workPending = false;
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

void ThreadSignal::wakeFromAudioThread() noexcept
{
    workPending = true;
    wakeUp.notify_one();
}

void ThreadSignal::waitUntilIdle()
{
    std::unique_lock guard (lock);
    done.wait (guard, [this] { return exitRequested.load() || (! workPending && ! running); });
}
