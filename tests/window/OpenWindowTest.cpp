#include "window/PluginWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <set>

namespace
{
TEST (OpenWindowTest, showsMoreThanOneColour)
{
    PluginWindow window;
    EXPECT_TRUE (window.eventually (
        [&]
        {
            const auto picture = window.look();
            return std::set (picture.pixels.begin(), picture.pixels.end()).size() > 10;
        }));
}

TEST (OpenWindowTest, opensAndClosesManyTimesWhileAudioRunsAndBandsMove)
{
    PluginWindow window;
    window.setNormalised ("Band 3 Active", 1.0f);

    for (int turn = 0; turn < 100; ++turn)
    {
        window.setNormalised ("Band 3 Gain", static_cast<float> (turn % 11) / 10.0f);
        window.close();
        window.open();
    }

    EXPECT_TRUE (window.isOn ("Band 3 Active"));
    const auto picture = window.lookAtRest();
    EXPECT_GT (std::set (picture.pixels.begin(), picture.pixels.end()).size(), 10u);
}

TEST (OpenWindowTest, twoInstancesCloseInEitherOrder)
{
    for (const auto firstGoesFirst : { true, false })
    {
        auto first = std::make_unique<PluginWindow>();
        auto second = std::make_unique<PluginWindow>();
        first->setNormalised ("Band 1 Active", 1.0f);
        second->idleFor (std::chrono::milliseconds (100));

        (firstGoesFirst ? first : second).reset();
        auto& left = firstGoesFirst ? *second : *first;
        left.setNormalised ("Band 2 Active", 1.0f);
        left.idleFor (std::chrono::milliseconds (100));
        EXPECT_TRUE (left.isOn ("Band 2 Active"));
        EXPECT_NE (left.look(), Picture {});
    }
}
} // namespace
