#include "window/PluginWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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
} // namespace
