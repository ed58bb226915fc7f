#include "app/RenderSubcommand.h"

#include "app/CommandError.h"
#include "app/OptionChecks.h"
#include "app/RenderCommand.h"

#include <memory>

namespace
{
using OptionChecks::eitherOf;
using OptionChecks::numberWithin;
using OptionChecks::setUp;
using OptionChecks::wholeNumberWithin;

constexpr auto bandText =
    "A band, up to ten times.\n"
    "FREQ 320 to 20000 Hz, in steps of 10, also as 2.5k; GAIN -12 to 12 dB and Q 0.5 to 5, in steps\n"
    "of 0.1; shelf: a high shelf from 1600 Hz on, whatever Q says; ms: 0 mid, 0.5 left and right\n"
    "(default), 1 side, and what lies between; solo: this band's range alone; bypass: no effect";
constexpr auto example =
    "Example: a dip at 2.5 kHz, and air on the sides alone\n"
    "  solvane render mix.wav better.flac --mode mix --band 2500,-3,1.4 --band 10000,4,1,shelf,ms=1";

/** What the options are read into. */
struct RenderOptions
{
    RenderCommand command;
    std::vector<std::string> bands;
    std::string phase = "linear";
    std::string mode = "master";

    /** Reads what the parser has left as text, and renders. */
    void run()
    {
        if (bands.size() > bandCount)
            throw CommandError (ExitCode::badArguments,
                                "--band was given " + std::to_string (bands.size()) + " times; there are ten bands.");

        for (const auto& band : bands)
            command.settings.bands.push_back (BandOption::parse (band));

        command.settings.phase = phase == "minimum" ? FilterPhase::minimum : FilterPhase::linear;
        command.settings.mode = mode == "mix" ? FilterMode::mix : FilterMode::master;
        command.run();
    }
};
} // namespace

void addRenderSubcommand (CLI::App& app)
{
    const auto options = std::make_shared<RenderOptions>();
    auto& command = options->command;
    auto* render = app.add_subcommand ("render", "Equalise a sound file into another.");
    render->footer (example);
    auto& settings = command.settings;

    render->add_option ("IN", command.input, "Sound file, mono or stereo, 44.1 to 192 kHz; - is the standard input")
        ->required()
        ->type_name ("");
    render->add_option ("OUT", command.output, "File to write, as its ending says; may be IN; - is the standard output")
        ->required()
        ->type_name ("");
    render->add_option ("--band", options->bands, bandText)
        ->type_name ("FREQ,GAIN,Q[,shelf][,ms=VALUE][,solo][,bypass]")
        ->expected (1)
        ->multi_option_policy (CLI::MultiOptionPolicy::TakeAll);
    setUp (render->add_option (
               "--phase", options->phase, "Phase of the bands above 1500 Hz; those below are always linear"),
           "linear|minimum")
        ->check (eitherOf ("linear", "minimum"));
    setUp (
        render->add_option ("--mode",
                            options->mode,
                            "mix: long filters, gains of up to 12 dB; master: short filters, gains held within 4 dB"),
        "mix|master")
        ->check (eitherOf ("mix", "master"));
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

    render->callback ([options] { options->run(); });
}
