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

    /** No notes and no progress bar. */
    bool quiet = false;

    /** The part to measure, as START-END; the whole, if empty. */
    std::string range;

    /** PNG file to draw, or nothing. */
    std::string picture;

    /** Measures every file and prints. A file that fails is told on the error stream and leaves the others measured.
        Throws CommandError, also in the end where one of several files failed. */
    void run() const;
};
