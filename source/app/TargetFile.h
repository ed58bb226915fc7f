#pragma once

#include "app/ReferenceFile.h"
#include "targets/MeanTarget.h"

#include <string>
#include <vector>

/** A target in a file, as the command line names it; see TargetDocument for what the file holds. */
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
