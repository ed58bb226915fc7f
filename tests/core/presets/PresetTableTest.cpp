#include "support/PresetRows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>
#include <vector>

using namespace Presets;
using namespace PresetRows;

namespace
{
// Written out on purpose: sessions hold these ids, and users know the presets by these names.
constexpr auto listing = R"(PRESET
1 NO TARGETS
130 USER SETTING
131 BALANCED MASTER
BASS
2 808
3 CLEAN ROCK
4 DARK POP
5 GRITTY ROCK
6 METAL
7 POP BASS SYNTH
8 SOFT POP BASS
DRUMS
9 CLAPS
10 FULL KIT CLEAN TIGHT POP
11 FULL KIT CRISP ELECTRONIC
12 FULL KIT DARK POP
13 FULL KIT LIVE ROCK
14 FULL KIT POP ROCK
15 FULL KIT ROCK
16 KICK ELECTRONIC
17 KICK HOUSE
18 KICK LIVE ROCK
19 KICK POP
20 OVERHEADS
21 SNARE BRIGHT
22 SNARE DEEP
23 SNARE LIVE ROCK
24 SNARE POP
25 TOMS
GUITAR
26 ACOUSTIC
27 BRITPOP ELECTRIC
28 CLEAN ELECTRIC
29 CLEAN POP LEAD
30 DISTORTED ELECTRIC
31 FUNKY LEAD
32 GRITTY ELECTRIC
33 METAL
34 MODERN ROCK
OTHER
35 CELLO
36 DENSE MUSIC STEM
37 FULL STRING SECTION
38 PIANO & STRINGS
39 POP HORN SECTION
40 TRUMPET
41 VOCAL CHOPS
PIANO
42 70s ROCK
43 DARK POP
44 ELECTRIC
45 HAMMOND ORGAN
46 POP KEYS
47 RHODES
48 RICH CLEAR
SYNTHS
49 BRASS LEAD
50 DUB DROP
51 LEAD
52 POP PLUCK
53 POP
54 RICH PLUCK
55 ROCK
56 SAW LEAD
VOCALS
57 FEMALE BACKING
58 FEMALE JAZZ
59 FEMALE POP
60 FEMALE R&B
61 FEMALE ROCK
62 MALE BRITPOP
63 MALE DARK POP
64 MALE POP BACKING
65 MALE POP
66 MALE R&B
67 MALE RAP
68 MALE ROCK BACKING
69 MALE ROCK
70 MALE VOCAL BUS
ELECTRONIC
71 DANCE
72 DRUM & BASS
73 DUBSTEP
74 EDM
75 HARDSTYLE
76 MOOMBAHTON
77 TRANCE
78 TRAP
HIP HOP
79 CONTEMPORARY
80 EAST COAST
81 GANGSTA RAP
82 GRIME
83 OLD SKOOL
84 POP RAP
HOUSE
85 CLASSIC
86 COMMERCIAL
87 DEEP
88 ELECTRO
89 FUTURE
90 PROGRESSIVE
91 TECH
92 TROPICAL
OTHER
93 COUNTRY
94 DISCO
95 FUNK
96 JAZZ
97 K POP
98 METAL
99 MOTOWN
100 ORCHESTRAL
101 REGGAE
102 REGGAETON
103 SOUL
POP
104 CONTEMPORARY
105 DANCE
106 ELECTRONIC
107 HIP HOP
108 LATIN
109 ROCK
110 SYNTH
111 WARM
R&B
112 90's
113 CONTEMPORARY
114 OLD SKOOL
115 RHYTHM & BLUES
ROCK
116 ALTERNATIVE
117 CLASSIC
118 CONTEMPORARY
119 ELECTRONIC
120 HARD
121 INDIE
122 PROGRESSIVE
STAR ENGINEERS
123 ALT-ROCK HERO
124 DANCE-POP GURU
125 EXPENSIVE POP GENIUS
126 HIP-HOP KING
127 MODERN ROCK MASTER
128 POP-SOUL CHIEF
129 R&B BOSS
)";

TEST (PresetTableTest, listsEveryGroupWithItsIdsAndNames)
{
    std::string found;
    auto category = -1;

    for (const auto& row : table())
    {
        if (row.category != category)
            found += std::string (groupNames()[static_cast<std::size_t> (row.category)]) + "\n";

        category = row.category;
        found += std::to_string (row.id) + " " + row.name + "\n";
    }

    EXPECT_EQ (found, listing);
}

TEST (PresetTableTest, holdsEveryIdOnce)
{
    std::vector<int> ids;

    for (const auto& row : table())
        ids.push_back (row.id);

    std::sort (ids.begin(), ids.end());
    ASSERT_EQ (ids.size(), 131u);

    for (std::size_t i = 0; i < ids.size(); ++i)
        EXPECT_EQ (ids[i], static_cast<int> (i) + 1);
}

