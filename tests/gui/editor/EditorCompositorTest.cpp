#include "gui/compositor/EditorCompositor.h"

#include <gtest/gtest.h>

TEST (EditorCompositorTest, withoutADisplayTheWindowPaintsByItself)
{
    if (! juce::Desktop::getInstance().getDisplays().displays.isEmpty())
        GTEST_SKIP() << "a display is there";

    juce::Component window;
    window.setSize (100, 100);
    EditorCompositor compositor (window);
    EXPECT_FALSE (compositor.isAttached());

    for (auto tick = 0; tick < 100; ++tick)
        compositor.check();

    EXPECT_FALSE (compositor.isAttached());
    EXPECT_EQ (window.getCachedComponentImage(), nullptr);
}
