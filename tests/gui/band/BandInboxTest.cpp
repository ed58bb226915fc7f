#include "gui/band/BandInbox.h"

#include "support/PluginRig.h"
#include "support/RealTimeGuard.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

using testing::ElementsAre;

TEST (BandInboxTest, knowsItsBandsParameters)
{
    const BandInbox inbox (3, [] (BandInbox::Kind, float) {});
    EXPECT_EQ (inbox.indexOf ("band_Q_3"), 0);
    EXPECT_EQ (inbox.indexOf ("band_gain_3"), 5);
    EXPECT_EQ (inbox.indexOf ("band_gain_2"), -1);
    EXPECT_EQ (inbox.indexOf ("band_frequency_3"), -1);
    EXPECT_EQ (inbox.indexOf ("paramGainScale"), -1);
}

TEST (BandInboxTest, theLatestValueOfEachKindArrivesOnce)
{
    std::vector<float> taken;
    BandInbox inbox (0, [&] (BandInbox::Kind, float value) { taken.push_back (value); });
    const auto gain = inbox.indexOf ("band_gain_0");

    for (int step = 0; step <= 1000; ++step)
        inbox.post (gain, static_cast<float> (step));

    inbox.post (inbox.indexOf ("band_Q_0"), 2.0f);
    PluginRig::serveMessagesUntil ([&] { return ! taken.empty(); });
    EXPECT_THAT (taken, ElementsAre (2.0f, 1000.0f));

    // What comes afterwards is fetched by a message of its own.
    inbox.post (gain, 5.0f);
    PluginRig::serveMessagesUntil ([&] { return taken.size() == 3; });
    EXPECT_FLOAT_EQ (taken.back(), 5.0f);
}

TEST (BandInboxTest, aBurstOfAutomationIsOneMessage)
{
    BandInbox inbox (0, [] (BandInbox::Kind, float) {});
    const juce::String id ("band_gain_0");
    inbox.post (inbox.indexOf (id), 0.0f);

    // While that one is under way, another is neither made nor queued.
    const RealTimeGuard guard;

    for (int step = 0; step < 1000; ++step)
        inbox.post (inbox.indexOf (id), static_cast<float> (step));

    EXPECT_EQ (guard.allocations(), 0);
    EXPECT_EQ (guard.locks(), 0);
}

TEST (BandInboxTest, theLastValueOfAnyThreadIsNeverLost)
{
    std::atomic<float> latest { 0.0f };
    BandInbox inbox (0, [&] (BandInbox::Kind, float value) { latest = value; });
    const auto gain = inbox.indexOf ("band_gain_0");
    constexpr int count = 20000;
    std::thread host (
        [&]
        {
            for (int step = 1; step <= count; ++step)
                inbox.post (gain, static_cast<float> (step));
        });
    PluginRig::serveMessagesUntil ([&] { return latest.load() == static_cast<float> (count); });
    host.join();
    EXPECT_FLOAT_EQ (latest, static_cast<float> (count));
}

TEST (BandInboxTest, aMessageThatComesLateFindsNobody)
{
    auto taken = 0;
    auto inbox = std::make_unique<BandInbox> (0, [&] (BandInbox::Kind, float) { ++taken; });
    inbox->post (0, 1.0f);
    inbox.reset();
    auto served = false;
    juce::MessageManager::callAsync ([&] { served = true; });
    PluginRig::serveMessagesUntil ([&] { return served; });
    EXPECT_EQ (taken, 0);
}
