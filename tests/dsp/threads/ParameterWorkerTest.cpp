#include "dsp/threads/ParameterWorker.h"

#include "support/RealTimeGuard.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <semaphore>
#include <stdexcept>
#include <thread>

namespace
{
using testing::ElementsAre;
using testing::HasSubstr;

/** Records what it is given. While the gate is closed, each message waits in it until the test lets it through. */
class RecordingHandler final : public IMessageHandler
{
public:
    void beginBatch() override { ++batchesBegun; }

    void handle (const QueuedMessage& queued) override
    {
        values.push_back (queued.message.value);
        ids.push_back (queued.message.parameterId);
        marks.push_back (queued.gainScaleApplied);

        if (gateClosed)
        {
            entered.release();
            mayLeave.acquire();
        }

        if (queued.message.value == refusedValue)
            throw std::runtime_error ("refused");
    }

    void endBatch() override
    {
        ++batchesEnded;

        if (batchesEnded == refusedBatch)
            throw std::runtime_error ("refused batch");
    }

    /** Written by the worker; the test reads them after waitUntilIdle() or the worker's end. */
    std::vector<float> values;
    std::vector<std::string> ids;
    std::vector<bool> marks;
    int batchesBegun = 0;
    int batchesEnded = 0;

    std::atomic<bool> gateClosed { false };
    std::counting_semaphore<> entered { 0 };
    std::counting_semaphore<> mayLeave { 0 };
    float refusedValue = -1.0f;
    int refusedBatch = 0;
};

class ParameterWorkerTest : public testing::Test
{
protected:
    ~ParameterWorkerTest() override { stop(); }

    void start()
    {
        thread = std::thread ([this] { worker.run(); });
    }

    void stop()
    {
        worker.requestStop();

        if (thread.joinable())
            thread.join();
    }

    void post (float value, const std::string& id = "band_gain_0", bool gainScaleApplied = false)
    {
        worker.post (
            [&] (auto nextSlot)
            {
                auto& slot = nextSlot();
                slot.message.mode = BlockProcessorMode::mid;
                slot.message.value = value;
                slot.message.parameterId.assign (id);
                slot.gainScaleApplied = gainScaleApplied;
            });
    }

    void postMany (int count)
    {
        for (int index = 0; index < count; ++index)
            post (static_cast<float> (index));
    }

    void waitUntilIdle() const
    {
        while (! worker.isIdle())
            std::this_thread::yield();
    }

    /** Posts `count` messages and returns when the worker stands in the first of them. */
    void postAndHoldInTheFirst (int count)
    {
        handler.gateClosed = true;
        postMany (count);
        start();
        handler.entered.acquire();
    }

    void openGate()
    {
        handler.gateClosed = false;
        handler.mayLeave.release();
    }

