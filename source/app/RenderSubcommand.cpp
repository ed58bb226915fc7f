#include "app/RenderSubcommand.h"

#include "app/BandsFile.h"
#include "app/CommandError.h"
#include "app/OptionChecks.h"
#include "app/ReferenceOptions.h"
#include "app/RenderCommand.h"
#include "app/SessionFile.h"

#include <functional>
#include <memory>

namespace
{
using OptionChecks::eitherOf;
using OptionChecks::notEmpty;
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
    std::string input;
    std::vector<std::string> others;
    std::vector<std::string> bands;
    std::string bandsFile;
    std::string stateFile;
    std::string targetFile;
    bool smartBands = false;
    bool fit = false;
    float amountPercent = 100.0f;
    bool keepOld = false;
    bool overwrite = false;

    std::string phase = "linear";
    std::string mode = "master";
    float gainScalePercent = 100.0f;
    float outputGainDb = 0.0f;

    /** Which of the four that a session holds were given, and so count more than it. */
    std::function<bool (const char* option)> isGiven;

    /** The reference tracks that were named, with their ranges. */
    std::function<std::vector<ReferenceFile>()> references;

    [[nodiscard]] SmartBandsTarget smartBandsTarget (const std::vector<ReferenceFile>& tracks) const
    {
        const auto sources =
            (targetFile.empty() ? 0 : 1) + (command.common.preset.empty() ? 0 : 1) + (tracks.empty() ? 0 : 1);

        if (sources != 1)
            throw CommandError (ExitCode::badArguments,
                                std::string (fit && ! smartBands ? "--fit needs " : "--smart-bands needs ")
                                    + (sources == 0 ? "a target" : "one target, not several")
                                    + ": --target FILE, --preset PRESET or --reference FILE.");

        return ! tracks.empty()       ? SmartBandsTargets::ofReferences (tracks, command.quiet)
               : ! targetFile.empty() ? SmartBandsTargets::ofFile (targetFile)
                                      : SmartBandsTargets::ofPreset (command.common.preset);
    }

    [[nodiscard]] EqualiserSettings settings() const
    {
        EqualiserSettings result;

        if (! stateFile.empty())
            result = SessionFile::equaliserSettings (stateFile);

        if (! bandsFile.empty())
            result.bands = BandsFile::read (bandsFile);

        for (const auto& band : bands)
            result.bands.push_back (BandOption::parse (band));

        if (bands.size() > bandCount)
            throw CommandError (ExitCode::badArguments,
                                "--band was given " + std::to_string (bands.size()) + " times; there are ten bands.");

        if (result.bands.size() > bandCount)
            throw CommandError (ExitCode::badArguments,
                                "--bands and --band give " + std::to_string (result.bands.size())
                                    + " bands together; there are ten.");

        const auto counts = [this] (const char* option) { return stateFile.empty() || isGiven (option); };

        if (counts ("--phase"))
            result.phase = phase == "minimum" ? FilterPhase::minimum : FilterPhase::linear;

        if (counts ("--mode"))
            result.mode = mode == "mix" ? FilterMode::mix : FilterMode::master;

        if (counts ("--gain-scale"))
            result.gainScalePercent = gainScalePercent;

        if (counts ("--output-gain"))
            result.outputGainDb = outputGainDb;

        return result;
    }

    /** Reads what the parser has left as text, and renders. */
    void run()
    {
        using Existing = RenderRequest::Existing;
        command.files = { input };
        command.files.insert (command.files.end(), others.begin(), others.end());
        command.common.settings = settings();

        const auto tracks = references();

        if (! smartBands && ! fit && ! (targetFile.empty() && tracks.empty() && command.report.empty()))
            throw CommandError (ExitCode::badArguments,
                                std::string (! targetFile.empty() ? "--target"
                                             : ! tracks.empty()   ? "--reference"
                                                                  : "--report")
                                    + " requires --smart-bands or --fit.");

        if (fit && isGiven ("--gain-scale"))
            throw CommandError (ExitCode::badArguments,
                                "--fit excludes --gain-scale: its output gain would make up for other bands. --amount "
                                "says how far the bands go.");

        if (fit)
            command.common.fit = RenderRequest::Fit { amountPercent, ! isGiven ("--output-gain") };

        if (smartBands || fit)
        {
            command.common.smartBandsTarget = smartBandsTarget (tracks);

            for (const auto& track : tracks)
                command.common.references.push_back (track.path);
        }

        // A list of references in which OUT was forgotten ends in a recording.
        if (keepOld)
            command.common.existing = command.folder.empty() ? Existing::refuse : Existing::skip;
        else if (! overwrite && command.folder.empty() && ! command.common.references.empty())
            command.common.existing = Existing::replaceOwn;

        command.run();
    }
};

