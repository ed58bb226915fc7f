#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

/** Passes a latency on to the host, by one thread at a time.

    The framework keeps the figure in a plain variable and tells the host in the same call, in some formats before that
    call returns; a host may then prepare from inside it, or from another thread that it waits for. So there is no lock
    around the call, only one thread whose turn it is. */
class LatencyReport
{
public:
    /** @param tellHost works out the latency as it is now, stores it and tells the host
        @param longestWait how long one thread waits for another's turn: a host may let one wait for the other */
    explicit LatencyReport (std::function<void()> tellHost,
                            std::chrono::milliseconds longestWait = std::chrono::seconds (2));

    /** Notes that there is something to tell. Any thread; real-time safe. */
    void request() noexcept { requested = true; }

    /** Tells what was requested up to now. When it returns, that has been told, also where another thread was at it;
       after the longest wait it is left to that thread. Any thread but the audio thread; may come from inside
       `tellHost`. */
    void tell();

private:
    const std::function<void()> tellHost;
    const std::chrono::milliseconds longestWait;
    std::atomic<bool> requested { false };
    std::mutex lock;
    std::condition_variable turnEnded;
    std::thread::id teller;
};
