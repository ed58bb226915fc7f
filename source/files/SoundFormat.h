#pragma once

#include <juce_audio_formats/juce_audio_formats.h>

/** All sound files that the product reads and writes, as one format of the framework: for a format manager. */
class SoundFormat final : public juce::AudioFormat
{
public:
    SoundFormat();

    juce::Array<int> getPossibleSampleRates() override;
    juce::Array<int> getPossibleBitDepths() override;
    bool canDoStereo() override { return true; }
    bool canDoMono() override { return true; }
    bool isCompressed() override { return true; }

    /** A SoundReader; null when the stream holds no sound file of a kind that is served, or one that is damaged. */
    juce::AudioFormatReader* createReaderFor (juce::InputStream* sourceStream,
                                              bool deleteStreamIfOpeningFails) override;

    /** A SoundWriter for WAV, of so many bits; 32 are floating point. Other encodings have SoundWriter::create. Null
       for other widths, with the stream left to the caller. */
    juce::AudioFormatWriter* createWriterFor (juce::OutputStream* streamToWriteTo,
                                              double sampleRateToUse,
                                              unsigned int numberOfChannels,
                                              int bitsPerSample,
                                              const juce::StringPairArray& metadataValues,
                                              int qualityOptionIndex) override;
    using AudioFormat::createWriterFor;
};
