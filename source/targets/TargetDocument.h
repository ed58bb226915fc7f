#pragma once

#include "targets/MeanTarget.h"

#include <string>
#include <variant>
#include <vector>

/** A target as a file holds it: JSON of `format`, `version`, `name`, `lufs`, `frequencies`, `values` and `tracks`.

    A value that nothing was measured for is `null`. A reader needs `format`, `version`, `lufs` and ten `values`; all
    else tells people where the numbers are from. Any thread. */
struct TargetDocument
{
    /** A track that the numbers are from. */
    struct Track
    {
        std::string path;
        double fileRate = 0.0;

        /** The rate that it was measured at. */
        double sessionRate = 0.0;

        /** Length of the whole file in seconds, and the parts that counted, in samples at the session's rate. */
        double seconds = 0.0;
        std::vector<TrackRange> ranges;
        TrackReading reading;
    };

    std::string name;
    MeanTarget target;
    std::vector<Track> tracks;

    /** The text of the file. */
    [[nodiscard]] std::string text() const;

    /** What is wrong with a text, as the end of a sentence that begins with the file's name. */
    struct Refusal
    {
        std::string reason;
    };

    /** Reads name and target from the bytes of a file, whatever they are. The name is empty where there is none. */
    [[nodiscard]] static std::variant<TargetDocument, Refusal> parse (const std::string& text);
};
