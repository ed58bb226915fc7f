#pragma once

#include "app/RenderTask.h"

#include <string>
#include <vector>

/** `solvane render`: a file through the equaliser into another, or many into a folder. */
struct RenderCommand
{
    /** The input and the output; where `folder` is given, inputs alone. */
    std::vector<std::string> files;

    /** Where the results go, under the names of their inputs; made if it is not there. */
    std::string folder;

    /** Files at a time; 0 for as many as there are processor cores. */
    int jobs = 0;

    /** PNG file to draw into what smart bands did, or nothing; for one file alone. */
    std::string report;

    /** Prints for scripts. */
    bool json = false;

    /** Prints nothing but errors. */
    bool quiet = false;

    /** What all files share. */
    RenderRequest common;

    /** Renders, and prints what was done. A file of several that fails is told on the error stream and leaves the
        others rendered. Throws CommandError, also in the end where one of several files failed. */
    void run() const;

private:
    [[nodiscard]] std::vector<RenderRequest> requests() const;
};
