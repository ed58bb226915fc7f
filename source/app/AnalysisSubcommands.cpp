#include "app/AnalysisSubcommands.h"

#include "app/MeasureCommand.h"
#include "app/OptionChecks.h"
#include "app/ParamsCommand.h"
#include "app/PresetsCommand.h"
#include "app/ReferenceOptions.h"
#include "app/StateCommand.h"
#include "app/TargetCommand.h"

#include <memory>

namespace
{
constexpr auto targetExample = "Example: a chorus of one song, and all of another\n"
                               "  solvane target one.flac --range 0:55-1:25 another.wav -o my.target";

void addMeasure (CLI::App& app)
{
    auto command = std::make_shared<MeasureCommand>();
    auto* measure = app.add_subcommand ("measure", "Measure loudness and the ten band levels of sound files.");

    measure
        ->add_option ("FILE", command->files, "Sound files, mono or stereo, 44.1 to 192 kHz; - is the standard input")
        ->required();
    measure->add_option ("--preset", command->preset, "Target to compare with: id, name or GROUP/NAME")
        ->type_name ("PRESET")
        ->capture_default_str()
        ->check (OptionChecks::notEmpty());
    measure->add_flag ("--json", command->json, "Print for scripts: an array with an object for each file");
    measure
        ->add_option (
            "--range", command->range, "Part to measure, in seconds or minutes: 30-90, 0:30-1:30, or 30- to the end")
        ->type_name ("START-END")
        ->check (OptionChecks::notEmpty());
    measure->add_flag ("--quiet", command->quiet, "No notes and no progress bar");
    measure->add_option ("--picture", command->picture, "PNG file to draw levels, target and adjustments into")
        ->type_name ("FILE")
        ->check (OptionChecks::notEmpty());
    measure->callback ([command] { command->run(); });
}

void addParams (CLI::App& app)
{
    auto command = std::make_shared<ParamsCommand>();
    auto* params = app.add_subcommand ("params", "List the parameters as a host sees them.");

    params->add_flag ("--json", command->json, "Print for scripts: an array with an object for each parameter");
    params->callback ([command] { command->run(); });
}

void addPresets (CLI::App& app)
{
    auto command = std::make_shared<PresetsCommand>();
    auto* presets = app.add_subcommand ("presets", "List the presets by group.");

    presets->add_flag ("--json", command->json, "Print for scripts: an array with an object for each preset");
    presets->callback ([command] { command->run(); });
}

void addState (CLI::App& app)
{
    auto command = std::make_shared<StateCommand>();
    auto* state = app.add_subcommand ("state", "Say what a saved session block holds.");

    state->add_option ("FILE", command->file, "The block as a host stored it")->required();
    state->add_flag ("--json", command->json, "Print for scripts: an object");
    state->callback ([command] { command->run(); });
}
void addTarget (CLI::App& app)
{
    struct Options
    {
        TargetCommand command;
        std::string rate;
    };

    const auto options = std::make_shared<Options>();
    auto& command = options->command;
    auto* target = app.add_subcommand ("target", "Make a target out of reference tracks.");
    target->footer (targetExample);

    auto* files =
        target->add_option ("REF", "Sound files, up to 20, mono or stereo, 44.1 to 192 kHz; - is the standard input")
            ->required()
            ->expected (1, CLI::detail::expected_max_vector_size)
            ->allow_extra_args();
    target->add_option ("-o,--output", command.output, "File to write; - is the standard output")
        ->type_name ("FILE")
        ->required()
        ->check (OptionChecks::notEmpty());
    auto* range = ReferenceOptions::addRange (*target);
    target
        ->add_option (
            "--rate",
            options->rate,
            "Sample rate to convert all files to first, as a session of that rate does; each file's own, unless\n"
            "given")
        ->type_name ("HZ")
        ->check (CLI::IsMember ({ "44100", "48000", "88200", "96000", "176400", "192000" }));
    target->add_flag ("--json", command.json, "Print for scripts: what the file holds");
    target->add_flag ("--quiet", command.quiet, "Print nothing but errors, and show no progress bar");
    target->callback (
        [options, target, files, range]
        {
            options->command.references = ReferenceOptions::filesOf (*target, *files, *range);

            if (! options->rate.empty())
                options->command.sampleRate = std::stod (options->rate);

            options->command.run();
        });
}
} // namespace

void addAnalysisSubcommands (CLI::App& app)
{
    addMeasure (app);
    addTarget (app);
    addPresets (app);
    addParams (app);
    addState (app);
}
