#pragma once

#include <optional>
#include <string>

/** A part of a recording, in seconds from its start. */
struct TimeRange
{
    double start = 0.0;

    /** Nothing: to the end of the recording. */
    std::optional<double> end;

    /** Reads START-END, either in seconds or as MM:SS or H:MM:SS, with a fraction or without; an END that is left out
       is the end of the recording. Throws CommandError. */
    [[nodiscard]] static TimeRange parse (const std::string& text);

    /** A time as M:SS, with the hours before it where there are any. A fraction is cut off. */
    [[nodiscard]] static std::string textOf (double seconds);
};
