#include "app/FileArgument.h"

#include "app/CommandError.h"

std::filesystem::path fileFor (const std::string& path)
{
    if (path.empty())
        throw CommandError (ExitCode::badArguments, "A file name is empty.");

    namespace fs = std::filesystem;
    const auto absolute = fs::absolute (path);
    const auto last = absolute.filename();
    const auto isName = ! last.empty() && last != "." && last != "..";
    std::error_code error;
    auto resolved =
        isName ? fs::weakly_canonical (absolute.parent_path(), error) / last : fs::weakly_canonical (absolute, error);

    if (error)
        resolved = absolute.lexically_normal();

    return resolved;
}

bool isThere (const std::string& path)
{
    std::error_code error;
    return std::filesystem::exists (fileFor (path), error);
}
