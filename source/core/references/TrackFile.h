#pragma once

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

    /** The first reader that takes the file, or null: for a file that is none of ours, that ends before its header
        says so, or that cannot be opened. */
    [[nodiscard]] std::unique_ptr<juce::AudioFormatReader> open (const juce::File& file);

    /** A file's name as the tracks show it: what stands between the last separator and the last dot, in upper case; the
        whole path where no dot stands behind the last separator. */
    [[nodiscard]] static juce::String stemOf (const juce::String& path);

private:
    juce::AudioFormatManager formatManager;
};
