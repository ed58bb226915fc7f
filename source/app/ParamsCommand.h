#pragma once

/** `solvane params`: the parameters as a host sees them. */
struct ParamsCommand
{
    bool json = false;

    /** Prints the list. */
    void run() const;
};
