#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/** What became of a program. */
struct ProgramRun
{
    /** -1 where a signal ended it. */
    int exitCode = -1;
    std::string output;
    std::string errors;
};

struct ProgramSurroundings
{
    /** Where it runs; the test's own folder if empty. */
    std::string folder;

    /** No file may grow beyond this. */
    std::optional<std::uint64_t> largestFileBytes {};

    /** No more memory for data than this. */
    std::optional<std::uint64_t> largestMemoryBytes {};
};

/** Runs a program to its end. Throws where it cannot be started. */
ProgramRun
runProgram (const std::string& program, const std::vector<std::string>& arguments, const ProgramSurroundings& = {});

/** Runs a program on a terminal of its own, which shows output and errors as one text. Presses Ctrl-C once, as soon as
    `wantsInterrupt` says so of the text so far. */
ProgramRun runOnTerminal (const std::string& program,
                          const std::vector<std::string>& arguments,
                          const std::function<bool (const std::string& text)>& wantsInterrupt);
