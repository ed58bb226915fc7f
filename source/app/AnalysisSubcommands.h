#pragma once

#include <CLI/CLI.hpp>

/** Adds `measure`, `presets` and `state` to the program. */
void addAnalysisSubcommands (CLI::App& app);
