#include "core/LatencyReport.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace
{
TEST (LatencyReportTest, tellsNothingUnlessItIsAskedTo)
{
    auto told = 0;
    LatencyReport report ([&] { ++told; });
    report.tell();
    EXPECT_EQ (told, 0);

    report.request();
    report.request();
    report.tell();
    report.tell();
    EXPECT_EQ (told, 1);
}

TEST (LatencyReportTest, returnsWithTheLastFigureAlsoWhileAnotherThreadTellsAnOlderOne)
{
    for (int round = 0; round < 50; ++round)
    {
        std::atomic<int> latest { 1 };
        std::atomic<int> stored { 0 };
        std::atomic<bool> olderUnderWay { false };
        std::atomic<bool> newerComes { false };

        LatencyReport report (
            [&]
            {
                const auto figure = latest.load();

                if (figure == 1)
                {
                    olderUnderWay = true;

                    while (! newerComes)
                        std::this_thread::yield();

                    for (int turn = 0; turn < 3; ++turn)
                        std::this_thread::yield();
                }

                stored = figure;
            },
            std::chrono::minutes (5));

        std::thread timer (
            [&]
            {
                report.request();
                report.tell();
            });

        while (! olderUnderWay)
            std::this_thread::yield();

        latest = 2;
        newerComes = true;
        report.request();
        report.tell();
        EXPECT_EQ (stored, 2) << "round " << round;
        timer.join();
        EXPECT_EQ (stored, 2) << "round " << round;
    }
}

TEST (LatencyReportTest, isToldOnTheSpotWhenTheHostPreparesFromInside)
{
    auto latest = 1;
    auto stored = 0;
    auto storedInside = 0;
    LatencyReport* inner = nullptr;

    LatencyReport report (
        [&]
        {
            stored = latest;

            if (latest == 1)
            {
                latest = 2;
                inner->request();
                inner->tell();
                storedInside = stored;
            }
        });

    inner = &report;
    report.request();
    report.tell();
    EXPECT_EQ (storedInside, 2);
    EXPECT_EQ (stored, 2);
}

TEST (LatencyReportTest, aHostThatLetsItWaitForAnotherThreadGoesOnAndIsToldAfterwards)
{
    auto latest = 1;
    auto stored = 0;
    LatencyReport* inner = nullptr;

    LatencyReport report (
        [&]
        {
            stored = latest;

            if (latest == 1)
            {
                latest = 2;
                std::thread preparing (
                    [&]
                    {
                        inner->request();
                        inner->tell();
                    });
                preparing.join();
            }
        },
        std::chrono::milliseconds (20));

    inner = &report;
    report.request();
    report.tell();
    EXPECT_EQ (stored, 2);
}
} // namespace