/** What the bands share. */
void addSoundOptions (CLI::App& app, RenderOptions& options)
{
    setUp (app.add_option ("--phase", options.phase, "Phase of the bands above 1500 Hz; those below are always linear"),
           "linear|minimum")
        ->check (eitherOf ("linear", "minimum"));
    setUp (app.add_option ("--mode",
                           options.mode,
                           "mix: long filters, gains of up to 12 dB; master: short filters, gains held within 4 dB"),
           "mix|master")
        ->check (eitherOf ("mix", "master"));
    setUp (app.add_option (
               "--gain-scale", options.gainScalePercent, "Scales the gains of all bands, 0 to 200; not with --fit"),
           "PERCENT")
        ->check (numberWithin (0.0, 200.0, " percent"));
    setUp (app.add_option ("--output-gain", options.outputGainDb, "Gain behind the equaliser, -12 to 12"), "DB")
        ->check (numberWithin (-12.0, 12.0, " dB"));
}

/** What may become of a file that stands in OUT's place. */
void addExistingOptions (CLI::App& app, RenderOptions& options)
{
    auto* keep = app.add_flag ("--no-overwrite", options.keepOld, "Leave a file alone that stands there already");
    app.add_flag (
           "--overwrite", options.overwrite, "With references, replace also a sound file that SOLVANE did not make")
        ->excludes (keep);
}

/** Bands by least squares, in the place of smart bands. */
CLI::Option* addFitOptions (CLI::App& app, RenderOptions& options, const char* text)
{
    auto* fit = app.add_flag ("--fit", options.fit, text);
    setUp (app.add_option ("--amount", options.amountPercent, "How much of the way to the target --fit goes, 0 to 100"),
           "PERCENT")
        ->check (numberWithin (0.0, 100.0, " percent"))
        ->needs (fit);
    return fit;
}

/** How the result is made and told. */
void addResultOptions (CLI::App& app, RenderCommand& command)
{
    setUp (app.add_option (
               "--block", command.common.blockSize, "Samples a block, 1 to 8192; changes nothing that is heard"),
           "N")
        ->check (wholeNumberWithin (1, 8192));
    app.add_option ("--format",
                    command.common.format,
                    "Container and width of OUT, such as wav-16, wav-float, aiff-24, flac-24, caf-32, mp3; without\n"
                    "it, OUT's ending gives the container and IN the width")
        ->type_name ("NAME")
        ->check (notEmpty());
    app.add_flag ("--json", command.json, "Print for scripts: an array with an object for each file");
    app.add_flag ("--quiet", command.quiet, "Print nothing but errors, and show no progress bar");
}

CLI::Option* addReport (CLI::App& app, RenderCommand& command)
{
    return app
        .add_option (
            "--report", command.report, "PNG file to draw into what smart or fitted bands did, before and after")
        ->type_name ("FILE")
        ->check (notEmpty());
}

constexpr auto matchExample = "Example: near the sound of two records\n"
                              "  solvane match mix.wav one.flac --range 0:55-1:25 two.flac nearer.wav";

/** `match IN REF... OUT`: another way to say `render IN OUT --smart-bands --reference REF...`. */
void addMatchSubcommand (CLI::App& app)
{
    const auto options = std::make_shared<RenderOptions>();
    auto& command = options->command;
    auto* match = app.add_subcommand ("match", "Bring a sound file near the sound of others: render with smart bands.");
    match->footer (matchExample);

    auto* files =
        match->add_option ("IN REF... OUT", "Sound file to equalise, up to 20 files to go by, and the file to write")
            ->required()
            ->expected (3, CLI::detail::expected_max_vector_size)
            ->allow_extra_args();
    auto* range = ReferenceOptions::addRange (*match);
    addExistingOptions (*match, *options);
    addFitOptions (*match,
                   *options,
                   "Find the bands by least squares, which comes nearer than smart bands, and keep the loudness");
    addSoundOptions (*match, *options);
    addReport (*match, command);
    addResultOptions (*match, command);

    options->isGiven = [match] (const char* option) { return match->count (option) > 0; };
    options->references = [match, files, range] { return ReferenceOptions::filesOf (*match, *files, *range, 1, 1); };
    options->smartBands = true;
    match->callback (
        [options, files]
        {
            options->input = files->results().front();
            options->others = { files->results().back() };
            options->run();
        });
}
} // namespace

