#pragma once

/** `solvane params`: the parameters as a host sees them. */
struct ParamsCommand
{
    /** Prints the table. */
    void run() const;
};
