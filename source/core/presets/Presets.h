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

/** Numbers of ten values that one thread writes and others read whole, the audio thread too.

    Each new set goes to the next of several places, so that a reader is disturbed only if as many sets as there are
    places come while it copies one; it then copies again. */
class SharedNumbers
{
public:
    /** One writer at a time waits for another. Any thread but the audio thread. */
    void store (const Numbers& numbers);

    /** Any thread; real-time safe. */
    [[nodiscard]] Numbers load() const noexcept;

private:
    static constexpr unsigned placeCount = 8;

    struct Place
    {
        std::atomic<float> lufs { 0.0f };
        std::array<std::atomic<float>, bandValueCount> values {};

        /** Not a number where there is none. */
        std::atomic<float> topBand { 0.0f };
    };

    std::array<Place, placeCount> places;
    mutable std::atomic<unsigned> storeCount { 0 };
    std::mutex writerLock;
};

/** An instance's own copy of the library, with its own USER SETTING.

    The records never change after construction, so that pointers to presets stay good for life. USER SETTING alone
    changes its numbers, through the methods below; its record keeps those that it was compiled with. */
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

    /** A copy of the numbers of one of this library's presets. Any thread; real-time safe. */
    [[nodiscard]] Numbers numbersOf (const Preset& preset) const noexcept;

    /** Writes USER SETTING. Any thread but the audio thread. */
    void setUserSetting (float lufs, std::span<const float, bandValueCount> values);

private:
    std::array<PresetGroup, groupCount> presetGroups;
    std::array<Numbers, highestId + 1> numbers;
    SharedNumbers userSetting;
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
