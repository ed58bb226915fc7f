#pragma once

/** What the program's exit status says; the manual lists them. */
enum class ExitCode
{
    success = 0,
    failure = 1,
    badArguments = 2,
    unreadableInput = 3,
    unsupportedAudio = 4,
    unwritableOutput = 5,
    interrupted = 130
};
