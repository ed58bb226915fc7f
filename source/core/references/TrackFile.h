#pragma once

#include "files/FileInput.h"

#include <juce_audio_formats/juce_audio_formats.h>

#include <memory>

/** Opens sound files for reference tracks. One thread at a time. */
class TrackFile
{
public:
    /** What the chooser and a drop take, and what the chooser shows. */
    static constexpr auto extensions = "wav;mp3;aif;aiff;fla;flac";
    static constexpr auto chooserPattern = "*.wav;*.mp3;*.aif;*.aiff;*.fla;*.flac";

    TrackFile();

    /** The first reader that takes the file, or null: for what is no sound file of ours, or no file at all but a pipe
        or a folder; for plain samples that end before their header says so; and for a header that no recording has,
        with a rate beyond all recorders or more samples than so many bytes can stand for. A compressed file that was
        cut short is taken, and is silent at its end.
        @param mayGoOn asked at each reading from the file, as long as the reader lives */
    [[nodiscard]] std::unique_ptr<juce::AudioFormatReader> open (const juce::File& file,
                                                                 FileInput::MayGoOn mayGoOn = {});

    /** A file's name as the tracks show it: what stands between the last separator and the last dot, in upper case; the
        whole path where no dot stands behind the last separator. */
    [[nodiscard]] static juce::String stemOf (const juce::String& path);

private:
    juce::AudioFormatManager formatManager;
};
