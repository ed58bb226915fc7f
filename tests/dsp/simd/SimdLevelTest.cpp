#include "dsp/simd/SimdLevel.h"

#include "support/SimdLevels.h"

namespace
{
TEST (SimdLevelTest, aChosenLevelIsInUseUntilTheNextChoice)
{
    for (const auto level : availableSimdLevels())
    {
        const ScopedSimdLevel scoped (level);
        EXPECT_EQ (simdLevel(), level);
    }
}

TEST (SimdLevelTest, refusesALevelAboveTheBest)
{
    const auto before = simdLevel();
    EXPECT_FALSE (setSimdLevel (static_cast<SimdLevel> (static_cast<int> (bestSimdLevel()) + 1)));
    EXPECT_EQ (simdLevel(), before);
}
} // namespace
