#include "core/model/NotificationChannels.h"

#include "support/RealTimeGuard.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace
{
using testing::ElementsAre;

TEST (NotificationChannelsTest, callsEveryListenerOfTheChannelInOrder)
{
    NotificationChannels channels;
    std::vector<int> calls;
    channels.add ([&] { calls.push_back (1); }, "a");
    channels.add ([&] { calls.push_back (2); }, "b");
    channels.add ([&] { calls.push_back (3); }, "a");

    channels.fire ("a");
    EXPECT_THAT (calls, ElementsAre (1, 3));
    channels.fire ("b");
    EXPECT_THAT (calls, ElementsAre (1, 3, 2));
}

TEST (NotificationChannelsTest, comparesTheWholeName)
{
    NotificationChannels channels;
    auto calls = 0;
    channels.add ([&] { ++calls; }, "mainBypass");

    for (const auto* name : { "main", "mainBypass2", "MainBypass", "" })
        channels.fire (name);

    EXPECT_EQ (calls, 0);
}

TEST (NotificationChannelsTest, tokensDifferAndRemovingKeepsTheOthersInOrder)
{
    NotificationChannels channels;
    std::vector<int> calls;
    const auto first = channels.add ([&] { calls.push_back (1); }, "a");
    const auto second = channels.add ([&] { calls.push_back (2); }, "a");
    const auto third = channels.add ([&] { calls.push_back (3); }, "a");
    EXPECT_TRUE (first != second && second != third && first != third);

    channels.remove (second);
    channels.fire ("a");
    EXPECT_THAT (calls, ElementsAre (1, 3));
    channels.remove (second);
    channels.fire ("a");
    EXPECT_THAT (calls, ElementsAre (1, 3, 1, 3));
    EXPECT_NE (channels.add ([] {}, "a"), second) << "tokens are not used again";
}

TEST (NotificationChannelsTest, firingTakesOneLockAndNoMemory)
{
    NotificationChannels channels;
    auto calls = 0;
    channels.add ([&] { ++calls; }, "transportPlaying");
    channels.add ([&] { ++calls; }, "mainBypass");
    const RealTimeGuard guard;
    channels.fire ("transportPlaying");
    EXPECT_EQ (guard.allocations(), 0);
    EXPECT_EQ (guard.locks(), RealTimeGuard::countsLocks() ? 1 : 0);
    EXPECT_EQ (calls, 1);
}

TEST (NotificationChannelsTest, aRemovedCallbackRunsNoMoreOnceRemoveHasReturned)
{
    NotificationChannels channels;
    std::atomic<bool> mayRun { false };
    std::atomic<bool> ranLate { false };
    std::atomic<bool> stop { false };
    std::thread audio (
        [&]
        {
            while (! stop)
                channels.fire ("a");
        });

    for (int round = 0; round < 300; ++round)
    {
        mayRun = true;
        const auto token = channels.add (
            [&]
            {
                if (! mayRun)
                    ranLate = true;
            },
            "a");
        std::this_thread::yield();
        channels.remove (token);
        mayRun = false;
    }

    stop = true;
    audio.join();
    EXPECT_FALSE (ranLate);
}

TEST (NotificationChannelsTest, waitsForARunningNotification)
{
    NotificationChannels channels;
    std::atomic<bool> entered { false };
    std::atomic<bool> finished { false };
    channels.add (
        [&]
        {
            entered = true;

            for (int turn = 0; turn < 1000; ++turn)
                std::this_thread::yield();

            finished = true;
        },
        "a");
    std::thread other ([&] { channels.fire ("a"); });

    while (! entered)
        std::this_thread::yield();

    channels.waitForRunningNotification();
    EXPECT_TRUE (finished);
    other.join();
}
} // namespace
