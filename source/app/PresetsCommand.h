#pragma once

/** `solvane presets`: the library by group, with the values that a signal is compared with. At 18 kHz those are
    extrapolated; JSON has the stored ones beside them. */
struct PresetsCommand
{
    bool json = false;

    void run() const;
};
