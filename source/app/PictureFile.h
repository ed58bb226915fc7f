#pragma once

#include <juce_graphics/juce_graphics.h>

#include <string>
#include <vector>

/** A PNG file that the program draws, as an option of the command line names it. */
namespace PictureFile
{
/** Throws CommandError where no picture can be written, or where one would destroy something: anything but another PNG,
    and all that is read. @param option that names it, for messages; @param read files as the command line names them */
void requireItMayStand (const std::string& path, const std::string& option, const std::vector<std::string>& read);

/** Throws CommandError when the file cannot be written. */
void write (const juce::Image& image, const std::string& path);
} // namespace PictureFile
