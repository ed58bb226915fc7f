#pragma once

#include <CLI/CLI.hpp>

/** Adds `render` and `match` to the program. */
void addRenderSubcommand (CLI::App& app);
