#pragma once

#include "app/ReferenceFile.h"
#include "targets/MeanTarget.h"

#include <string>
#include <vector>

/** A target in a file: JSON of `format`, `version`, `name`, `lufs`, `frequencies`, `values` and `tracks`.

    A value that nothing was measured for is `null`. A reader needs `format`, `version`, `lufs` and ten `values`; all
    else tells people where the numbers are from. */
struct TargetFile
{
    std::string name;
    MeanTarget target;
    std::vector<ReferenceReading> tracks;

    /** The text of the file. */
    [[nodiscard]] std::string text() const;

    /** Reads name and target. Throws CommandError. */
    [[nodiscard]] static TargetFile read (const std::string& path);

    /** Looks before any work is done: throws CommandError where something stands that may not be replaced.
        @param read the files that the target is made from */
    static void requireItMayStand (const std::string& path, const std::vector<std::string>& read);

    /** Writes the file as a whole or not at all; `-` is the standard output. Throws CommandError. */
    void write (const std::string& path) const;
};
