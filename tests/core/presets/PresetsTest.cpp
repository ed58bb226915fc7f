#include "core/presets/Presets.h"

#include "support/RealTimeGuard.h"
#include "targets/GainTargets.h"
#include "targets/TopBand.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <limits>
#include <string>
#include <thread>
#include <vector>

using namespace Presets;

namespace
{
using testing::Each;
using testing::ElementsAre;

constexpr int danceId = 71;
constexpr int darkPopOfBassId = 4;
constexpr int eightOhEightId = 2;

Numbers numbersById (const Library& library, int id)
{
    return library.numbersOf (*library.findPresetById (id));
}

/** What the room does with a chosen preset: as many values as there are, then the top band where there is one. */
void applyTo (std::array<float, bandValueCount>& targets, const Numbers& numbers)
{
    std::copy_n (numbers.values.begin(), numbers.count, targets.begin());

    if (numbers.topBand.has_value())
        targets[9] = *numbers.topBand;
}

std::vector<std::string> titlesOf (const std::vector<MenuEntry>& menu)
{
    std::vector<std::string> titles;

    for (const auto& entry : menu)
        titles.push_back ((entry.kind == MenuEntry::Kind::heading ? "--- " : "") + entry.text.toStdString());

    return titles;
}

bool offers (const std::vector<MenuEntry>& menu, int id)
{
    for (const auto& entry : menu)
        for (const auto& item : entry.items)
            if (item.id == id)
                return true;

    return false;
}

TEST (PresetsTest, balancedMasterIsCurrentInANewLibrary)
{
    const Library library;
    EXPECT_EQ (library.currentPreset().id, 131);
    EXPECT_EQ (library.currentPreset().name, "BALANCED MASTER");
    EXPECT_EQ (&library.currentPreset(), &library.groups()[0].presets[2]);
    EXPECT_EQ (library.currentPreset().lufs, -6.393050f);
}

TEST (PresetsTest, everyIdIsFoundInTheGroupOfItsCategory)
{
    const Library library;

    for (auto id = 1; id <= highestId; ++id)
    {
        const auto* preset = library.findPresetById (id);
        ASSERT_NE (preset, nullptr) << id;
        EXPECT_EQ (preset->id, id);

        const auto& group = library.groups()[static_cast<std::size_t> (preset->category)];
        EXPECT_TRUE (preset >= group.presets.data() && preset < group.presets.data() + group.presets.size()) << id;
        EXPECT_EQ (library.groupName (*preset), group.name);
    }
}

TEST (PresetsTest, copiesOfTheTableAreWhole)
{
    const Library library;

    for (const auto& row : table())
    {
        const auto* preset = library.findPresetById (row.id);
        EXPECT_EQ (preset->name, row.name);
        EXPECT_EQ (preset->lufs, row.lufs);
        EXPECT_TRUE (std::equal (preset->values.begin(), preset->values.end(), row.values.begin(), row.values.end()));
    }

    for (const auto& group : library.groups())
        EXPECT_EQ (group.kind, 0);
}

TEST (PresetsTest, idsWithoutAPresetAreNotFoundAndSelectNoTargets)
{
    Library library;

    for (const auto id : { 0, -1, 132, std::numeric_limits<int>::max(), std::numeric_limits<int>::min() })
    {
        library.select (danceId);
        EXPECT_EQ (library.findPresetById (id), nullptr);
        library.select (id);
        EXPECT_EQ (library.currentPreset().id, noTargetsId) << id;
    }
}

TEST (PresetsTest, selectionNeitherAllocatesNorLocks)
{
    Library library;
    const RealTimeGuard guard;

    for (auto id = 0; id <= highestId + 1; ++id)
        library.select (id);

    EXPECT_EQ (guard.allocations(), 0);
    EXPECT_EQ (guard.locks(), 0);
}

TEST (PresetsTest, noTargetsAsksForZeroEverywhere)
{
    Library library;
    library.select (noTargetsId);
    const auto numbers = library.numbersOf (library.currentPreset());
    EXPECT_EQ (numbers.lufs, 0.0f);
    EXPECT_THAT (numbers.values, Each (0.0f));
    EXPECT_EQ (numbers.count, 10);
    EXPECT_FALSE (numbers.topBand.has_value()) << "three equal values have no curve";
}

TEST (PresetsTest, topBandOfEveryPresetIsTheExtrapolatedOne)
{
    const Library library;

    for (const auto& row : table())
    {
        auto expected = 1.0f;
        makeTopBandValue ({ static_cast<double> (row.values[6]),
                            static_cast<double> (row.values[7]),
                            static_cast<double> (row.values[8]) },
                          &expected);

        const auto numbers = numbersById (library, row.id);
        EXPECT_EQ (numbers.topBand.value_or (1.0f), expected) << row.name;
        EXPECT_EQ (numbers.lufs, row.lufs);
        EXPECT_EQ (numbers.count, static_cast<int> (row.values.size()));
    }
}

TEST (PresetsTest, darkPopOfBassLeavesNothingOfAPresetWithTenValues)
{
    const Library library;
    std::array<float, bandValueCount> afterDance {};
    std::array<float, bandValueCount> afterTrumpet {};

    applyTo (afterDance, numbersById (library, danceId));
    applyTo (afterTrumpet, numbersById (library, 40));
    ASSERT_NE (afterDance[9], afterTrumpet[9]);

    applyTo (afterDance, numbersById (library, darkPopOfBassId));
    applyTo (afterTrumpet, numbersById (library, darkPopOfBassId));
    EXPECT_EQ (afterDance, afterTrumpet);

    auto expected = 0.0f;
    makeTopBandValue ({ static_cast<double> (-56.21f), static_cast<double> (-61.61f), static_cast<double> (-69.13f) },
                      &expected);
    EXPECT_EQ (afterDance[9], expected);
}

TEST (PresetsTest, aTargetOfZeroAsksForALargeRise)
{
    const Library library;
    const auto numbers = numbersById (library, eightOhEightId);
    std::array<float, bandValueCount> targets {};
    applyTo (targets, numbers);
    EXPECT_EQ (targets[8], 0.0f);
    EXPECT_EQ (targets[9], 0.0f);

    std::array<float, bandValueCount> levels {};
    levels.fill (-30.0f);
    GainTargets gains;
    gains.updateGainTargets (levels, targets, numbers.lufs - (-20.0f), false);
    EXPECT_NEAR (gains.gainTarget[8].load(), 30.0f - (-12.406793f + 20.0f), 1.0e-4f);
}

TEST (PresetsTest, userSettingIsWrittenThroughItsNumbers)
{
    Library library;
    const std::array<float, bandValueCount> values { -20, -21, -22, -23, -24, -25, -26, -28, -33, -40 };
    const auto* before = library.findPresetById (userSettingId);
    library.setUserSetting (-9.5f, values);

    const auto numbers = numbersById (library, userSettingId);
    EXPECT_EQ (numbers.lufs, -9.5f);
    EXPECT_EQ (numbers.values, values);
    EXPECT_EQ (numbers.count, 10);

    auto expected = 0.0f;
    makeTopBandValue ({ -26.0, -28.0, -33.0 }, &expected);
    EXPECT_EQ (numbers.topBand, expected);

    EXPECT_EQ (library.findPresetById (userSettingId), before) << "pointers stay good";
}

TEST (PresetsTest, userSettingOfOneLibraryIsNotThatOfAnother)
{
    Library first;
    const Library second;
    std::array<float, bandValueCount> values {};
    values.fill (-31.0f);
    first.setUserSetting (-9.5f, values);

    EXPECT_EQ (numbersById (second, userSettingId).lufs, 0.0f);
    EXPECT_THAT (numbersById (second, userSettingId).values, Each (0.0f));
}

TEST (PresetsTest, aUserSettingThatIsNotANumberHasNoTopBand)
{
    Library library;
    std::array<float, bandValueCount> values { -20, -21, -22, -23, -24, -25, -26, -28, -33, -40 };
    values[7] = std::numeric_limits<float>::quiet_NaN();
    library.setUserSetting (-9.5f, values);
    EXPECT_FALSE (numbersById (library, userSettingId).topBand.has_value());
}

TEST (PresetsTest, aReaderSeesOneUserSettingOrTheOtherWhole)
{
    Library library;
    std::array<float, bandValueCount> ones {};
    std::array<float, bandValueCount> twos {};
    ones.fill (-31.0f);
    twos.fill (-32.0f);
    library.setUserSetting (-31.0f, ones);

    std::atomic<bool> stop { false };
    std::thread writer (
        [&]
        {
            for (auto turn = 0; ! stop.load(); ++turn)
                library.setUserSetting (turn % 2 == 0 ? -32.0f : -31.0f, turn % 2 == 0 ? twos : ones);
        });

    auto torn = 0;

    for (auto read = 0; read < 20000; ++read)
    {
        const auto numbers = numbersById (library, userSettingId);
        torn += std::count (numbers.values.begin(), numbers.values.end(), numbers.lufs) == 10 ? 0 : 1;
    }

    stop = true;
    writer.join();
    EXPECT_EQ (torn, 0);
}

TEST (PresetsTest, selectionFromAnotherThreadIsSeenWhole)
{
    Library library;
    std::atomic<bool> stop { false };
    std::thread writer (
        [&]
        {
            for (auto turn = 0; ! stop.load(); ++turn)
                library.select (turn % (highestId + 2));
        });

    for (auto read = 0; read < 20000; ++read)
    {
        const auto& preset = library.currentPreset();
        ASSERT_EQ (&preset, library.findPresetById (preset.id));
    }

    stop = true;
    writer.join();
}

TEST (PresetsTest, menuHasTwoHeadingsAndASubMenuForEachGroup)
{
    const Library library;
    EXPECT_THAT (titlesOf (makeMenu (library, true)),
                 ElementsAre ("PRESET",
                              "--- CHANNEL PRESETS",
                              "BASS",
                              "DRUMS",
                              "GUITAR",
                              "OTHER",
                              "PIANO",
                              "SYNTHS",
                              "VOCALS",
                              "--- MIX/MASTER PRESETS",
                              "ELECTRONIC",
                              "HIP HOP",
                              "HOUSE",
                              "OTHER",
                              "POP",
                              "R&B",
                              "ROCK",
                              "STAR ENGINEERS"));
}

TEST (PresetsTest, menusNamedOtherAreToldApartByTheirPlace)
{
    const Library library;
    const auto menu = makeMenu (library, true);
    ASSERT_EQ (menu[5].text, "OTHER");
    ASSERT_EQ (menu[13].text, "OTHER");
    EXPECT_EQ (menu[5].items.front().text, "CELLO");
    EXPECT_EQ (menu[13].items.front().text, "COUNTRY");
}

TEST (PresetsTest, menuLeavesUserSettingOutUntilATargetWasSet)
{
    const Library library;
    const auto without = makeMenu (library, false);
    const auto with = makeMenu (library, true);

    EXPECT_FALSE (offers (without, userSettingId));
    EXPECT_TRUE (offers (with, userSettingId));
    EXPECT_EQ (titlesOf (without), titlesOf (with));

    ASSERT_EQ (without.front().items.size(), 2u);
    EXPECT_EQ (without.front().items[0].text, "NO TARGETS");
    EXPECT_EQ (without.front().items[1].text, "BALANCED MASTER");
    EXPECT_EQ (with.front().items[1].text, "USER SETTING");
}

TEST (PresetsTest, menuOffersEveryPresetOnce)
{
    const Library library;
    std::vector<int> ids;

    for (const auto& entry : makeMenu (library, true))
    {
        EXPECT_EQ (entry.items.empty(), entry.kind == MenuEntry::Kind::heading);

        for (const auto& item : entry.items)
        {
            ids.push_back (item.id);
            EXPECT_EQ (item.text, library.findPresetById (item.id)->name);
        }
    }

    std::sort (ids.begin(), ids.end());
    ASSERT_EQ (ids.size(), 131u);
    EXPECT_EQ (ids.front(), 1);
    EXPECT_EQ (ids.back(), 131);
    EXPECT_EQ (std::adjacent_find (ids.begin(), ids.end()), ids.end());
}
} // namespace
