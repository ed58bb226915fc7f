#pragma once

#include "hosts/HostedPlugin.h"

#include <vector>

/** Saves a plug-in's state in a process of its own, so that a test loads what another process has saved. The test
    program itself is that process, started with other arguments. */
namespace ChunkHelper
{
/** What the other process sets before it saves: some of every kind, none at its default. */
void applySettings (HostedPlugin& plugin);

/** Starts the other process and reads what it saved; empty if that failed. */
[[nodiscard]] std::vector<char> stateFromAnotherProcess (PluginFormat format);

/** Whether the program's arguments ask for the other process's part, and that part: returns an exit code. */
[[nodiscard]] bool isAskedFor (int argumentCount, char** arguments);
[[nodiscard]] int run (char** arguments);
} // namespace ChunkHelper
