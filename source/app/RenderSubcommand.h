#pragma once

#include <CLI/CLI.hpp>

/** Adds `render` to the program. */
void addRenderSubcommand (CLI::App& app);
