#include "app/FileArgument.h"

#include "app/CommandError.h"

#include <filesystem>

juce::File fileFor (const std::string& path)
{
    if (path.empty())
        throw CommandError (ExitCode::badArguments, "A file name is empty.");

    if (! juce::CharPointer_UTF8::isValidString (path.c_str(), static_cast<int> (path.size())))
        throw CommandError (ExitCode::badArguments, "The file name '" + path + "' is not UTF-8.");

    namespace fs = std::filesystem;
    const auto absolute = fs::absolute (path);
    const auto last = absolute.filename();
    const auto isName = ! last.empty() && last != "." && last != "..";
    std::error_code error;
    auto resolved =
        isName ? fs::weakly_canonical (absolute.parent_path(), error) / last : fs::weakly_canonical (absolute, error);

    if (error)
        resolved = absolute.lexically_normal();

    return juce::File (juce::String::fromUTF8 (resolved.c_str()));
}