void addRenderSubcommand (CLI::App& app)
{
    const auto options = std::make_shared<RenderOptions>();
    auto& command = options->command;
    auto* render = app.add_subcommand ("render", "Equalise a sound file into another, or many into a folder.");
    render->footer (example);

    render->add_option ("IN", options->input, "Sound file, mono or stereo, 44.1 to 192 kHz; - is the standard input")
        ->required()
        ->type_name ("");
    render
        ->add_option (
            "OUT",
            options->others,
            "File to write, as its ending says; may be IN; - is the standard output; with --into, more files to read")
        ->type_name ("");
    render
        ->add_option (
            "--into",
            command.folder,
            "Folder that takes a result for each file that is named, under its own name; made if it is not there")
        ->type_name ("FOLDER")
        ->check (notEmpty());
    render
        ->add_option (
            "--jobs", command.jobs, "Files at a time, 1 to 256; as many as there are processor cores, unless given")
        ->type_name ("N")
        ->check (wholeNumberWithin (1, 256));
    addExistingOptions (*render, *options);
    auto* band = render->add_option ("--band", options->bands, bandText)
                     ->type_name ("FREQ,GAIN,Q[,shelf][,ms=VALUE][,solo][,bypass]")
                     ->expected (1)
                     ->allow_extra_args (false)
                     ->multi_option_policy (CLI::MultiOptionPolicy::TakeAll);
    auto* bandsFile = render
                          ->add_option ("--bands",
                                        options->bandsFile,
                                        "Text file of bands, one to a line as for --band; # begins a comment")
                          ->type_name ("FILE")
                          ->check (notEmpty());
    render
        ->add_option ("--state",
                      options->stateFile,
                      "Session block as a host stored it, for all settings; --mode, --phase, --gain-scale and\n"
                      "--output-gain count more where they are given")
        ->type_name ("FILE")
        ->check (notEmpty())
        ->excludes (band)
        ->excludes (bandsFile);
    auto* smartBands =
        render
            ->add_flag (
                "--smart-bands",
                options->smartBands,
                "Listen to IN, and make bands that bring it near the target of --target, --preset or --reference")
            ->excludes (band)
            ->excludes (bandsFile);
    auto* fit = addFitOptions (*render,
                               *options,
                               "As --smart-bands, with bands found by least squares, which come nearer; they keep the\n"
                               "loudness, unless --output-gain is given")
                    ->excludes (band)
                    ->excludes (bandsFile);
    render->get_option ("--state")->excludes (smartBands)->excludes (fit);
    render
        ->add_option (
            "--target", options->targetFile, "Target file for --smart-bands or --fit, as 'solvane target' makes it")
        ->type_name ("FILE")
        ->check (notEmpty());
    auto* reference =
        render
            ->add_option ("--reference",
                          "Sound file for --smart-bands or --fit to go by, up to 20 times; measured at IN's rate")
            ->type_name ("FILE")
            ->expected (1)
            ->allow_extra_args (false)
            ->multi_option_policy (CLI::MultiOptionPolicy::TakeAll)
            ->check (notEmpty());
    auto* range = ReferenceOptions::addRange (*render)->needs (reference);
    addSoundOptions (*render, *options);
    render
        ->add_option (
            "--preset",
            command.common.preset,
            "Preset to select: id, name or GROUP/NAME. A target; it changes no sound without --smart-bands or --fit")
        ->type_name ("PRESET")
        ->check (notEmpty());
    addReport (*render, command)->excludes (render->get_option ("--into"));
    addResultOptions (*render, command);

    options->isGiven = [render] (const char* option) { return render->count (option) > 0; };
    options->references = [render, reference, range]
    { return ReferenceOptions::filesOf (*render, *reference, *range); };
    render->callback ([options] { options->run(); });

    addMatchSubcommand (app);
}
