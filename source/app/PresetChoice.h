#pragma once

#include "core/presets/Presets.h"

#include <string>

/** Finds a preset by what a user types: its id, its name, or GROUP/NAME where several groups have one of that name. */
namespace PresetChoice
{
/** Case does not count. Throws CommandError, which names the candidates where the text fits several presets. */
[[nodiscard]] const Presets::Preset& find (const Presets::Library& library, const std::string& text);
} // namespace PresetChoice
