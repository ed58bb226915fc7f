#pragma once

#include "app/ExitCode.h"

#include <stdexcept>
#include <string>

/** A reason to stop, as a sentence for the user. Thrown within a command, caught in main. */
class CommandError : public std::runtime_error
{
public:
    CommandError (ExitCode codeToUse, const std::string& sentence) : std::runtime_error (sentence), exitCode (codeToUse)
    {
    }

    [[nodiscard]] ExitCode code() const noexcept { return exitCode; }

private:
    ExitCode exitCode;
};
