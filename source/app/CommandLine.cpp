#include "app/CommandLine.h"

#include "app/AnalysisSubcommands.h"
#include "app/CommandError.h"
#include "app/ManualPage.h"
#include "app/RenderSubcommand.h"
#include "app/ShellCompletion.h"

#include <CLI/CLI.hpp>

#include <iostream>

namespace
{
constexpr auto description = "SOLVANE, a ten-band target equaliser from 320 Hz to 20 kHz.";
constexpr auto exitCodes = "Exit status: 0 done, 1 failed, 2 bad arguments, 3 input not readable, "
                           "4 sample rate or channels not served, 5 output not writable, 130 interrupted.";

/** Adds the hidden command with which the build makes the manual page and the completions. */
void addDescribe (CLI::App& app, const std::string& version)
{
    auto* describe = app.add_subcommand ("describe", "Print the manual page, or a shell's completion.")->group ("");
    const auto add = [&] (const char* form, std::function<std::string (const CommandDescription&)> write) {
        describe->add_subcommand (form)->callback ([&app, write]
                                                   { std::cout << write (CommandDescription::of (app)); });
    };

    describe->require_subcommand (1);
    add ("man", [version] (const CommandDescription& program) { return manualPage (program, version); });
    add ("bash", ShellCompletion::bash);
    add ("zsh", ShellCompletion::zsh);
}

/** The commands that help shows, as a list in a sentence. */
std::string commandList (const CLI::App& app)
{
    const auto commands = CommandDescription::of (app).commands;
    std::string text;

    for (std::size_t index = 0; index < commands.size(); ++index)
        text += (index == 0 ? "" : index + 1 == commands.size() ? " and " : ", ") + commands[index].name;

    return text;
}

/** An option that takes one value and was given several times, with its name; empty where there is none. */
std::string optionGivenTwice (const CLI::App& command)
{
    const auto found = [] (const CLI::Option* option)
    {
        return option->get_multi_option_policy() == CLI::MultiOptionPolicy::Throw
               && option->get_items_expected_max() == 1 && option->count() > 1;
    };

    const auto options = command.get_options (found);
    return options.empty() ? std::string() : options.front()->get_name();
}

/** What the parser found, as a sentence, with the way to help. */
std::string sentenceFor (const CLI::App& app, const CLI::ParseError& error, int argumentCount, char** arguments)
{
    if (app.get_subcommands().empty())
        return (argumentCount > 1 ? std::string ("'") + arguments[1] + "' is no command." : "A command is missing.")
               + " There are " + commandList (app) + "; 'solvane --help' says more.";

    const auto& command = *app.get_subcommands().front();
    std::string sentence = error.what();

    if (const auto twice = optionGivenTwice (command);
        ! twice.empty() && dynamic_cast<const CLI::ArgumentMismatch*> (&error) != nullptr)
        sentence = twice + " is given more than once.";

    if (! sentence.ends_with ('.'))
        sentence += '.';

    return sentence + " 'solvane " + command.get_name() + " --help' says more.";
}
} // namespace

ExitCode runCommandLine (int argumentCount, char** arguments, const std::string& version)
{
    CLI::App app (description, "solvane");
    app.set_version_flag ("--version", version);
    app.require_subcommand (1);
    app.footer (exitCodes);
    addRenderSubcommand (app);
    addAnalysisSubcommands (app);
    addDescribe (app, version);

    try
    {
        app.parse (argumentCount, arguments);
    }
    catch (const CLI::Success& help)
    {
        app.exit (help);
    }
    catch (const CLI::ParseError& error)
    {
        throw CommandError (ExitCode::badArguments, sentenceFor (app, error, argumentCount, arguments));
    }

    // A full disk or a closed pipe may have swallowed what was printed.
    if (! std::cout.flush())
        throw CommandError (ExitCode::failure, "The standard output could not be written to.");

    return ExitCode::success;
}
