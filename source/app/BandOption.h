#pragma once

#include <string>

/** One band as it is asked for on the command line: FREQ,GAIN,Q[,shelf][,ms=VALUE][,solo][,bypass]. */
struct BandOption
{
    float frequencyHz = 320.0f;
    float gainDb = 0.0f;
    float q = 1.0f;
    bool highShelf = false;
    float midSide = 0.5f;
    bool solo = false;
    bool bypass = false;

    /** Reads the option's text. Throws CommandError with a sentence that says what is wrong and what is allowed. */
    [[nodiscard]] static BandOption parse (const std::string& text);
};
