// The library's entry for hosts. The framework's own, which has another name here, makes no instance for a host that
// announces no largest block, although the processor takes blocks of any length: what such a host leaves out is added.

#include <lv2/atom/atom.h>
#include <lv2/buf-size/buf-size.h>
#include <lv2/core/lv2.h>
#include <lv2/options/options.h>
#include <lv2/urid/urid.h>

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

extern "C" const LV2_Descriptor* solvane_framework_lv2_descriptor (std::uint32_t index);

namespace
{
/** The longest block that is equalised in one piece. */
constexpr std::int32_t largestBlockIfNotAnnounced = 8192;

using Features = std::vector<const LV2_Feature*>;

Features listOf (const LV2_Feature* const* features)
{
    Features list;

    for (; features != nullptr && *features != nullptr; ++features)
        list.push_back (*features);

    return list;
}

const LV2_Feature* find (const Features& features, std::string_view uri)
{
    const auto found = std::find_if (
        features.begin(), features.end(), [uri] (const LV2_Feature* feature) { return feature->URI == uri; });
    return found != features.end() ? *found : nullptr;
}

/** What the host offers as options, without the end mark. */
std::vector<LV2_Options_Option> optionsOf (const Features& features)
{
    std::vector<LV2_Options_Option> options;

    if (const auto* feature = find (features, LV2_OPTIONS__options))
        for (const auto* option = static_cast<const LV2_Options_Option*> (feature->data);
             option != nullptr && (option->key != 0 || option->value != nullptr);
             ++option)
            options.push_back (*option);

    return options;
}

LV2_Handle instantiate (const LV2_Descriptor* descriptor,
                        double sampleRate,
                        const char* bundlePath,
                        const LV2_Feature* const* features)
{
    auto given = listOf (features);
    auto options = optionsOf (given);

    if (const auto* mapFeature = find (given, LV2_URID__map))
    {
        const auto& map = *static_cast<const LV2_URID_Map*> (mapFeature->data);
        const auto lengthKey = map.map (map.handle, LV2_BUF_SIZE__maxBlockLength);

        if (std::none_of (options.begin(), options.end(), [&] (const auto& option) { return option.key == lengthKey; }))
            options.push_back ({ LV2_OPTIONS_INSTANCE,
                                 0,
                                 lengthKey,
                                 sizeof (largestBlockIfNotAnnounced),
                                 map.map (map.handle, LV2_ATOM__Int),
                                 &largestBlockIfNotAnnounced });
    }

    options.push_back ({ LV2_OPTIONS_INSTANCE, 0, 0, 0, 0, nullptr });

    const LV2_Feature bounded { LV2_BUF_SIZE__boundedBlockLength, nullptr };
    const LV2_Feature allOptions { LV2_OPTIONS__options, options.data() };

    std::erase_if (given,
                   [] (const LV2_Feature* feature) { return feature->URI == std::string_view (LV2_OPTIONS__options); });
    given.insert (given.end(), { &bounded, &allOptions, nullptr });

    return solvane_framework_lv2_descriptor (0)->instantiate (descriptor, sampleRate, bundlePath, given.data());
}

LV2_Descriptor withOwnInstantiate (LV2_Descriptor descriptor)
{
    descriptor.instantiate = instantiate;
    return descriptor;
}
} // namespace

LV2_SYMBOL_EXPORT const LV2_Descriptor* lv2_descriptor (std::uint32_t index)
{
    if (index != 0)
        return nullptr;

    static const auto descriptor = withOwnInstantiate (*solvane_framework_lv2_descriptor (0));
    return &descriptor;
}