TEST (PresetTableTest, givenRowsAreExact)
{
    const auto matches = [] (int id, float lufs, std::vector<float> values)
    {
        EXPECT_EQ (rowOf (id).lufs, lufs) << describe (rowOf (id));
        EXPECT_EQ (std::vector (rowOf (id).values.begin(), rowOf (id).values.end()), values) << describe (rowOf (id));
    };

    const std::vector<float> zeros (10, 0.0f);
    matches (1, 0.0f, zeros);
    matches (130, 0.0f, zeros);
    matches (
        131, -6.393050f, { -18.34f, -20.64f, -21.80f, -23.32f, -23.83f, -24.00f, -23.77f, -26.18f, -34.33f, -39.70f });
    matches (2, -12.406793f, { -42.34f, -49.51f, -57.93f, -66.11f, -69.31f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f });
    matches (4, -11.877717f, { -24.84f, -34.09f, -36.01f, -43.17f, -43.61f, -47.01f, -56.21f, -61.61f, -69.13f });
    matches (
        40, -35.943893f, { -58.74f, -47.50f, -42.19f, -41.76f, -43.03f, -44.79f, -48.35f, -49.34f, -54.24f, -59.35f });
    matches (
        71, -4.553161f, { -19.09f, -18.05f, -17.32f, -21.16f, -22.30f, -24.17f, -23.53f, -23.59f, -28.50f, -35.67f });
    matches (
        127, -4.324515f, { -14.61f, -13.21f, -12.78f, -13.65f, -16.72f, -20.43f, -24.72f, -30.36f, -38.09f, -43.71f });
}

TEST (PresetTableTest, onlyDarkPopOfBassHasNineValues)
{
    for (const auto& row : table())
        EXPECT_EQ (row.values.size(), row.id == 4 ? 9u : 10u) << describe (row);
}

TEST (PresetTableTest, valuesLieBetweenTheMetersFloorAndMinusTwelve)
{
    for (const auto& row : table())
        for (const auto value : row.values)
            if (! isGiven (row))
            {
                EXPECT_GE (value, floorDb) << describe (row);
                EXPECT_LE (value, -12.0f) << describe (row);
            }
}

// A zero is a target of 0 LUFS, which no music comes near.
TEST (PresetTableTest, onlyThe808HasZerosAmongThePresetsWithATarget)
{
    constexpr int eightOhEightId = 2;

    for (const auto& row : table())
        if (hasTarget (row) && row.id != eightOhEightId)
        {
            EXPECT_EQ (std::count (row.values.begin(), row.values.end(), 0.0f), 0) << describe (row);
        }
}

TEST (PresetTableTest, threeBandsBelowTheTopAreNeverEqual)
{
    for (const auto& row : table())
        EXPECT_TRUE (row.values[6] != row.values[7] || row.values[7] != row.values[8] || row.values[8] == 0.0f)
            << describe (row);
}

// Given rows keep what was measured there, which nothing reads: a target's top band is extrapolated anyway.
TEST (PresetTableTest, topBandIsTheExtrapolatedOne)
{
    auto compared = 0;

    for (const auto& row : table())
        if (! isGiven (row))
        {
            EXPECT_NEAR (row.values[9], topBandInUse (row), 0.0051f) << describe (row);
            ++compared;
        }

    EXPECT_EQ (compared, 123);
}

TEST (PresetTableTest, topBandInUseLiesBelowTheBandBelowIt)
{
    for (const auto& row : table())
        if (! isGiven (row))
        {
            EXPECT_LT (topBandInUse (row), row.values[8]) << describe (row);
            EXPECT_LE (topBandInUse (row), -12.0f) << describe (row);
        }
}

/** TRUMPET, a channel as soft as it was recorded, lies outside what the other channels keep to. */
constexpr int trumpetId = 40;

TEST (PresetTableTest, loudnessOfMixesAndChannelsKeepsToItsRange)
{
    for (const auto& row : table())
    {
        if (row.category >= firstMixCategory)
        {
            EXPECT_LE (row.lufs, -4.3f) << describe (row);
            EXPECT_GE (row.lufs, -8.5f) << describe (row);
        }
        else if (row.category > 0 && row.id != trumpetId)
        {
            EXPECT_LE (row.lufs, -10.0f) << describe (row);
            EXPECT_GE (row.lufs, -30.0f) << describe (row);
        }
    }
}

TEST (PresetTableTest, everyMixIsLouderThanEveryChannel)
{
    auto loudestChannel = -100.0f;
    auto softestMix = 0.0f;

    for (const auto& row : table())
        if (row.category >= firstMixCategory)
            softestMix = std::min (softestMix, row.lufs);
        else if (row.category > 0)
            loudestChannel = std::max (loudestChannel, row.lufs);

    EXPECT_GT (softestMix, loudestChannel);
}

TEST (PresetTableTest, noBandIsLouderThanTheWhole)
{
    for (const auto& row : table())
        for (const auto value : row.values)
            if (hasTarget (row) && value < 0.0f)
            {
                EXPECT_LT (value, row.lufs) << describe (row);
            }
}

TEST (PresetTableTest, twoGroupsAreNamedOther)
{
    EXPECT_STREQ (groupNames()[4], "OTHER");
    EXPECT_STREQ (groupNames()[11], "OTHER");
    EXPECT_EQ (std::count_if (groupNames().begin(),
                              groupNames().end(),
                              [] (const char* name) { return std::string (name) == "OTHER"; }),
               2);
}
} // namespace
