#include "gui/look/Tips.h"

#include <gtest/gtest.h>

namespace
{
int countOf (const char* tip, juce::juce_wchar character)
{
    const auto text = Tips::text (tip);
    auto count = 0;

    for (auto c = text.getCharPointer(); ! c.isEmpty(); ++c)
        count += *c == character ? 1 : 0;

    return count;
}
} // namespace

TEST (TipsTest, noBreakSpacesAreKept)
{
    EXPECT_EQ (countOf (Tips::mainBypass, 0xA0), 2);
    EXPECT_EQ (countOf (Tips::heatMap, 0xA0), 1);
    EXPECT_EQ (countOf (Tips::scale, 0xA0), 2);
    EXPECT_EQ (countOf (Tips::analysis, 0xA0), 2);
    EXPECT_EQ (countOf (Tips::filterMode, 0xA0), 0);
}

TEST (TipsTest, signsBeyondAsciiAreOneCharacterEach)
{
    EXPECT_EQ (countOf (Tips::scale, 0xB1), 4);
    EXPECT_TRUE (Tips::text (Tips::filterMode).contains ("+-4dB"));
    EXPECT_TRUE (Tips::text (Tips::compareCopy).endsWith (".\n "));
}
