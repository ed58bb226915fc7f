#include "core/references/TrackFile.h"

#include "files/SoundFormat.h"

namespace
{
/** A format that believes a header of plain samples would read what is not there. */
bool promisesTooMuch (const juce::AudioFormatReader& reader, juce::AudioFormat& format, juce::int64 fileBytes)
{
    if (format.isCompressed())
        return false;

    const auto bytes = static_cast<double> (reader.lengthInSamples) * reader.numChannels * (reader.bitsPerSample / 8);
    return bytes > static_cast<double> (fileBytes);
}
} // namespace

TrackFile::TrackFile()
{
    formatManager.registerFormat (new SoundFormat(), true);
    formatManager.registerBasicFormats();
}

std::unique_ptr<juce::AudioFormatReader> TrackFile::open (const juce::File& file)
{
    for (auto* format : formatManager)
    {
        if (! format->canHandleFile (file))
            continue;

        auto stream = std::make_unique<juce::FileInputStream> (file);

        if (stream->failedToOpen())
            continue;

        std::unique_ptr<juce::AudioFormatReader> reader (format->createReaderFor (stream.release(), true));

        if (reader != nullptr && ! promisesTooMuch (*reader, *format, file.getSize()))
            return reader;
    }

    return nullptr;
}

juce::String TrackFile::stemOf (const juce::String& path)
{
    const auto name = path.substring (path.lastIndexOfChar (juce::File::getSeparatorChar()) + 1);
    const auto dot = name.lastIndexOfChar ('.');
    return (dot < 0 ? path : name.substring (0, dot)).toUpperCase();
}
