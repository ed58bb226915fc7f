#include "gui/menu/BandSets.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

TEST (BandSetsTest, everyNumberHasItsFrequencies)
{
    const std::vector<std::vector<float>> expected {
        { 1000 },
        { 1000, 3000 },
        { 1000, 3000, 5000 },
        { 1000, 3000, 5000, 10000 },
        { 1000, 3000, 5000, 10000, 15000 },
        { 500, 1000, 3000, 5000, 10000, 15000 },
        { 500, 1000, 2000, 3000, 5000, 10000, 15000 },
        { 500, 1000, 2000, 3000, 4000, 5000, 10000, 15000 },
        { 500, 1000, 2000, 3000, 4000, 5000, 10000, 15000, 17000 },
        { 500, 1000, 2000, 3000, 4000, 5000, 8000, 10000, 15000, 17000 },
    };

    for (int count = 1; count <= 10; ++count)
        EXPECT_THAT (BandSets::ofCount (count),
                     testing::ElementsAreArray (expected.at (static_cast<std::size_t> (count) - 1)))
            << count;
}

TEST (BandSetsTest, anyOtherNumberHasNone)
{
    for (const auto count : { -1, 0, 11 })
        EXPECT_TRUE (BandSets::ofCount (count).empty()) << count;
}
