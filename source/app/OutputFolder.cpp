#include "app/OutputFolder.h"

#include "app/CommandError.h"
#include "app/FileArgument.h"
#include "app/StandardStreams.h"

#include <filesystem>
#include <map>

namespace
{
namespace fs = std::filesystem;

/** The ending that files of a container usually have, with the dot. */
std::string endingFor (SoundEncoding::Container container)
{
    for (const auto& ending : SoundEncoding::endings())
        if (SoundEncoding::containerByEnding (ending) == container)
            return "." + ending;

    return container == SoundEncoding::Container::rf64 ? ".wav" : ".ogg";
}

bool isLossy (SoundEncoding::Container container)
{
    return SoundEncoding::nearest (container, SoundEncoding::Width::bits24).width == SoundEncoding::Width::lossy;
}

/** What a file is called once it is rendered. */
fs::path nameFor (const fs::path& input, const std::string& format)
{
    auto name = input.filename();
    const auto ending = name.extension().string();
    const auto container = SoundEncoding::containerByEnding (ending.empty() ? ending : ending.substr (1));

    if (const auto wanted = SoundEncoding::fromName (format); wanted.has_value() && wanted->container != container)
        name.replace_extension (endingFor (wanted->container));
    else if (! wanted.has_value() && container.has_value() && isLossy (*container))
        name.replace_extension (".wav");

    return name;
}
} // namespace

std::vector<RenderRequest> OutputFolder::requestsFor (const std::vector<std::string>& inputs,
                                                      const std::string& folder,
                                                      const RenderRequest& common)
{
    std::vector<RenderRequest> requests;
    std::map<fs::path, std::string> inputOf;
    std::map<fs::path, std::string> inputAt;

    for (const auto& input : inputs)
    {
        if (StandardStreams::isInput (input))
            throw CommandError (ExitCode::badArguments,
                                "The standard input has no name that a file in a folder could get.");

        auto request = common;
        request.input = input;
        request.output = (fs::path (folder) / nameFor (input, common.format)).string();
        requests.push_back (request);
        inputAt.emplace (fileFor (input), input);
    }

    for (const auto& request : requests)
    {
        const auto place = fileFor (request.output);

        if (const auto [entry, isNew] = inputOf.emplace (place, request.input); ! isNew)
            throw CommandError (ExitCode::badArguments,
                                "'" + entry->second + "' and '" + request.input + "' would both become '"
                                    + request.output + "'.");

        if (const auto other = inputAt.find (place); other != inputAt.end() && fileFor (request.input) != place)
            throw CommandError (ExitCode::badArguments,
                                "'" + request.input + "' would take the place of '" + other->second
                                    + "', which is to be read too.");
    }

    std::error_code error;
    fs::create_directories (fileFor (folder), error);

    if (error || ! fs::is_directory (fileFor (folder), error))
        throw CommandError (ExitCode::unwritableOutput,
                            "The folder '" + folder
                                + "' cannot be made: " + (error ? error.message() : "a file stands there") + ".");

    return requests;
}
