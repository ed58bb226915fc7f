#pragma once

#include "files/SoundEncoding.h"

#include <string>

/** How a rendered file is to be stored. */
struct OutputFormat
{
    /** By the name of --format where one is given. Else the file's ending gives the container, and what was read the
        width, and also the container where there is no ending or `path` is the standard output; a lossy file is not
        stored lossily anew unless the ending asks for it. Throws CommandError, also where name and ending contradict
        each other. */
    [[nodiscard]] static SoundEncoding
    choose (const std::string& name, const std::string& path, const SoundEncoding& input);
};
