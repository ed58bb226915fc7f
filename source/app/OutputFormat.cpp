#include "app/OutputFormat.h"

#include "app/CommandError.h"
#include "app/StandardStreams.h"

#include <filesystem>
#include <optional>
#include <vector>

namespace
{
using Container = SoundEncoding::Container;
using Width = SoundEncoding::Width;

/** Without the dot. */
std::string endingOf (const std::string& path)
{
    const auto ending =
        StandardStreams::isOutput (path) ? std::string() : std::filesystem::path (path).extension().string();
    return ending.empty() ? ending : ending.substr (1);
}

std::string quotedName (const std::string& path)
{
    return "'" + std::filesystem::path (path).filename().string() + "'";
}

/** An RF64 file is often called .wav, and Opus stands in an Ogg file. */
bool mayBeCalled (Container container, Container byEnding)
{
    return container == byEnding || (byEnding == Container::wav && container == Container::rf64)
           || (byEnding == Container::vorbis && container == Container::opus);
}

template <typename List, typename Text>
std::string listed (const List& list, Text&& text)
{
    std::string sentence;

    for (const auto& entry : list)
        sentence += (sentence.empty() ? "" : ", ") + text (entry);

    return sentence;
}

SoundEncoding named (const std::string& name)
{
    if (const auto encoding = SoundEncoding::fromName (name); encoding.has_value())
        return *encoding;

    // A container that is known, and a width that it does not hold.
    const auto word = name.substr (0, name.find ('-'));
    std::vector<SoundEncoding> ofContainer;

    for (const auto& encoding : SoundEncoding::all())
        if (encoding.name().starts_with (word + '-'))
            ofContainer.push_back (encoding);

    if (! ofContainer.empty())
        throw CommandError (ExitCode::badArguments,
                            "--format " + name + " is not known. "
                                + SoundEncoding::containerName (ofContainer[0].container) + " is "
                                + listed (ofContainer, [] (const auto& each) { return each.name(); }) + ".");

    throw CommandError (ExitCode::badArguments,
                        "--format " + name + " is not known. There are "
                            + listed (SoundEncoding::all(), [] (const auto& each) { return each.name(); }) + ".");
}
} // namespace

SoundEncoding OutputFormat::choose (const std::string& name, const std::string& path, const SoundEncoding& input)
{
    const auto ending = endingOf (path);
    const auto byEnding = SoundEncoding::containerByEnding (ending);

    if (! name.empty())
    {
        const auto encoding = named (name);

        if (byEnding.has_value() && ! mayBeCalled (encoding.container, *byEnding))
            throw CommandError (ExitCode::badArguments,
                                quotedName (path) + " would hold what its ending does not say: --format " + name
                                    + " was asked for.");

        return encoding;
    }

    if (! byEnding.has_value() && ! ending.empty())
        throw CommandError (ExitCode::badArguments,
                            quotedName (path) + " does not end in "
                                + listed (SoundEncoding::endings(), [] (const auto& each) { return "." + each; })
                                + ". Choose with --format what it is to be.");

    if (! byEnding.has_value() && input.width == Width::lossy)
        return SoundEncoding::nearest (Container::wav, input.width);

    const auto container = byEnding.value_or (input.container);
    return SoundEncoding::nearest (mayBeCalled (input.container, container) ? input.container : container, input.width);
}
