#include "dsp/threads/ParameterWorker.h"

#include <exception>
#include <iostream>
#include <utility>

namespace
{
// "band_frequency_0" is one character longer than a string holds without the heap.
constexpr std::size_t reservedIdLength = 32;

/** Calls a function of the handler's. What escapes it is written out, and the loop goes on. */
template <typename Function>
void guarded (Function&& function)
{
    try
    {
        function();
    }
    catch (const std::exception& exception)
    {
        std::cerr << "Standard exception: " << exception.what() << std::endl;
    }
}
} // namespace

ParameterWorker::ParameterWorker (IMessageHandler& handlerToUse) : handler (handlerToUse) {}

ParameterWorker::Batch ParameterWorker::reservedBatch (std::size_t size)
{
    Batch batch (size);

    for (auto& queued : batch)
        queued.message.parameterId.reserve (reservedIdLength);

    return batch;
}

void ParameterWorker::run()
{
    while (takeBatch())
        runBatch();
}

bool ParameterWorker::takeBatch()
{
    std::unique_lock lock (mutex);
    busy.store (false, std::memory_order_release);

    if (processed == posted)
    {
        posted = 0;
        processed = 0;
    }

    while (! closing)
    {
        wake.wait (lock, [this] { return incomingCount > 0 || drainRequested || closing; });
        wake.wait (lock, [this] { return ! paused || closing; });

        if (closing)
            break;

        if (incomingCount > 0)
        {
            busy.store (true, std::memory_order_release);
            std::swap (incoming, running);
            runningCount = std::exchange (incomingCount, 0);
            dropCountAtBatch = dropCount;
            return true;
        }

        drainRequested = false;
        drained.notify_all();
    }

    return false;
}

void ParameterWorker::runBatch()
{
    handler.beginBatch();

    for (std::size_t index = 0; index < runningCount; ++index)
    {
        if (drainRequested.exchange (false))
        {
            updatesLost = true;
            drained.notify_all();
            break;
        }

        // The flag stands for a stop and for a skip. It ends the loop only together with `closing`, in takeBatch().
        if (stopRequested.load (std::memory_order_relaxed))
        {
            updatesLost = true;
            continue;
        }

        if (! beginMessage())
            break;

        guarded ([&] { handler.handle (running[index]); });
    }

    guarded ([this] { handler.endBatch(); });
}

bool ParameterWorker::beginMessage()
{
    const std::lock_guard lock (mutex);

    if (dropCount != dropCountAtBatch)
        return false;

    ++processed;
    return true;
}

void ParameterWorker::requestStop()
{
    {
        const std::lock_guard lock (mutex);
        closing = true;
        stopRequested = true;
    }

    wake.notify_all();
}

QueuedMessage& ParameterWorker::nextSlot() noexcept
{
    if (incomingCount == capacity)
    {
        updatesLost = true;
        return incoming[capacity];
    }

    ++posted;
    return incoming[incomingCount++];
}

void ParameterWorker::drop() noexcept
{
    incomingCount = 0;
    ++dropCount;
    posted = 0;
    processed = 0;
}

void ParameterWorker::dropAbove (int limit)
{
    const std::lock_guard lock (mutex);

    if (posted - processed <= limit)
        return;

    drop();
    updatesLost = true;
}

bool ParameterWorker::isIdle() const
{
    const std::lock_guard lock (mutex);
    return incomingCount == 0 && ! busy;
}

bool ParameterWorker::takeUpdatesLost()
{
    return isIdle() && updatesLost.exchange (false);
}
