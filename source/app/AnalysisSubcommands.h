#pragma once

#include <CLI/CLI.hpp>

/** Adds `measure`, `target`, `presets`, `params` and `state` to the program. */
void addAnalysisSubcommands (CLI::App& app);
