#pragma once

#include "dsp/simd/SimdLevel.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

/** Uses one level of vector code for as long as it lives. */
class ScopedSimdLevel
{
public:
    explicit ScopedSimdLevel (SimdLevel level) { EXPECT_TRUE (setSimdLevel (level)); }
    ~ScopedSimdLevel() { setSimdLevel (before); }
    ScopedSimdLevel (const ScopedSimdLevel&) = delete;
    ScopedSimdLevel& operator= (const ScopedSimdLevel&) = delete;

private:
    SimdLevel before = simdLevel();
};

/** Every level that this machine and build can run. */
inline std::vector<SimdLevel> availableSimdLevels()
{
    std::vector<SimdLevel> levels;

    for (const auto level : { SimdLevel::baseline, SimdLevel::v3, SimdLevel::v4 })
        if (level <= bestSimdLevel())
            levels.push_back (level);

    return levels;
}

inline std::string simdLevelName (const testing::TestParamInfo<SimdLevel>& tested)
{
    switch (tested.param)
    {
        case SimdLevel::baseline:
            return "baseline";
        case SimdLevel::v3:
            return "v3";
        case SimdLevel::v4:
            return "v4";
    }

    return "unknown";
}
