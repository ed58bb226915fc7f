#pragma once

#include <sndfile.h>

#include <optional>
#include <string>
#include <vector>

/** What a sound file carries beside its samples: title, artist, album, track number, genre, date, comment, copyright,
    licence; broadcast and cart chunk, cue points, loops. Pictures are not among it, and neither is the name of the
    program that made the file. */
struct SoundExtras
{
    struct Text
    {
        /** The library's SF_STR_... */
        int kind = 0;
        std::string text;
    };

    std::vector<Text> texts;

    /** The library's own structures, to the byte; empty where the file has none. */
    std::vector<char> broadcast;
    std::vector<char> cart;
    std::vector<char> cues;
    std::optional<SF_INSTRUMENT> instrument;

    /** Everything in a file that was opened. */
    [[nodiscard]] static SoundExtras of (SNDFILE* handle);

    /** Gives it to a file before its first sample. What the container has no place for is left out. */
    void storeIn (SNDFILE* handle) const;
};