    RecordingHandler handler;
    ParameterWorker worker { handler };
    std::thread thread;
};

TEST_F (ParameterWorkerTest, handlesEveryMessageInOrderWithItsMark)
{
    post (1.0f, "band_gain_3", true);
    post (2.0f, "band_frequency_4", false);
    start();
    waitUntilIdle();

    EXPECT_THAT (handler.values, ElementsAre (1.0f, 2.0f));
    EXPECT_THAT (handler.ids, ElementsAre ("band_gain_3", "band_frequency_4"));
    EXPECT_THAT (handler.marks, ElementsAre (true, false));
}

TEST_F (ParameterWorkerTest, takesAllThatWaitsAsOneBatch)
{
    postMany (5);
    start();
    waitUntilIdle();

    EXPECT_EQ (handler.values.size(), 5u);
    EXPECT_EQ (handler.batchesBegun, 1);
    EXPECT_EQ (handler.batchesEnded, 1);
}

TEST_F (ParameterWorkerTest, wakesForAMessageThatComesLater)
{
    start();
    post (1.0f);
    waitUntilIdle();
    post (2.0f);
    waitUntilIdle();
    EXPECT_THAT (handler.values, ElementsAre (1.0f, 2.0f));
}

TEST_F (ParameterWorkerTest, isBusyWhileABatchRuns)
{
    EXPECT_FALSE (worker.isBusy());
    EXPECT_TRUE (worker.isIdle());
    postAndHoldInTheFirst (1);
    EXPECT_TRUE (worker.isBusy());
    EXPECT_FALSE (worker.isIdle());
    openGate();
    waitUntilIdle();
    EXPECT_FALSE (worker.isBusy());
}

TEST_F (ParameterWorkerTest, countsWhatIsPostedAndProcessedUntilBothAreEqual)
{
    postAndHoldInTheFirst (3);
    EXPECT_EQ (worker.postedCount(), 3);
    EXPECT_EQ (worker.processedCount(), 1);
    openGate();
    waitUntilIdle();
    EXPECT_EQ (worker.postedCount(), 0);
    EXPECT_EQ (worker.processedCount(), 0);
}

TEST_F (ParameterWorkerTest, keepsAsManyAsTheLimit)
{
    postMany (20);
    worker.dropAbove (20);
    EXPECT_EQ (worker.postedCount(), 20);
    start();
    waitUntilIdle();
    EXPECT_EQ (handler.values.size(), 20u);
    EXPECT_FALSE (worker.takeUpdatesLost());
}

TEST_F (ParameterWorkerTest, dropsEverythingAboveTheLimitAndSaysSoOnce)
{
    postMany (21);
    worker.dropAbove (20);
    EXPECT_TRUE (worker.isIdle());
    EXPECT_EQ (worker.postedCount(), 0);
    EXPECT_EQ (worker.processedCount(), 0);
    EXPECT_TRUE (worker.takeUpdatesLost());
    EXPECT_FALSE (worker.takeUpdatesLost());

    start();
    post (7.0f);
    waitUntilIdle();
    EXPECT_THAT (handler.values, ElementsAre (7.0f));
}

TEST_F (ParameterWorkerTest, aDropEndsTheRunningBatchAfterItsCurrentMessage)
{
    postAndHoldInTheFirst (30);
    worker.dropAbove (20);
    EXPECT_FALSE (worker.takeUpdatesLost()) << "not before the worker is idle";
    openGate();
    waitUntilIdle();

    EXPECT_THAT (handler.values, ElementsAre (0.0f));
    EXPECT_EQ (handler.batchesEnded, 1);
    EXPECT_TRUE (worker.takeUpdatesLost());
}

TEST_F (ParameterWorkerTest, whatIsPostedAfterADropIsHandled)
{
    postAndHoldInTheFirst (30);
    worker.dropAbove (20);
    post (99.0f);
    openGate();
    waitUntilIdle();
    EXPECT_THAT (handler.values, ElementsAre (0.0f, 99.0f));
}

TEST_F (ParameterWorkerTest, clearingTellsWhetherAnythingWasLost)
{
    EXPECT_FALSE (worker.clear());
    post (1.0f);
    EXPECT_TRUE (worker.clear());
    EXPECT_EQ (worker.postedCount(), 0);

    postAndHoldInTheFirst (2);
    EXPECT_TRUE (worker.clear());
    openGate();
    waitUntilIdle();
    EXPECT_EQ (handler.values.size(), 1u);
}

TEST_F (ParameterWorkerTest, skippingLeavesOutTheRestOfTheBatchAndTheLoopGoesOn)
{
    postAndHoldInTheFirst (3);
    worker.setSkip (true);
    openGate();
    waitUntilIdle();
    worker.setSkip (false);
    EXPECT_THAT (handler.values, ElementsAre (0.0f));
    EXPECT_EQ (handler.batchesEnded, 1);
    EXPECT_TRUE (worker.takeUpdatesLost());

    post (8.0f);
    waitUntilIdle();
    EXPECT_THAT (handler.values, ElementsAre (0.0f, 8.0f));
}

TEST_F (ParameterWorkerTest, aSkipAtTheTopOfTheLoopDoesNotEndIt)
{
    worker.setSkip (true);
    start();
    post (1.0f);
    waitUntilIdle();
    worker.setSkip (false);
    post (2.0f);
    waitUntilIdle();
    EXPECT_THAT (handler.values, ElementsAre (2.0f));
}

TEST_F (ParameterWorkerTest, stoppingSkipsTheRestOfTheBatchAndEndsTheLoop)
{
    postAndHoldInTheFirst (5);
    worker.requestStop();
    openGate();
    thread.join();
    EXPECT_THAT (handler.values, ElementsAre (0.0f));
    EXPECT_EQ (handler.batchesEnded, 1);
}

TEST_F (ParameterWorkerTest, aSkipThatIsTakenBackDoesNotUndoAStop)
{
    postAndHoldInTheFirst (2);
    worker.requestStop();
    worker.setSkip (true);
    worker.setSkip (false);
    openGate();
    thread.join();
    EXPECT_EQ (handler.batchesEnded, 1) << "the loop ended with its first batch";
}

TEST_F (ParameterWorkerTest, stopsWhileIdle)
{
    start();
    stop();
    EXPECT_TRUE (handler.values.empty());
}

TEST_F (ParameterWorkerTest, writesAnExceptionToTheErrorStreamAndGoesOn)
{
    testing::internal::CaptureStderr();
    handler.refusedValue = 1.0f;
    postMany (3);
    start();
    waitUntilIdle();
    stop();

    EXPECT_EQ (testing::internal::GetCapturedStderr(), "Standard exception: refused\n");
    EXPECT_THAT (handler.values, ElementsAre (0.0f, 1.0f, 2.0f));
    EXPECT_EQ (worker.postedCount(), 0);
}

TEST_F (ParameterWorkerTest, survivesAnExceptionAtTheEndOfABatch)
{
    testing::internal::CaptureStderr();
    handler.refusedBatch = 1;
    start();
    post (1.0f);
    waitUntilIdle();
    post (2.0f);
    waitUntilIdle();
    stop();

    EXPECT_EQ (testing::internal::GetCapturedStderr(), "Standard exception: refused batch\n");
    EXPECT_THAT (handler.values, ElementsAre (1.0f, 2.0f));
}

TEST_F (ParameterWorkerTest, marksWhatDoesNotFit)
{
    postMany (static_cast<int> (ParameterWorker::capacity) + 3);
    start();
    waitUntilIdle();
    EXPECT_EQ (handler.values.size(), ParameterWorker::capacity);
    EXPECT_TRUE (worker.takeUpdatesLost());
}

TEST_F (ParameterWorkerTest, postingTakesOneLockAndNoMemory)
{
    const std::string longestId = "band_highshelf_9";
    const RealTimeGuard guard;

    for (int index = 0; index < 100; ++index)
        post (1.0f, longestId);

    EXPECT_EQ (guard.allocations(), 0);
    EXPECT_EQ (guard.locks(), RealTimeGuard::countsLocks() ? 100 : 0);
}

TEST_F (ParameterWorkerTest, whatIsNotedUnderTheMutexIsInTheOrderOfTheQueue)
{
    // Each thread reads a number, notes the next one and posts it: in the queue they stand in order.
    constexpr int threadCount = 3;
    constexpr int postsPerThread = 70;
    auto noted = 0.0f;
    std::vector<std::thread> posters;

    for (int which = 0; which < threadCount; ++which)
        posters.emplace_back (
            [&]
            {
                for (int index = 0; index < postsPerThread; ++index)
                    worker.post ([&] (auto nextSlot) { nextSlot().message.value = noted++; });
            });

    for (auto& poster : posters)
        poster.join();

    start();
    waitUntilIdle();
    ASSERT_EQ (handler.values.size(), static_cast<std::size_t> (threadCount * postsPerThread));
    EXPECT_TRUE (std::is_sorted (handler.values.begin(), handler.values.end()));
    worker.inOrder ([&] { EXPECT_EQ (noted, static_cast<float> (threadCount * postsPerThread)); });
}

TEST_F (ParameterWorkerTest, clearingTakesTheMarkOfALossWithIt)
{
    postMany (21);
    worker.dropAbove (20);
    auto notes = 0;
    EXPECT_TRUE (worker.clear ([&] { ++notes; }));
    EXPECT_FALSE (worker.clear ([&] { ++notes; }));
    EXPECT_FALSE (worker.takeUpdatesLost());
    EXPECT_EQ (notes, 2);
}

TEST_F (ParameterWorkerTest, losesNothingWhenManyThreadsPost)
{
    constexpr int threadCount = 4;
    constexpr int postsPerThread = 2000;
    std::atomic<int> accepted { 0 };
    start();

    std::vector<std::thread> posters;

    for (int which = 0; which < threadCount; ++which)
        posters.emplace_back (
            [&]
            {
                for (int index = 0; index < postsPerThread; ++index)
                {
                    // Leaves room for the others' messages, so that none is refused.
                    while (worker.postedCount() - worker.processedCount() > 100)
                        std::this_thread::yield();

                    post (1.0f);
                    ++accepted;
                }
            });

    for (auto& poster : posters)
        poster.join();

    waitUntilIdle();
    stop();
    EXPECT_EQ (handler.values.size(), static_cast<std::size_t> (accepted.load()));
    EXPECT_EQ (worker.postedCount(), 0);
    EXPECT_EQ (handler.batchesBegun, handler.batchesEnded);
}
} // namespace
