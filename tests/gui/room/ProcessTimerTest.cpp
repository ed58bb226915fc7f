#include "gui/room/ProcessTimer.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>

using namespace std::chrono_literals;
using orvik::ProcessTimer;

TEST (ProcessTimerTest, callsAgainAndAgainOnAThreadOfItsOwn)
{
    std::promise<std::thread::id> third;
    int calls = 0;
    ProcessTimer timer (
        [&]
        {
            if (++calls == 3)
                third.set_value (std::this_thread::get_id());
        });
    timer.start (1ms);
    EXPECT_NE (third.get_future().get(), std::this_thread::get_id());
}

TEST (ProcessTimerTest, stopWaitsForACallUnderWay)
{
    std::promise<void> begun;
    std::atomic<bool> ended { false };
    std::atomic<int> calls { 0 };
    ProcessTimer timer (
        [&]
        {
            if (++calls > 1)
                return;

            begun.set_value();

            for (int i = 0; i < 1000; ++i)
                std::this_thread::yield();

            ended = true;
        });
    timer.start (1ms);
    begun.get_future().wait();
    timer.stop();
    EXPECT_TRUE (ended);
    const auto callsAtStop = calls.load();
    std::this_thread::yield();
    EXPECT_EQ (calls, callsAtStop);
}

TEST (ProcessTimerTest, doesNothingUntilStartedAndCanBeStoppedTwice)
{
    std::atomic<int> calls { 0 };
    ProcessTimer timer ([&] { ++calls; });
    timer.stop();
    timer.stop();
    EXPECT_EQ (calls, 0);
}

TEST (ProcessTimerTest, canBeStartedAnew)
{
    std::atomic<int> calls { 0 };
    std::promise<void> again;
    ProcessTimer timer (
        [&]
        {
            if (++calls == 2)
                again.set_value();
        });
    timer.start (24h);
    timer.start (1ms);
    again.get_future().wait();
    timer.stop();
    EXPECT_GE (calls, 2);
}
