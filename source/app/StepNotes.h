#pragma once

#include "app/EqualiserSettings.h"

#include <string>
#include <vector>

/** Sentences on what was asked for between the steps in which the plug-in's parameters go, and what became of it.
    @param model holds the settings already */
[[nodiscard]] std::vector<std::string> stepNotes (const EqualiserSettings& settings, const PluginModel& model);
