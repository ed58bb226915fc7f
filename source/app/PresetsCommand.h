#pragma once

/** `solvane presets`: the library by group. */
struct PresetsCommand
{
    bool json = false;

    void run() const;
};
