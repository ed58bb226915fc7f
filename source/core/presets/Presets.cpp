#include "core/presets/Presets.h"

#include "targets/TopBand.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace Presets
{
namespace
{
/** Index of the lowest of the three bands that the top band is extrapolated from. */
constexpr std::size_t firstKnot = 6;

/** Groups whose names these are stand at the head of a part of the menu. */
struct Heading
{
    const char* firstGroup;
    const char* text;
};

constexpr Heading headings[] { { "BASS", "CHANNEL PRESETS" }, { "ELECTRONIC", "MIX/MASTER PRESETS" } };

std::size_t indexOf (int number) noexcept
{
    return static_cast<std::size_t> (number);
}

Numbers numbersFrom (float lufs, std::span<const float> values)
{
    Numbers numbers;
    numbers.lufs = lufs;
    numbers.count = static_cast<int> (values.size());
    std::copy (values.begin(), values.end(), numbers.values.begin());

    std::array<double, 3> knots {};
    std::copy_n (numbers.values.begin() + firstKnot, knots.size(), knots.begin());

    auto topBand = std::numeric_limits<float>::quiet_NaN();
    makeTopBandValue (knots, &topBand);

    if (! std::isnan (topBand))
        numbers.topBand = topBand;

    return numbers;
}
} // namespace

void SharedNumbers::store (const Numbers& numbers)
{
    const std::scoped_lock lock (writerLock);
    const auto next = storeCount.load (std::memory_order_relaxed) + 1;
    auto& place = places[next % placeCount];

    place.lufs.store (numbers.lufs, std::memory_order_relaxed);
    place.topBand.store (numbers.topBand.value_or (std::numeric_limits<float>::quiet_NaN()), std::memory_order_relaxed);

    for (std::size_t band = 0; band < place.values.size(); ++band)
        place.values[band].store (numbers.values[band], std::memory_order_relaxed);

    storeCount.fetch_add (1, std::memory_order_acq_rel);
}

Numbers SharedNumbers::load() const noexcept
{
    Numbers copy;
    copy.count = bandValueCount;
    unsigned taken;

    do
    {
        taken = storeCount.load (std::memory_order_acquire);
        const auto& place = places[taken % placeCount];
        const auto topBand = place.topBand.load (std::memory_order_relaxed);
        copy.topBand = std::isnan (topBand) ? std::nullopt : std::optional (topBand);
        copy.lufs = place.lufs.load (std::memory_order_relaxed);

        for (std::size_t band = 0; band < copy.values.size(); ++band)
            copy.values[band] = place.values[band].load (std::memory_order_relaxed);
    } while (storeCount.fetch_add (0, std::memory_order_acq_rel) - taken >= placeCount - 1);

    return copy;
}

Library::Library()
{
    for (std::size_t category = 0; category < presetGroups.size(); ++category)
        presetGroups[category].name = groupNames()[category];

    for (const auto& row : table())
    {
        presetGroups[indexOf (row.category)].presets.push_back (
            { row.id, row.category, row.name, row.lufs, { row.values.begin(), row.values.end() } });
        numbers[indexOf (row.id)] = numbersFrom (row.lufs, row.values);
    }

    userSetting.store (numbers[indexOf (userSettingId)]);
    select (balancedMasterId);
}

const Preset* Library::findPresetById (int id) const noexcept
{
    for (const auto& group : presetGroups)
        for (const auto& preset : group.presets)
            if (preset.id == id)
                return &preset;

    return nullptr;
}

const juce::String& Library::groupName (const Preset& preset) const noexcept
{
    return presetGroups[indexOf (preset.category)].name;
}

void Library::select (int id) noexcept
{
    const auto* found = findPresetById (id);
    current.store (found != nullptr ? found : findPresetById (noTargetsId), std::memory_order_release);
}

Numbers Library::numbersOf (const Preset& preset) const noexcept
{
    return preset.id == userSettingId ? userSetting.load() : numbers[indexOf (preset.id)];
}

void Library::setUserSetting (float lufs, std::span<const float, bandValueCount> values)
{
    userSetting.store (numbersFrom (lufs, values));
}

std::vector<MenuEntry> makeMenu (const Library& library, bool targetSetByUser)
{
    std::vector<MenuEntry> menu;

    for (const auto& group : library.groups())
    {
        std::vector<MenuEntry::Item> items;

        for (const auto& preset : group.presets)
            if (preset.id != userSettingId || targetSetByUser)
                items.push_back ({ preset.id, preset.name });

        for (const auto& heading : headings)
            if (group.name == heading.firstGroup)
                menu.push_back ({ MenuEntry::Kind::heading, heading.text, {} });

        if (! items.empty())
            menu.push_back ({ MenuEntry::Kind::subMenu, group.name, std::move (items) });
    }

    return menu;
}
} // namespace Presets
