#include "gui/editor/LevelMatchIcon.h"

#include <gtest/gtest.h>

#include <limits>

namespace
{
LevelMatchIcon::Levels levels (float outputGainDb, float levelMatchDb)
{
    return { outputGainDb, levelMatchDb, false, false };
}
} // namespace

TEST (LevelMatchIconTest, warnsAboveTwoDecibels)
{
    LevelMatchIcon icon;
    EXPECT_EQ (icon.update (levels (0.0f, 1.9f)), false);
    EXPECT_EQ (icon.update (levels (0.0f, 2.1f)), true);
    EXPECT_EQ (icon.update (levels (3.0f, 0.5f)), true);
    EXPECT_EQ (icon.update (levels (3.0f, 1.5f)), false);
    EXPECT_FALSE (LevelMatchIcon::warns (0.0f, -2.0f));
}

TEST (LevelMatchIconTest, staysAsItIsWithinATenth)
{
    LevelMatchIcon icon;
    EXPECT_EQ (icon.update (levels (0.0f, 2.01f)), true);
    EXPECT_EQ (icon.update (levels (0.0f, 2.0f)), std::nullopt);
    EXPECT_EQ (icon.update (levels (0.0f, 2.09f)), std::nullopt);
    EXPECT_EQ (icon.update (levels (0.0f, 1.99f)), false);
}

TEST (LevelMatchIconTest, isHeldInSoloAndBypassAndWithoutAValue)
{
    LevelMatchIcon icon;
    EXPECT_EQ (icon.update (levels (0.0f, 0.0f)), false);
    EXPECT_EQ (icon.update ({ 0.0f, 5.0f, true, false }), std::nullopt);
    EXPECT_EQ (icon.update ({ 0.0f, 5.0f, false, true }), std::nullopt);
    EXPECT_EQ (icon.update (levels (0.0f, std::numeric_limits<float>::quiet_NaN())), std::nullopt);
    EXPECT_EQ (icon.update (levels (0.0f, -std::numeric_limits<float>::infinity())), std::nullopt);
    EXPECT_EQ (icon.update (levels (0.0f, 5.0f)), true);
}
