#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace orvik
{
/** Calls a function again and again on a thread of its own, for work that would hold up the message thread.

    The interval counts from one call to the next: a long call shortens the wait behind it, and one that takes longer
    than the interval is followed by the next at once. What was missed is not made up for. */
class ProcessTimer
{
public:
    explicit ProcessTimer (std::function<void()> callback);
    ~ProcessTimer();

    ProcessTimer (const ProcessTimer&) = delete;
    ProcessTimer& operator= (const ProcessTimer&) = delete;

    /** Starts, or starts anew with another interval. Not from the callback. */
    void start (std::chrono::milliseconds interval);

    /** Waits for a call under way and ends. Not from the callback. */
    void stop();

private:
    void run (std::chrono::milliseconds interval);

    const std::function<void()> callback;
    std::mutex mutex;
    std::condition_variable wake;
    bool exitRequested = false;
    std::thread thread;
};
} // namespace orvik
