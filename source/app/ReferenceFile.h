#pragma once

#include "app/TimeRange.h"
#include "targets/TrackAnalysis.h"

#include <optional>
#include <string>
#include <vector>

/** A reference track as the command line names it: a file, and the parts of it that count. */
struct ReferenceFile
{
    std::string path;

    /** In the order in which they are measured; the whole file, if empty. */
    std::vector<TimeRange> ranges;
};

/** What a reference track measures. */
struct ReferenceReading
{
    std::string path;
    double fileRate = 0.0;

    /** The rate that it was measured at, after a conversion where that is another. */
    double sessionRate = 0.0;

    /** Length of the whole file, and the parts that counted, in seconds. */
    double seconds = 0.0;
    std::vector<TrackRange> ranges;
    TrackReading reading;

    /** What a reader has to know, in sentences. */
    std::vector<std::string> notes;
};

/** Reads a file, converts it to a session's rate as the plug-in does, and measures it as the plug-in measures its
    reference tracks; of ranges, reads up to the end of the last one. Memory does not depend on the file's length.
   Throws CommandError.

    @param sessionRate one of the six that the filters serve, for a file of any rate; nothing for the file's own, which
                       has to be one of them then
    @param quiet       no progress bar */
[[nodiscard]] ReferenceReading
measureReference (const ReferenceFile& file, std::optional<double> sessionRate, bool quiet);
