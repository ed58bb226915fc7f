#pragma once

#include "app/ReferenceFile.h"
#include "targets/MeanTarget.h"

#include <optional>
#include <string>
#include <vector>

/** `solvane target`: a target out of reference tracks. */
struct TargetCommand
{
    std::vector<ReferenceFile> references;

    /** The file to write. */
    std::string output;

    /** The session's rate in Hz; nothing for each file's own. */
    std::optional<double> sampleRate;
    bool json = false;

    /** Prints nothing but errors. */
    bool quiet = false;

    /** Measures, writes and prints. Throws CommandError. */
    void run() const;
};

/** The mean of the references' readings. Throws CommandError where none has one. */
[[nodiscard]] MeanTarget meanOf (const std::vector<ReferenceReading>& readings);
