#pragma once

#include "app/AudioInput.h"
#include "app/AudioOutput.h"
#include "app/EqualiserSettings.h"
#include "app/OfflineRenderer.h"
#include "app/SmartBandsChoice.h"
#include "app/SmartBandsTarget.h"

#include <atomic>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/** One file to render. */
struct RenderRequest
{
    std::string input;
    std::string output;

    /** Name of an encoding, or nothing for what input and output suggest. */
    std::string format;

    /** Id or name of the preset to select, or nothing. */
    std::string preset;
    int blockSize = 512;

    /** What is to become of a file that stands there already. */
    enum class Existing
    {
        replace,

        /** Nothing but what the program has made before, and what is empty. */
        replaceOwn,
        refuse,
        skip
    };

    Existing existing = Existing::replace;
    EqualiserSettings settings;

    /** Where the bands come from; nothing for those of the settings. */
    SmartBandsTarget smartBandsTarget;

    /** Bands by least squares, in the place of smart bands. */
    struct Fit
    {
        /** How much of the distance from the target they cover. */
        float amountPercent = 100.0f;

        /** Whether the output gain makes up for their loudness, or is that of the settings. */
        bool levels = true;
    };

    std::optional<Fit> fit;

    /** Recordings that are read beside the input, and that the output must not replace. */
    std::vector<std::string> references;

    /** Throws CommandError where the output would replace one of them. */
    void requireReferencesStay() const;
};

/** What became of it. */
struct RenderResult
{
    /** One band as it acts, and as it was asked for. */
    struct Band
    {
        int number = 0;
        BandOption asked;
        float actingGainDb = 0.0f;
        std::string text;
    };

    std::string input;
    std::string output;
    std::string inputFormat;
    std::string outputFormat;
    std::string preset;
    double sampleRate = 0.0;
    int channels = 0;
    double seconds = 0.0;
    FilterMode mode = FilterMode::master;
    FilterPhase phase = FilterPhase::linear;
    int delaySamples = 0;
    std::vector<Band> bands;

    /** How far the sound was from a target, the bands that this led to, and how far it is with them. */
    struct SmartBands
    {
        MeasurementTarget target;
        TargetDistance before;
        std::vector<BandOption> bands;
        std::optional<RenderRequest::Fit> fit;
        TargetDistance after;
    };

    std::optional<SmartBands> smartBands;
    float gainScalePercent = 100.0f;
    float outputGainDb = 0.0f;

    /** Largest absolute sample, and how many were cut at full scale. */
    float peak = 0.0f;
    juce::int64 clipped = 0;

    /** Samples of the input that were no finite numbers, and count as silence. */
    juce::int64 notFinite = 0;

    /** Where the result is other than the settings let one expect, in sentences. */
    std::vector<std::string> notes;
};

/** One file through the equaliser into another. */
class RenderTask
{
public:
    using Progress = std::function<void (double fraction)>;

    /** Opens both files, listens where that is asked for, and designs the filters. Message thread, as for every
       instance of the plug-in; so is the destructor. Throws CommandError.
       @param listening is told, while it listens, how much of the task is done */
    explicit RenderTask (const RenderRequest& request, const Progress& listening = {});

    RenderTask (const RenderTask&) = delete;
    RenderTask& operator= (const RenderTask&) = delete;

    /** Renders, and puts the file in its place. Once, on any one thread. Throws CommandError. */
    void run();

    /** How much is done, 0 to 1. Any thread. */
    [[nodiscard]] double progress() const noexcept { return done.load (std::memory_order_relaxed); }

    /** After run(). */
    [[nodiscard]] const RenderResult& result() const noexcept { return outcome; }

private:
    /** Listens to the input, and gives the settings with the bands that follow from it. */
    [[nodiscard]] EqualiserSettings settingsFor (const RenderRequest& request, const Progress& listening);
    void describeSettings();
    void selectPreset (const std::string& preset);

    RenderResult outcome;
    AudioInput source;
    const SoundEncoding encoding;
    AudioOutput target;
    std::optional<Listener> listener; ///< to the result
    const EqualiserSettings settings;
    OfflineRenderer renderer;

    /** Of the input, while it was listened to. */
    juce::int64 notFiniteBefore = 0;
    std::atomic<double> done { 0.0 };
};
