// While a window is open the host's thread is the plug-in's message thread. Instances that come and go on other threads
// keep that thread out of callbacks meanwhile, and must neither wait for ever nor stop the window.
#include "hosts/BareInstance.h"
#include "hosts/HostedPlugin.h"
#include "support/Messages.h"
#include "window/TestScreen.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <set>
#include <thread>

namespace
{
using namespace std::chrono_literals;

template <typename Condition>
void serveUntil (const Condition& holds, HostedPlugin& plugin)
{
    while (! holds())
    {
        plugin.idleWindow();

        if (! juce::dispatchNextMessageOnSystemQueue (true))
            std::this_thread::sleep_for (1ms);
    }
}

class NeighboursOfAWindowTest : public testing::TestWithParam<PluginFormat>
{
protected:
    NeighboursOfAWindowTest()
    {
        plugin->prepare (48000.0, 512);
        open();
        audio = std::thread ([this] { runAudio(); });
    }

    ~NeighboursOfAWindowTest() override
    {
        ended = true;
        audio.join();
        plugin->closeWindow();
    }

    void open()
    {
        plugin->openWindow();

        // Looked at now and then only: a window that is being placed has the whole display held now and then.
        for (auto shows = false; ! shows; shows = showsThePlugin())
        {
            const auto next = std::chrono::steady_clock::now() + 50ms;
            serveUntil ([next] { return std::chrono::steady_clock::now() > next; }, *plugin);
        }
    }

    /** A room has more colours than an empty window. */
    [[nodiscard]] bool showsThePlugin()
    {
        const auto picture = screen.look (plugin->windowNumber());
        return std::set (picture.pixels.begin(), picture.pixels.end()).size() > 10;
    }

    void runAudio()
    {
        juce::AudioBuffer<float> block (2, 512);

        for (; ! ended; std::this_thread::sleep_for (2ms))
        {
            block.clear();
            plugin->process (block);
            ++blocks;
        }
    }

    /** The window still reacts: a band that is switched on is told to its own thread, which is this one. */
    void expectItToWork()
    {
        const auto before = blocks.load();
        plugin->setParameter ("Band 1 Active", 1.0f);
        const auto end = std::chrono::steady_clock::now() + 300ms;
        serveUntil ([&] { return std::chrono::steady_clock::now() > end && blocks > before + 5; }, *plugin);
        EXPECT_TRUE (showsThePlugin());
        EXPECT_EQ (plugin->parameter (plugin->parameterIndex ("Band 1 Active")), 1.0f);
    }

    TestScreen screen;
    std::unique_ptr<HostedPlugin> plugin = HostedPlugin::open (GetParam(), false);
    std::atomic<bool> ended { false };
    std::atomic<int> blocks { 0 };
    std::thread audio;
};

/** For formats whose wrapper leaves the window's thread alone; the others wait for it in the framework. */
class BlockedWindowTest : public NeighboursOfAWindowTest
{
};
} // namespace

TEST_P (NeighboursOfAWindowTest, instancesComeAndGoOnAnotherThread)
{
    std::atomic<int> turns { 0 };
    std::thread other (
        [&]
        {
            while (turns < 20)
            {
                comeAndGo (GetParam());
                ++turns;
            }
        });
    serveUntil ([&] { return turns == 20; }, *plugin);
    other.join();
    expectItToWork();
}

TEST_P (NeighboursOfAWindowTest, instancesComeAndGoOnTheWindowsThread)
{
    for (auto turn = 0; turn < 10; ++turn)
    {
        comeAndGo (GetParam());
        plugin->idleWindow();
    }

    expectItToWork();
}

TEST_P (BlockedWindowTest, anInstanceThatTheWindowsThreadWaitsForGivesUpWaitingForThatThread)
{
    std::thread ([&] { comeAndGo (GetParam()); }).join();
    expectItToWork();
}

TEST_P (NeighboursOfAWindowTest, windowsOpenAndCloseWhileInstancesComeAndGo)
{
    std::atomic<int> turns { 0 };
    std::thread other (
        [&]
        {
            while (turns < 10)
            {
                comeAndGo (GetParam());
                ++turns;
            }
        });

    while (turns < 10)
    {
        plugin->closeWindow();
        open();
    }

    other.join();
    expectItToWork();
}

INSTANTIATE_TEST_SUITE_P (Formats,
                          NeighboursOfAWindowTest,
                          testing::Values (PluginFormat::vst2, PluginFormat::vst3, PluginFormat::lv2),
                          [] (const auto& format) { return nameOf (format.param); });
INSTANTIATE_TEST_SUITE_P (Formats,
                          BlockedWindowTest,
                          testing::Values (PluginFormat::lv2),
                          [] (const auto& format) { return nameOf (format.param); });
