#pragma once

#include <filesystem>
#include <string>

/** A sound file below HOME with something like a piece of music in it: 16 bits, stereo, 48 kHz. Gone with this object.
 */
class MixFile
{
public:
    MixFile (const std::string& name, double seconds);
    ~MixFile();

    MixFile (const MixFile&) = delete;
    MixFile& operator= (const MixFile&) = delete;

    const std::filesystem::path path;
};
