#include "app/FileArgument.h"

#include "app/CommandError.h"

#include <filesystem>

juce::File fileFor (const std::string& path)
{
    if (path.empty())
        throw CommandError (ExitCode::badArguments, "A file name is empty.");

    if (! juce::CharPointer_UTF8::isValidString (path.c_str(), static_cast<int> (path.size())))
        throw CommandError (ExitCode::badArguments, "The file name '" + path + "' is not UTF-8.");

    return juce::File (juce::String::fromUTF8 (std::filesystem::absolute (path).lexically_normal().c_str()));
}
