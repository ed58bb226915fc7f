#include "support/PresetRows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

using namespace PresetRows;
using Presets::table;

namespace
{
/** Level of the bands from 6 to 15 kHz against those up to 1 kHz. */
float brightness (const TableRow& row)
{
    return (shapeAt (row, 6) + shapeAt (row, 7) + shapeAt (row, 8) - shapeAt (row, 0) - shapeAt (row, 1)
            - shapeAt (row, 2))
           / 3.0f;
}

/** dB per octave from 320 Hz to 10 kHz, in bands whose width grows with their frequency. */
float slopeOf (const TableRow& row)
{
    return (row.values[7] - row.values[0]) / std::log2 (10000.0f / 320.0f);
}

/** Root mean square of the difference of two shapes over the first bands, at equal means. */
float differenceOfShapes (const TableRow& a, const TableRow& b, std::size_t bandCount)
{
    std::vector<float> differences;

    for (std::size_t band = 0; band < bandCount; ++band)
        differences.push_back (shapeAt (a, band) - shapeAt (b, band));

    const auto count = static_cast<float> (differences.size());
    auto mean = 0.0f;
    auto squares = 0.0f;

    for (const auto value : differences)
        mean += value / count;

    for (const auto value : differences)
        squares += (value - mean) * (value - mean) / count;

    return std::sqrt (squares);
}

TEST (PresetShapesTest, backingVoicesAreSofterThanTheirLeads)
{
    EXPECT_LT (rowOf (57).lufs, rowOf (59).lufs);
    EXPECT_LT (rowOf (64).lufs, rowOf (65).lufs);
    EXPECT_LT (rowOf (68).lufs, rowOf (69).lufs);
}

// Spectra of commercial music fall by four to five dB per octave; in bands that grow with frequency, by three less.
TEST (PresetShapesTest, mixesFallAsCommercialMusicDoes)
{
    auto sum = 0.0f;
    auto count = 0.0f;

    for (const auto& row : table())
        if (row.category >= firstMixCategory)
        {
            EXPECT_LT (slopeOf (row), -0.5f) << describe (row);
            EXPECT_GT (slopeOf (row), -4.5f) << describe (row);
            EXPECT_LT (row.values[8], row.values[7]) << describe (row);
            EXPECT_LT (row.values[9], row.values[8]) << describe (row);
            sum += slopeOf (row);
            count += 1.0f;
        }

    EXPECT_LT (sum / count - 3.0f, -4.0f);
    EXPECT_GT (sum / count - 3.0f, -5.0f);
}

TEST (PresetShapesTest, namesThatSayBrightAreBrighterThanThoseThatSayDark)
{
    struct Pair
    {
        int bright;
        int dark;
    };

    // SNARE BRIGHT and DEEP; kits CRISP and CLEAN against DARK; basses; pianos; voices.
    for (const auto& [bright, dark] : { Pair { 21, 22 },
                                        Pair { 11, 12 },
                                        Pair { 10, 12 },
                                        Pair { 3, 4 },
                                        Pair { 48, 43 },
                                        Pair { 46, 43 },
                                        Pair { 65, 63 },
                                        Pair { 59, 63 } })
        for (std::size_t band = 6; band <= 8; ++band)
            EXPECT_GT (shapeAt (rowOf (bright), band), shapeAt (rowOf (dark), band))
                << describe (rowOf (bright)) << " and " << describe (rowOf (dark)) << ", band " << band;
}

TEST (PresetShapesTest, darkAndWarmNamesAreTheDullestOfTheirKind)
{
    const auto isDullest = [] (int id, int first, int last)
    {
        for (auto other = first; other <= last; ++other)
            if (other != id)
            {
                EXPECT_LT (brightness (rowOf (id)), brightness (rowOf (other))) << describe (rowOf (other));
            }
    };

    isDullest (12, 10, 15);    // FULL KIT DARK POP among the kits
    isDullest (63, 57, 70);    // MALE DARK POP among the voices
    isDullest (87, 85, 92);    // DEEP among house
    isDullest (111, 104, 111); // WARM among pop
}

TEST (PresetShapesTest, oldMusicIsDullerThanNew)
{
    struct Pair
    {
        int old;
        int modern;
    };

    for (const auto& [old, modern] :
         { Pair { 83, 79 }, Pair { 85, 86 }, Pair { 99, 97 }, Pair { 114, 113 }, Pair { 117, 118 } })
        EXPECT_LT (brightness (rowOf (old)), brightness (rowOf (modern))) << describe (rowOf (old));
}

TEST (PresetShapesTest, femaleVoicesAreBrighterThanMaleOnesOfTheSameKind)
{
    EXPECT_GT (brightness (rowOf (59)), brightness (rowOf (65)));
    EXPECT_GT (brightness (rowOf (60)), brightness (rowOf (66)));
    EXPECT_GT (brightness (rowOf (61)), brightness (rowOf (69)));
    EXPECT_GT (brightness (rowOf (57)), brightness (rowOf (64)));
}

TEST (PresetShapesTest, kicksFallToTheFloorWhileOverheadsRise)
{
    constexpr int overheads = 20;

    for (auto kick = 16; kick <= 19; ++kick)
    {
        EXPECT_LT (rowOf (kick).values[8], floorDb + 3.0f) << describe (rowOf (kick));
        EXPECT_LT (shapeAt (rowOf (kick), 7), shapeAt (rowOf (kick), 2) - 8.0f) << describe (rowOf (kick));
        EXPECT_LT (shapeAt (rowOf (kick), 7), shapeAt (rowOf (overheads), 7) - 30.0f) << describe (rowOf (kick));
    }

    for (std::size_t band = 3; band <= 7; ++band)
        EXPECT_GT (rowOf (overheads).values[band], rowOf (overheads).values[band - 1]) << "band " << band;
}

TEST (PresetShapesTest, instrumentsAreInTheOrderOfTheirBrightness)
{
    constexpr int darkest = 2; // 808
    constexpr int softBass = 8;
    constexpr int cello = 35;
    constexpr int strings = 37;
    constexpr int trumpet = 40;
    constexpr int overheads = 20;

    // By the level at 4 kHz against 640 Hz, which all of them have.
    const auto upperMids = [] (int id) { return shapeAt (rowOf (id), 5) - shapeAt (rowOf (id), 1); };

    EXPECT_LT (shapeAt (rowOf (darkest), 3), shapeAt (rowOf (softBass), 3));
    EXPECT_LT (upperMids (softBass), upperMids (cello));
    EXPECT_LT (upperMids (cello), upperMids (strings));
    EXPECT_LT (upperMids (strings), upperMids (trumpet));
    EXPECT_LT (upperMids (trumpet), upperMids (overheads));
}

TEST (PresetShapesTest, noTwoPresetsOfAGroupHaveTheSameShape)
{
    auto pairs = 0;

    for (const auto& a : table())
        for (const auto& b : table())
            if (a.category == b.category && a.id < b.id && hasTarget (a) && hasTarget (b))
            {
                // With the extrapolated band, and by what was set by hand alone.
                EXPECT_GE (differenceOfShapes (a, b, 10), 0.5f) << describe (a) << " and " << describe (b);
                EXPECT_GE (differenceOfShapes (a, b, 9), 0.5f) << describe (a) << " and " << describe (b);
                ++pairs;
            }

    EXPECT_EQ (pairs, 556);
}
} // namespace
