#include "files/SoundFormat.h"

#include "files/SoundReader.h"
#include "files/SoundWriter.h"

namespace
{
juce::StringArray dottedEndings()
{
    juce::StringArray list;

    for (const auto& ending : SoundEncoding::endings())
        list.add ("." + juce::String (ending));

    return list;
}
} // namespace

SoundFormat::SoundFormat() : AudioFormat ("Sound file", dottedEndings()) {}

juce::Array<int> SoundFormat::getPossibleSampleRates()
{
    return { 8000, 11025, 16000, 22050, 32000, 44100, 48000, 88200, 96000, 176400, 192000 };
}

juce::Array<int> SoundFormat::getPossibleBitDepths()
{
    return { 8, 16, 24, 32 };
}

juce::AudioFormatReader* SoundFormat::createReaderFor (juce::InputStream* sourceStream, bool deleteStreamIfOpeningFails)
{
    if (sourceStream == nullptr)
        return nullptr;

    std::unique_ptr<juce::InputStream> stream (sourceStream);
    auto opened = SoundReader::open (stream);

    if (opened.reader == nullptr && ! deleteStreamIfOpeningFails)
        juce::ignoreUnused (stream.release());

    return opened.reader.release();
}

juce::AudioFormatWriter* SoundFormat::createWriterFor (juce::OutputStream* streamToWriteTo,
                                                       double sampleRateToUse,
                                                       unsigned int numberOfChannels,
                                                       int bitsPerSample,
                                                       const juce::StringPairArray&,
                                                       int)
{
    const auto name = bitsPerSample == 32 ? "wav-float" : "wav-" + std::to_string (bitsPerSample);
    const auto encoding = SoundEncoding::fromName (name);

    if (streamToWriteTo == nullptr || ! encoding.has_value())
        return nullptr;

    std::unique_ptr<juce::OutputStream> stream (streamToWriteTo);
    auto writer = SoundWriter::create (stream, *encoding, sampleRateToUse, static_cast<int> (numberOfChannels));
    juce::ignoreUnused (stream.release()); // the writer's, or the caller's again
    return writer.release();
}
