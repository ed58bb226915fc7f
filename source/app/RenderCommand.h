#pragma once

#include "app/EqualiserSettings.h"

#include <string>

class AudioInput;
class AudioOutput;
class OfflineRenderer;
class VelmoraAudioProcessor;
struct SoundEncoding;

/** `solvane render`: one file through the equaliser into another. */
struct RenderCommand
{
    std::string input;
    std::string output;
    std::string format;

    /** Id or name of the preset to select, or nothing. */
    std::string preset;
    int blockSize = 512;
    EqualiserSettings settings;

    /** Renders, and prints what was done. Throws CommandError. */
    void run() const;

private:
    void selectPreset (VelmoraAudioProcessor& processor) const;
    void report (const AudioInput& source,
                 const SoundEncoding& storedAs,
                 OfflineRenderer& renderer,
                 const AudioOutput& result) const;
};
