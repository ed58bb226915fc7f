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

    /** A session's band that is not in use has its place among the ten all the same. */
    bool active = true;

    /** Whether it is worth a word: in use, or with a gain that is heard although it is switched off. */
    [[nodiscard]] bool isHeard() const noexcept { return active || gainDb != 0.0f; }

    /** Reads the option's text; a frequency may be in thousands, as 2.5k. Throws CommandError with a sentence that says
        what is wrong and what is allowed. @param source what the sentence begins with, before the text */
    [[nodiscard]] static BandOption parse (const std::string& text, const std::string& source = "--band ");
};
