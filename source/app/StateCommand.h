#pragma once

#include <string>

/** `solvane state`: what a session block holds, in words. */
struct StateCommand
{
    std::string file;
    bool json = false;

    /** Throws CommandError when the file is no session block. */
    void run() const;
};
