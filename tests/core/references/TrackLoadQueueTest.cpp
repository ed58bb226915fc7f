#include "core/references/TrackLoadQueue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <future>

namespace
{
using testing::ElementsAre;
using testing::IsEmpty;

ReferenceTrackRequest requestOf (const juce::String& path)
{
    return { path, {}, {} };
}

/** A handler that notes what it serves, and that a test can hold at a request. */
class Desk
{
public:
    void serve (const ReferenceTrackRequest& request)
    {
        std::unique_lock lock (mutex);
        served.push_back (request.filePath.toStdString());
        changed.notify_all();
        changed.wait (lock, [&] { return request.filePath != "held" || released; });
    }

    void release()
    {
        const std::scoped_lock lock (mutex);
        released = true;
        changed.notify_all();
    }

    /** Waits until so many have been begun. */
    std::vector<std::string> waitFor (std::size_t count)
    {
        std::unique_lock lock (mutex);
        changed.wait (lock, [&] { return served.size() >= count; });
        return served;
    }

    std::vector<std::string> all()
    {
        const std::scoped_lock lock (mutex);
        return served;
    }

private:
    std::mutex mutex;
    std::condition_variable changed;
    std::vector<std::string> served;
    bool released = false;
};

class TrackLoadQueueTest : public testing::Test
{
protected:
    Desk desk;
    TrackLoadQueue queue { [this] (const ReferenceTrackRequest& request) { desk.serve (request); } };
};
} // namespace

TEST_F (TrackLoadQueueTest, servesInOrderOfArrivalWithAllThatARequestHolds)
{
    ReferenceTrackRequest got;
    std::promise<void> done;

    {
        TrackLoadQueue other (
            [&] (ReferenceTrackRequest request)
            {
                got = std::move (request);
                done.set_value();
            });
        other.push ({ "path", "NAME", { { .startSamples = 3, .endSamples = 9, .active = true, .id = 5 } } });
        done.get_future().wait();
    }

    EXPECT_EQ (got.filePath, "path");
    EXPECT_EQ (got.displayName, "NAME");
    ASSERT_EQ (got.loops.size(), 1u);
    EXPECT_EQ (got.loops[0].endSamples, 9);

    for (const auto* path : { "a", "b", "c" })
        queue.push (requestOf (path));

    EXPECT_THAT (desk.waitFor (3), ElementsAre ("a", "b", "c"));
}

TEST_F (TrackLoadQueueTest, aFlushDropsWhatWaitsAndTheRestOfTheBatch)
{
    queue.setPaused (true);
    queue.push (requestOf ("held"));
    queue.push (requestOf ("same batch"));
    queue.setPaused (false);
    desk.waitFor (1);
    queue.push (requestOf ("next batch"));
    queue.requestFlush();
    queue.push (requestOf ("after"));
    desk.release();
    EXPECT_THAT (desk.waitFor (2), ElementsAre ("held", "after"));
}

TEST_F (TrackLoadQueueTest, aFlushWaitsForTheRequestAtHand)
{
    queue.push (requestOf ("held"));
    desk.waitFor (1);
    auto flushing = std::async (std::launch::async, [this] { queue.flush(); });
    EXPECT_EQ (flushing.wait_for (std::chrono::milliseconds (50)), std::future_status::timeout);
    desk.release();
    flushing.wait();
    queue.push (requestOf ("after"));
    EXPECT_THAT (desk.waitFor (2), ElementsAre ("held", "after"));
}

TEST_F (TrackLoadQueueTest, aFlushOfAnIdleQueueReturns)
{
    queue.flush();
    queue.push (requestOf ("a"));
    EXPECT_THAT (desk.waitFor (1), ElementsAre ("a"));
}

TEST_F (TrackLoadQueueTest, aPausedQueueBeginsNothingAndStillEnds)
{
    queue.setPaused (true);
    queue.push (requestOf ("a"));
    EXPECT_TRUE (queue.isBusy());
    queue.stop();
    EXPECT_THAT (desk.all(), IsEmpty());
}

TEST_F (TrackLoadQueueTest, whatComesDuringAPauseCanStillBeDropped)
{
    // Often, to give a queue that does not rest the time to begin.
    for (int round = 0; round < 5000; ++round)
    {
        queue.setPaused (true);
        queue.push (requestOf ("paused"));
        std::this_thread::yield();
        queue.flush();
        queue.setPaused (false);
    }

    queue.push (requestOf ("after"));
    EXPECT_THAT (desk.waitFor (1), ElementsAre ("after"));
}

TEST_F (TrackLoadQueueTest, stopEndsAfterTheRequestAtHand)
{
    queue.setPaused (true);
    queue.push (requestOf ("held"));
    queue.push (requestOf ("never"));
    queue.setPaused (false);
    desk.waitFor (1);
    queue.requestStop();
    desk.release();
    queue.stop();
    EXPECT_THAT (desk.all(), ElementsAre ("held"));
}

TEST_F (TrackLoadQueueTest, stopFreesWhoWaitsForAFlush)
{
    queue.push (requestOf ("held"));
    desk.waitFor (1);
    auto flushing = std::async (std::launch::async, [this] { queue.flush(); });
    queue.requestStop();
    flushing.wait();
    desk.release();
}

TEST_F (TrackLoadQueueTest, manyThreadsLoseNothing)
{
    constexpr std::size_t threadCount = 4, each = 200;
    std::vector<std::thread> threads;

    for (std::size_t i = 0; i < threadCount; ++i)
        threads.emplace_back (
            [this]
            {
                for (std::size_t n = 0; n < each; ++n)
                    queue.push (requestOf ("x"));
            });

    for (auto& thread : threads)
        thread.join();

    EXPECT_EQ (desk.waitFor (threadCount * each).size(), threadCount * each);
    queue.stop();
    EXPECT_FALSE (queue.isBusy());
}
