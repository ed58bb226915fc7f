#pragma once

#include <string>
#include <vector>

/** `solvane measure`: loudness and band levels of recordings next to a target's. */
struct MeasureCommand
{
    std::vector<std::string> files;

    /** Id or name of the target. */
    std::string preset = "131";
    bool json = false;

    /** PNG file to draw, or nothing. */
    std::string picture;

    /** Measures every file and prints. Throws CommandError. */
    void run() const;
};
