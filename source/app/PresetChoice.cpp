#include "app/PresetChoice.h"

#include "app/CommandError.h"

#include <vector>

namespace
{
bool fits (const Presets::Library& library, const Presets::Preset& preset, const juce::String& wanted)
{
    return preset.name.equalsIgnoreCase (wanted)
           || (library.groupName (preset) + "/" + preset.name).equalsIgnoreCase (wanted);
}

bool isNumber (const juce::String& text)
{
    return text.isNotEmpty() && text.containsOnly ("0123456789");
}

/** The preset whose id a text is; null for a name, be it one of digits. */
const Presets::Preset* presetByIdOf (const Presets::Library& library, const juce::String& text)
{
    constexpr int mostDigits = 3;
    return isNumber (text) && text.length() <= mostDigits ? library.findPresetById (text.getIntValue()) : nullptr;
}

std::string described (const Presets::Library& library, const Presets::Preset& preset)
{
    return (juce::String (preset.id) + " (" + library.groupName (preset) + "/" + preset.name + ")").toStdString();
}
} // namespace

const Presets::Preset& PresetChoice::find (const Presets::Library& library, const std::string& text)
{
    const auto wanted = juce::String::fromUTF8 (text.c_str()).trim();

    if (const auto* preset = presetByIdOf (library, wanted))
        return *preset;

    std::vector<const Presets::Preset*> found;

    for (const auto& group : library.groups())
        for (const auto& preset : group.presets)
            if (fits (library, preset, wanted))
                found.push_back (&preset);

    if (found.empty() && isNumber (wanted))
        throw CommandError (ExitCode::badArguments,
                            "--preset " + text + ": ids run from 1 to " + std::to_string (Presets::highestId) + ".");

    if (found.empty())
        throw CommandError (ExitCode::badArguments,
                            "--preset " + text + ": there is no such preset. `solvane presets` lists them.");

    if (found.size() > 1)
    {
        std::string candidates;

        for (const auto* preset : found)
            candidates += (candidates.empty() ? "" : ", ") + described (library, *preset);

        throw CommandError (ExitCode::badArguments,
                            "--preset " + text + " fits several presets: " + candidates + ". Give the id.");
    }

    return *found.front();
}
