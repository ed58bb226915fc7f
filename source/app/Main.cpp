#include "app/AnalysisSubcommands.h"
#include "app/CommandError.h"
#include "app/Interrupt.h"
#include "app/ParamsCommand.h"
#include "app/RenderCommand.h"

#include <CLI/CLI.hpp>

#include <juce_events/juce_events.h>

#include <algorithm>
#include <charconv>
#include <iostream>
#include <sstream>

namespace
{
constexpr auto description = "SOLVANE, a ten-band target equaliser from 320 Hz to 20 kHz.";
constexpr auto bandText = "A band, up to ten times.\n"
                          "FREQ 320 to 20000 Hz, in steps of 10; GAIN -12 to 12 dB and Q 0.5 to 5, in steps of 0.1;\n"
                          "shelf: a high shelf, whatever Q says; ms: 0 mid, 0.5 left and right (default), 1 side,\n"
                          "and what lies between; solo: this band's range alone; bypass: no effect";
constexpr auto example =
    "Example: a dip at 2.5 kHz, and air on the sides alone\n"
    "  solvane render mix.wav better.flac --mode mix --band 2500,-3,1.4 --band 10000,4,1,shelf,ms=1";
constexpr auto exitCodes = "Exit status: 0 done, 1 failed, 2 bad arguments, 3 input not readable, "
                           "4 sample rate or channels not served, 5 output not writable, 130 interrupted.";

/** Shows its default, and lets the last one win where it is given twice. */
CLI::Option* setUp (CLI::Option* option, const char* valueName)
{
    return option->type_name (valueName)->capture_default_str()->take_last();
}

CLI::Validator oneOf (std::vector<std::string> words)
{
    return CLI::Validator (
        [words] (const std::string& given)
        {
            const auto known = std::find (words.begin(), words.end(), given) != words.end();
            return known ? std::string() : "'" + given + "' is neither " + words[0] + " nor " + words[1] + ".";
        },
        "");
}

template <typename Number>
std::string complaint (const std::string& given, Number lowest, Number highest, const std::string& unit)
{
    Number value {};
    const auto* first = given.data() + (given.starts_with ('+') ? 1 : 0);
    const auto* last = given.data() + given.size();

    // Reads the same in every locale; what is no number fails both comparisons.
    if (const auto [end, error] = std::from_chars (first, last, value);
        error == std::errc() && end == last && value >= lowest && value <= highest)
        return {};

    std::ostringstream text;
    text << "'" << given << "' is not a number from " << lowest << " to " << highest << unit << '.';
    return text.str();
}

CLI::Validator numberWithin (double lowest, double highest, const char* unit)
{
    return CLI::Validator ([=] (const std::string& given) { return complaint (given, lowest, highest, unit); }, "");
}

CLI::Validator wholeNumberWithin (int lowest, int highest)
{
    return CLI::Validator (
        [=] (const std::string& given) { return complaint (given, lowest, highest, " without a fraction"); }, "");
}

/** Adds `solvane render` with its options. */
void addRender (CLI::App& app,
                RenderCommand& command,
                std::vector<std::string>& bands,
                std::string& phase,
                std::string& mode)
{
    auto* render = app.add_subcommand ("render", "Equalise a sound file into another.");
    render->footer (example);
    auto& settings = command.settings;

    render->add_option ("IN", command.input, "Sound file, mono or stereo, 44.1 to 192 kHz; - is the standard input")
        ->required()
        ->type_name ("");
    render->add_option ("OUT", command.output, "File to write, as its ending says; may be IN; - is the standard output")
        ->required()
        ->type_name ("");
    render->add_option ("--band", bands, bandText)
        ->type_name ("FREQ,GAIN,Q[,shelf][,ms=VALUE][,solo][,bypass]")
        ->expected (1)
        ->multi_option_policy (CLI::MultiOptionPolicy::TakeAll);
    setUp (render->add_option ("--phase", phase, "Phase of the bands above 1500 Hz; those below are always linear"),
           "linear|minimum")
        ->check (oneOf ({ "linear", "minimum" }));
    setUp (
        render->add_option (
            "--mode", mode, "mix: long filters, gains of up to 12 dB; master: short filters, gains held within 4 dB"),
        "mix|master")
        ->check (oneOf ({ "mix", "master" }));
    setUp (render->add_option ("--gain-scale", settings.gainScalePercent, "Scales the gains of all bands, 0 to 200"),
           "PERCENT")
        ->check (numberWithin (0.0, 200.0, " percent"));
    setUp (render->add_option ("--output-gain", settings.outputGainDb, "Gain behind the equaliser, -12 to 12"), "DB")
        ->check (numberWithin (-12.0, 12.0, " dB"));
    render
        ->add_option (
            "--preset", command.preset, "Preset to select: id, name or GROUP/NAME. A target; it changes no sound")
        ->type_name ("PRESET")
        ->take_last();
    setUp (
        render->add_option ("--block", command.blockSize, "Samples a block, 1 to 8192; changes nothing that is heard"),
        "N")
        ->check (wholeNumberWithin (1, 8192));
    render
        ->add_option ("--format",
                      command.format,
                      "Container and width of OUT, such as wav-16, wav-float, aiff-24, flac-24, caf-32, mp3; without\n"
                      "it, OUT's ending gives the container and IN the width")
        ->type_name ("NAME")
        ->take_last();

    render->callback (
        [&command, &bands, &phase, &mode]
        {
            if (bands.size() > bandCount)
                throw CommandError (ExitCode::badArguments,
                                    "--band was given " + std::to_string (bands.size())
                                        + " times; there are ten bands.");

            for (const auto& band : bands)
                command.settings.bands.push_back (BandOption::parse (band));

            command.settings.phase = phase == "minimum" ? FilterPhase::minimum : FilterPhase::linear;
            command.settings.mode = mode == "mix" ? FilterMode::mix : FilterMode::master;
            command.run();
        });
}

/** What the parser found, as a sentence, with the way to help. */
std::string sentenceFor (const CLI::App& app, const CLI::ParseError& error, int argumentCount, char** arguments)
{
    if (app.get_subcommands().empty())
        return (argumentCount > 1 ? std::string ("'") + arguments[1] + "' is no command." : "A command is missing.")
               + " There are render, measure, presets, params and state; 'solvane --help' says more.";

    std::string sentence = error.what();

    if (! sentence.ends_with ('.'))
        sentence += '.';

    return sentence + " 'solvane " + app.get_subcommands().front()->get_name() + " --help' says more.";
}

ExitCode runProgram (int argumentCount, char** arguments)
{
    CLI::App app (description, "solvane");
    app.set_version_flag ("--version", std::string ("SOLVANE " SOLVANE_VERSION));
    app.require_subcommand (1);
    app.footer (exitCodes);

    RenderCommand render;
    std::vector<std::string> bands;
    std::string phase = "linear";
    std::string mode = "master";
    addRender (app, render, bands, phase, mode);

    ParamsCommand params;
    app.add_subcommand ("params", "List the parameters as a host sees them.")->callback ([&params] { params.run(); });

    addAnalysisSubcommands (app);

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
} // namespace

int main (int argumentCount, char** arguments)
{
    Interrupt::install();
    const juce::ScopedJuceInitialiser_GUI framework;

    try
    {
        return static_cast<int> (runProgram (argumentCount, arguments));
    }
    catch (const CommandError& error)
    {
        std::cerr << "solvane: " << error.what() << '\n';
        return static_cast<int> (error.code());
    }
    catch (const std::exception& error)
    {
        std::cerr << "solvane: " << error.what() << '\n';
        return static_cast<int> (ExitCode::failure);
    }
}
