#include "app/AnalysisSubcommands.h"
#include "app/CommandError.h"
#include "app/Interrupt.h"
#include "app/ParamsCommand.h"
#include "app/RenderCommand.h"

#include <CLI/CLI.hpp>

#include <juce_events/juce_events.h>

#include <iostream>

namespace
{
constexpr auto description = "SOLVANE, a ten-band target equaliser from 320 Hz to 20 kHz.";
constexpr auto exitCodes = "Exit status: 0 done, 1 failed, 2 bad arguments, 3 input not readable, "
                           "4 sample rate or channels not served, 5 output not writable, 130 interrupted.";

/** Adds `solvane render` with its options. */
void addRender (CLI::App& app,
                RenderCommand& command,
                std::vector<std::string>& bands,
                std::string& phase,
                std::string& mode)
{
    auto* render = app.add_subcommand ("render", "Equalise a sound file into another.");
    auto& settings = command.settings;

    render->add_option ("IN", command.input, "WAV, AIFF, FLAC or MP3 file, mono or stereo, 44.1 to 192 kHz")
        ->required();
    render->add_option ("OUT", command.output, "File to write: .wav, .aiff or .flac")->required();
    render->add_option ("--band", bands, "FREQ,GAIN,Q[,shelf][,ms=VALUE][,solo][,bypass], up to ten times")
        ->expected (1)
        ->multi_option_policy (CLI::MultiOptionPolicy::TakeAll);
    render->add_option ("--phase", phase, "Phase of the bands above 1500 Hz")
        ->check (CLI::IsMember ({ "linear", "minimum" }))
        ->capture_default_str();
    render->add_option ("--mode", mode, "mix: steep bands of up to 12 dB; master: short filters, up to 4 dB and Q 1.5")
        ->check (CLI::IsMember ({ "mix", "master" }))
        ->capture_default_str();
    render->add_option ("--gain-scale", settings.gainScalePercent, "Scales the gains of all bands, in percent")
        ->check (CLI::Range (0.0, 200.0))
        ->capture_default_str();
    render->add_option ("--output-gain", settings.outputGainDb, "Gain behind the equaliser, in dB")
        ->check (CLI::Range (-12.0, 12.0))
        ->capture_default_str();
    render->add_option ("--block", command.blockSize, "Samples a block; changes nothing in the result")
        ->check (CLI::Range (1, 8192))
        ->capture_default_str();
    render->add_option (
        "--format",
        command.format,
        "wav-16, wav-24, wav-float, aiff-16, aiff-24, flac-16 or flac-24; by the ending of OUT if not given");

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
    catch (const CLI::ParseError& error)
    {
        return app.exit (error) == 0 ? ExitCode::success : ExitCode::badArguments;
    }

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
