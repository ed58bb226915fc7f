#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>

/** A thread that sleeps until there is work, does it, and sleeps again.

    Whoever wakes it sets `workPending`; several wake-ups before it has come round count as one. Another thread can wait
    until it has done what was pending. */
class ThreadSignal
{
public:
    /** @param work one pass, on the signal's own thread */
    explicit ThreadSignal (std::function<void()> work);

    ThreadSignal (const ThreadSignal&) = delete;
    ThreadSignal& operator= (const ThreadSignal&) = delete;

    /** The body of the thread; returns after requestExit(). */
    void run();

    /** Ends run() after the pass under way, and lets go whoever waits. Any thread but the audio thread. */
    void requestExit();

    /** Any thread but the audio thread. */
    void wake();

    /** Takes no lock: a notification that just misses the thread as it falls asleep is made good by the next block's.
        Real-time safe.

        @param atOnce if not, the work is pending, and the thread sleeps on until somebody wakes it at once: to wake a
                      thread is the dearest thing that the audio thread does here */
    void wakeFromAudioThread (bool atOnce) noexcept;

    /** Waits until nothing is pending and no pass runs, or until the thread is to end. Only where nobody uses
        wakeFromAudioThread(): what that leaves pending may stay so. Any thread but the audio thread and the signal's
        own. */
    void waitUntilIdle();

    /** Has a pass made that begins from now on, and waits for its end, or until the thread is to end. What becomes
        pending meanwhile is not waited for. Any thread but the audio thread and the signal's own. */
    void runPass();

    /** Any thread; real-time safe. */
    [[nodiscard]] bool isExitRequested() const noexcept { return exitRequested.load (std::memory_order_acquire); }

private:
    /** Sleeps until there is work.
        @returns false when the thread is to end */
    [[nodiscard]] bool takesWork();
    void endsWork();

    const std::function<void()> work;
    std::mutex lock;
    std::condition_variable wakeUp;
    std::condition_variable done;
    std::atomic<bool> exitRequested { false };
    std::atomic<bool> workPending { false };
    bool running = false;

    /** Of all passes, under the lock; a pass that runs is begun and not ended. */
    unsigned begunCount = 0;
    unsigned endedCount = 0;
};
