#pragma once

#include "dsp/threads/BandMessage.h"

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <vector>

/** What a ParameterWorker does with its messages. All calls come from the worker's thread. */
class IMessageHandler
{
public:
    virtual ~IMessageHandler() = default;

    /** Before the first message of a batch. */
    virtual void beginBatch() = 0;

    /** One message. What this or endBatch() throws is written to the standard error stream, and the loop goes on. */
    virtual void handle (const QueuedMessage& queued) = 0;

    /** After the last message of a batch, also of one cut short. */
    virtual void endBatch() = 0;
};

/** One queue of messages and the loop that works it off in batches.

    Hand-over: any thread appends to `incoming` under the mutex; the worker swaps it with a list of its own and walks
    that without the lock. Both lists and the strings in their slots are reserved once, so that posting never touches
    the heap. Whoever drops messages raises the drop counter under the same mutex; the worker looks at it before each
    message. A message that was dropped, cut off or did not fit leaves a mark (takeUpdatesLost), so that the owner can
    send the current values again: an update may lag, the last value is never lost. */
class ParameterWorker
{
public:
    explicit ParameterWorker (IMessageHandler& handler);

    ParameterWorker (const ParameterWorker&) = delete;
    ParameterWorker& operator= (const ParameterWorker&) = delete;

    /** The body of the worker's thread; returns after requestStop(). */
    void run();

    /** Ends the loop: the rest of a running batch is skipped. Any thread. */
    void requestStop();

    /** Appends messages and wakes the worker: calls `append` with a function that gives the next slot to fill in, also
        where none is left. That happens under the mutex, so what `append` reads and notes is in the order of the queue;
        it must be short, take no lock and allocate nothing. Slots hold ids of up to 32 characters without the heap. Any
        thread; real-time safe. */
    template <typename Append>
    void post (Append&& append) noexcept
    {
        {
            const std::lock_guard lock (mutex);
            append ([this]() noexcept -> QueuedMessage& { return nextSlot(); });
        }

        wake.notify_one();
    }

    /** Drops everything that waits, also the rest of a running batch, and sets both counters to 0; then calls `note`
        under the same mutex. A mark of an earlier loss goes as well.
        @returns whether anything was, or may have been, lost */
    template <typename Note>
    bool clear (Note&& note)
    {
        const std::lock_guard lock (mutex);
        const auto lost = incomingCount > 0 || busy || updatesLost.exchange (false);
        drop();
        note();
        return lost;
    }

    bool clear()
    {
        return clear ([] {});
    }

    /** Calls `note` under the mutex, and so in the order of the queue. */
    template <typename Note>
    void inOrder (Note&& note) const
    {
        const std::lock_guard lock (mutex);
        note();
    }

    /** Drops everything that waits if more than `limit` messages are posted and not processed, and marks the loss. */
    void dropAbove (int limit);

    /** True while a batch is being worked off. Any thread. */
    [[nodiscard]] bool isBusy() const noexcept { return busy.load (std::memory_order_acquire); }

    /** Whether everything that was posted is handled, as far as can be told without the mutex. Any thread; real-time
        safe. */
    [[nodiscard]] bool hasHandledAll() const noexcept { return ! busy && posted == 0 && ! updatesLost; }

    /** True when nothing waits and no batch runs. Any thread but the audio thread. */
    [[nodiscard]] bool isIdle() const;

    /** Whether updates were lost since the last call, once the worker is idle; then the mark is cleared. */
    [[nodiscard]] bool takeUpdatesLost();

    /** While set, a running batch skips the messages that it has not begun. Audio thread; real-time safe. */
    void setSkip (bool shouldSkip) noexcept { stopRequested.store (shouldSkip, std::memory_order_relaxed); }

    /** Messages posted and processed since both were last equal, or dropped. */
    [[nodiscard]] int postedCount() const noexcept { return posted.load (std::memory_order_relaxed); }
    [[nodiscard]] int processedCount() const noexcept { return processed.load (std::memory_order_relaxed); }

    static constexpr std::size_t capacity = 256;

private:
    using Batch = std::vector<QueuedMessage>;

    [[nodiscard]] static Batch reservedBatch (std::size_t size);

    /** Under the mutex. */
    [[nodiscard]] QueuedMessage& nextSlot() noexcept;
    void drop() noexcept;

    [[nodiscard]] bool takeBatch();
    void runBatch();
    [[nodiscard]] bool beginMessage();

    IMessageHandler& handler;

    std::atomic<bool> paused { false };
    std::atomic<bool> stopRequested { false };
    std::atomic<bool> drainRequested { false };
    std::atomic<bool> busy { false };
    std::atomic<bool> closing { false };
    std::atomic<bool> updatesLost { false };
    std::atomic<int> posted { 0 };
    std::atomic<int> processed { 0 };

    mutable std::mutex mutex;
    std::condition_variable wake;
    std::condition_variable drained;

    /** One slot more than is ever handed to the worker: what does not fit is written there. */
    Batch incoming = reservedBatch (capacity + 1);
    std::size_t incomingCount = 0;
    int dropCount = 0;

    Batch running = reservedBatch (capacity + 1);
    std::size_t runningCount = 0;
    int dropCountAtBatch = 0;
};
