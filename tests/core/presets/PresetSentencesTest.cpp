#include "core/presets/PresetSentences.h"

#include "support/PresetRows.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>
#include <string>

using namespace PresetRows;
using namespace PresetSentences;

namespace
{
template <typename Sentence>
std::string nameOf (const testing::TestParamInfo<Sentence>& tested)
{
    return nameFrom (tested.param.sentence);
}

class PresetComparisonTest : public testing::TestWithParam<Comparison>
{
};

TEST_P (PresetComparisonTest, holdsInEveryBand)
{
    const auto& claim = GetParam();
    const auto& more = rowOf (claim.more);
    const auto& less = rowOf (claim.less);
    ASSERT_LE (claim.fromHz, claim.toHz);
    ASSERT_GE (claim.atLeastDb, 0.5f) << "less can hardly be heard";

    for (auto band = bandAt (claim.fromHz); band <= bandAt (claim.toHz); ++band)
        EXPECT_GE (shapeAt (more, band) - shapeAt (less, band), claim.atLeastDb)
            << claim.sentence << " At " << analysisCentresHz[band] << " Hz.";
}

INSTANTIATE_TEST_SUITE_P (Engineer, PresetComparisonTest, testing::ValuesIn (comparisons), nameOf<Comparison>);

class PresetOutlineTest : public testing::TestWithParam<Outline>
{
};

TEST_P (PresetOutlineTest, holds)
{
    const auto& claim = GetParam();
    const auto& row = rowOf (claim.preset);
    EXPECT_GE (meanShape (row, claim.strongFromHz, claim.strongToHz)
                   - meanShape (row, claim.weakFromHz, claim.weakToHz),
               claim.atLeastDb)
        << claim.sentence;
}

INSTANTIATE_TEST_SUITE_P (Engineer, PresetOutlineTest, testing::ValuesIn (outlines), nameOf<Outline>);

TEST (PresetSentencesTest, everyPresetWithATargetTakesPart)
{
    std::set<std::string> named;

    for (const auto& claim : comparisons)
    {
        named.insert (claim.more);
        named.insert (claim.less);
    }

    for (const auto& claim : outlines)
        named.insert (claim.preset);

    for (const auto& row : Presets::table())
        EXPECT_EQ (named.count (titleOf (row)) == 1, hasTarget (row)) << titleOf (row);
}

TEST (PresetSentencesTest, theDocumentListsThemAll)
{
    std::ifstream file (SOLVANE_FIXTURES "/../../docs/presets.md");
    const std::string document { std::istreambuf_iterator<char> (file), {} };

    for (const auto& claim : comparisons)
        EXPECT_NE (document.find ("- " + std::string (claim.sentence) + "\n"), std::string::npos) << claim.sentence;

    for (const auto& claim : outlines)
        EXPECT_NE (document.find ("- " + std::string (claim.sentence) + "\n"), std::string::npos) << claim.sentence;
}
} // namespace
