#include "gui/editor/PresetMenu.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{
juce::StringArray namesOf (const juce::PopupMenu& menu)
{
    juce::StringArray names;

    for (juce::PopupMenu::MenuItemIterator items (menu); items.next();)
        if (const auto& item = items.getItem(); ! item.isSeparator)
            names.add (item.isSectionHeader ? "[" + item.text + "]" : item.text);

    return names;
}

const juce::PopupMenu* subMenuOf (const juce::PopupMenu& menu, const juce::String& name, int which = 0)
{
    for (juce::PopupMenu::MenuItemIterator items (menu); items.next();)
        if (items.getItem().text == name && which-- == 0)
            return items.getItem().subMenu.get();

    return nullptr;
}

class PresetMenuTest : public testing::Test
{
protected:
    Presets::Library library;

    /** The iterator points into the menu, so it is kept. */
    juce::PopupMenu menu;

    void make (bool targetSetByUser, int currentId = Presets::balancedMasterId)
    {
        menu = PresetMenu::make (Presets::makeMenu (library, targetSetByUser), currentId);
    }
};
} // namespace

TEST_F (PresetMenuTest, hasTheTwoHeadingsAndAllGroups)
{
    make (false);
    EXPECT_EQ (namesOf (menu),
               juce::StringArray ({ "PRESET",
                                    "[CHANNEL PRESETS]",
                                    "BASS",
                                    "DRUMS",
                                    "GUITAR",
                                    "OTHER",
                                    "PIANO",
                                    "SYNTHS",
                                    "VOCALS",
                                    "[MIX/MASTER PRESETS]",
                                    "ELECTRONIC",
                                    "HIP HOP",
                                    "HOUSE",
                                    "OTHER",
                                    "POP",
                                    "R&B",
                                    "ROCK",
                                    "STAR ENGINEERS" }));
}

TEST_F (PresetMenuTest, anItemsIdIsItsPresets)
{
    make (false);
    const auto* house = subMenuOf (menu, "HOUSE");
    ASSERT_NE (house, nullptr);
    juce::PopupMenu::MenuItemIterator items (*house);
    ASSERT_TRUE (items.next());
    EXPECT_EQ (items.getItem().text, "CLASSIC");
    EXPECT_EQ (items.getItem().itemID, 85);
    EXPECT_EQ (namesOf (*subMenuOf (menu, "OTHER", 0))[0], "CELLO");
    EXPECT_EQ (namesOf (*subMenuOf (menu, "OTHER", 1))[0], "COUNTRY");
}

TEST_F (PresetMenuTest, userSettingAppearsOnceATargetWasSet)
{
    make (false);
    EXPECT_EQ (namesOf (*subMenuOf (menu, "PRESET")), juce::StringArray ({ "NO TARGETS", "BALANCED MASTER" }));
    make (true);
    EXPECT_EQ (namesOf (*subMenuOf (menu, "PRESET")),
               juce::StringArray ({ "NO TARGETS", "USER SETTING", "BALANCED MASTER" }));
}

TEST_F (PresetMenuTest, thePresetInUseIsTickedWithItsGroup)
{
    make (false, 91); // HOUSE, TECH
    auto ticked = 0;

    for (juce::PopupMenu::MenuItemIterator items (menu, true); items.next();)
    {
        if (! items.getItem().isTicked)
            continue;

        ++ticked;
        EXPECT_TRUE (items.getItem().text == "HOUSE" || items.getItem().itemID == 91) << items.getItem().text;
    }

    EXPECT_EQ (ticked, 2);
}
