#include "app/ReferenceOptions.h"

#include "app/CommandError.h"
#include "app/OptionChecks.h"

CLI::Option* ReferenceOptions::addRange (CLI::App& command)
{
    return command
        .add_option ("--range",
                     "Part of the reference before it to measure, in seconds or minutes: 30-90, 0:30-1:30, or 30- to\n"
                     "the end; several times for several parts")
        ->type_name ("START-END")
        ->expected (1)
        ->allow_extra_args (false)
        ->multi_option_policy (CLI::MultiOptionPolicy::TakeAll)
        ->check (OptionChecks::notEmpty());
}

std::vector<ReferenceFile> ReferenceOptions::filesOf (const CLI::App& command,
                                                      const CLI::Option& files,
                                                      const CLI::Option& range,
                                                      std::size_t first,
                                                      std::size_t skippedAtEnd)
{
    const auto& names = files.results();
    const auto& texts = range.results();
    const auto end = names.size() > skippedAtEnd ? names.size() - skippedAtEnd : 0;
    std::vector<ReferenceFile> result;
    std::size_t named = 0;
    std::size_t ranges = 0;

    // The parser keeps the order of all it met.
    for (const auto* option : command.parse_order())
    {
        if (option == &files && named < names.size())
        {
            if (named >= first && named < end)
                result.push_back ({ names[named], {} });

            ++named;
        }
        else if (option == &range && ranges < texts.size())
        {
            if (named <= first || named > end)
                throw CommandError (ExitCode::badArguments,
                                    "--range " + texts[ranges] + ": it belongs behind a reference track.");

            result.back().ranges.push_back (TimeRange::parse (texts[ranges++]));
        }
    }

    if (result.size() > mostFiles)
        throw CommandError (ExitCode::badArguments,
                            "There are " + std::to_string (result.size()) + " reference tracks; the most are "
                                + std::to_string (mostFiles) + ".");

    return result;
}
