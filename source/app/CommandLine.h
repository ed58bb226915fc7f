#pragma once

#include "app/ExitCode.h"

#include <string>

/** The program: reads the arguments, and runs the command that they name.

    @param version what `--version` says
    @returns success; every failure is thrown, as CommandError where it has a status of its own */
[[nodiscard]] ExitCode runCommandLine (int argumentCount, char** arguments, const std::string& version);
