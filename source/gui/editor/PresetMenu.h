#pragma once

#include "core/presets/Presets.h"

#include <juce_gui_basics/juce_gui_basics.h>

/** The menu from which a preset is chosen. */
namespace PresetMenu
{
/** Headings and sub-menus of presets, whose item ids are preset ids; the preset in use is ticked. */
[[nodiscard]] juce::PopupMenu make (const std::vector<Presets::MenuEntry>& entries, int currentId);
} // namespace PresetMenu
