#pragma once

#include "core/session/ReferenceTrackRequest.h"

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

/** A thread that serves requests for tracks one at a time, in order of arrival.

    The handler runs on that thread. Requests that come while it works make the next batch. What the handler throws is
    not caught. */
class TrackLoadQueue
{
public:
    using Handler = std::function<void (ReferenceTrackRequest)>;

    /** Starts the thread. */
    explicit TrackLoadQueue (Handler handler);

    /** As stop(). */
    ~TrackLoadQueue();

    TrackLoadQueue (const TrackLoadQueue&) = delete;
    TrackLoadQueue& operator= (const TrackLoadQueue&) = delete;

    /** Adds a request. Any thread. */
    void push (ReferenceTrackRequest request);

    /** Drops what has not been served yet, but for the request that the thread is at. Any thread. */
    void requestFlush();

    /** The same, and waits until the thread has taken note, which is after that request. Not the queue's own thread. */
    void flush();

    /** While true, nothing new is begun. Any thread. */
    void setPaused (bool shouldPause);

    /** Asks the thread to end after the request that it is at. Any thread. */
    void requestStop();

    /** Asks the thread to end, and waits for it. What was not served is dropped. The thread that owns the queue. */
    void stop();

    /** Whether something waits or is being served. Any thread. */
    [[nodiscard]] bool isBusy() const;

private:
    void run();
    [[nodiscard]] bool takeBatch();
    void serveBatch();

    const Handler handler;
    mutable std::mutex mutex;
    std::condition_variable workArrived;
    std::condition_variable flushed;
    std::vector<ReferenceTrackRequest> pending;
    bool paused = false;
    bool busy = false;
    std::atomic<bool> stopRequested { false };
    std::atomic<bool> flushRequested { false };

    /** The thread's own. */
    std::vector<ReferenceTrackRequest> working;

    /** Last, since it uses all of them. */
    std::thread thread;
};
