#include "app/AnalysisSubcommands.h"

#include "app/MeasureCommand.h"
#include "app/OptionChecks.h"
#include "app/ParamsCommand.h"
#include "app/PresetsCommand.h"
#include "app/StateCommand.h"

#include <memory>

namespace
{
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
} // namespace

void addAnalysisSubcommands (CLI::App& app)
{
    addMeasure (app);
    addPresets (app);
    addParams (app);
    addState (app);
}
