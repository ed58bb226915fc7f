#pragma once

#include <juce_core/juce_core.h>

#include <array>
#include <atomic>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

/** Tonal balances to aim for. A preset holds no filter settings. */
namespace Presets
{
constexpr int groupCount = 16;
constexpr int bandValueCount = 10;

constexpr int noTargetsId = 1;
constexpr int userSettingId = 130;
constexpr int balancedMasterId = 131;
constexpr int highestId = 131;

/** Overall loudness and ten band loudness values of a piece of reference material, in LUFS, for the analysis bands.

    A value of 0.0 means that there was nothing above the meter's floor, and takes part in the arithmetic as 0.0. */
struct Preset
{
    juce::int32 id = 0;

    /** Index of its group. */
    juce::int32 category = 0;
    juce::String name;
    float lufs = 0.0f;

    /** Ten values; one preset has nine. */
    std::vector<float> values;
};

struct PresetGroup
{
    juce::int32 kind = 0;
    juce::String name;
    std::vector<Preset> presets;
};

/** A row of the library as it is compiled in. */
struct TableRow
{
    int id;
    int category;
    const char* name;
    float lufs;
    std::span<const float> values;
};

/** Names of the groups by category. Two are named OTHER: channels of a mix, and whole mixes. */
[[nodiscard]] const std::array<const char*, groupCount>& groupNames() noexcept;

/** All 131 rows, by group and then in menu order. */
[[nodiscard]] std::span<const TableRow> table() noexcept;

/** An instance's own copy of the library, with its own USER SETTING.

    The vectors never change their shape after construction, so that pointers to presets stay good for life. USER
    SETTING alone changes its numbers: its record is read and written under a mutex, through the methods below. */
class Library
{
public:
    Library();

    Library (const Library&) = delete;
    Library& operator= (const Library&) = delete;

    /** The preset with this id, or null. Any thread; real-time safe. Of USER SETTING read id, category and name only.
     */
    [[nodiscard]] const Preset* findPresetById (int id) const noexcept;

    [[nodiscard]] const juce::String& groupName (const Preset& preset) const noexcept;

    [[nodiscard]] const std::array<PresetGroup, groupCount>& groups() const noexcept { return presetGroups; }

    /** The preset in use, never null. Any thread. */
    [[nodiscard]] const Preset& currentPreset() const noexcept { return *current.load (std::memory_order_acquire); }

    /** Takes the preset with this id; an id that no preset has selects NO TARGETS. Any thread; real-time safe. */
    void select (int id) noexcept;

    /** What a preset asks for: its loudness and values, and the top band's extrapolated value where there is one. */
    struct Numbers
    {
        float lufs = 0.0f;
        std::array<float, bandValueCount> values {};

        /** How many of the values the preset has. */
        int count = 0;

        /** Of 18 kHz; nothing where the curve through the three bands below is undefined. */
        std::optional<float> topBand;
    };

    /** A copy of the numbers of one of this library's presets. Any thread; takes the mutex for USER SETTING only. */
    [[nodiscard]] Numbers numbersOf (const Preset& preset) const;

    /** Writes USER SETTING. Any thread but the audio thread. */
    void setUserSetting (float lufs, std::span<const float, bandValueCount> values);

private:
    [[nodiscard]] Preset& userSetting() noexcept { return presetGroups[0].presets[1]; }

    std::array<PresetGroup, groupCount> presetGroups;
    std::array<Numbers, highestId + 1> numbers;
    mutable std::mutex userSettingLock;
    std::atomic<const Preset*> current { nullptr };
};

/** One line of the preset menu, which is built at each opening. */
struct MenuEntry
{
    enum class Kind
    {
        heading,
        subMenu
    };

    struct Item
    {
        int id;
        juce::String text;
    };

    Kind kind;
    juce::String text;

    /** Of a sub-menu. */
    std::vector<Item> items;
};

/** The menu: headings before BASS and ELECTRONIC, a sub-menu for each group; USER SETTING only once a target was set.
    Nothing in the two sub-menus OTHER tells them apart but the heading that each stands under. */
[[nodiscard]] std::vector<MenuEntry> makeMenu (const Library& library, bool targetSetByUser);
} // namespace Presets
