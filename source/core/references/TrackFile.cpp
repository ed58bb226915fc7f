#include "core/references/TrackFile.h"

#include "files/SoundFormat.h"

#include <filesystem>
#include <sys/stat.h>

namespace
{
/** In Hz. */
constexpr double lowestRate = 1000.0;
constexpr double highestRate = 1.0e6;

/** What a compressed byte can stand for at most: a frame of FLAC has up to 65535 samples, and takes ten bytes even for
    silence. No other kind comes near. */
constexpr double mostSamplesPerByte = 6553.6;

/** Without waiting for the other end of a pipe; nothing for what is no file with a size. */
Descriptor regularFile (const juce::File& file)
{
    auto opened = Descriptor::toRead (std::filesystem::path (file.getFullPathName().toStdString()));
    struct stat status
    {
    };

    if (! opened.isOpen() || ::fstat (opened.number(), &status) != 0 || ! S_ISREG (status.st_mode))
        return {};

    return opened;
}

/** A format that believes a header would read what is not there. */
bool promisesTooMuch (const juce::AudioFormatReader& reader, juce::AudioFormat& format, juce::int64 fileBytes)
{
    if (format.isCompressed())
        return static_cast<double> (reader.lengthInSamples) > mostSamplesPerByte * static_cast<double> (fileBytes);

    const auto bytes = static_cast<double> (reader.lengthInSamples) * reader.numChannels * (reader.bitsPerSample / 8);
    return bytes > static_cast<double> (fileBytes);
}

/** A rate that is none would make more of a few bytes than memory holds. */
bool hasPossibleRate (const juce::AudioFormatReader& reader)
{
    return reader.sampleRate >= lowestRate && reader.sampleRate <= highestRate;
}
} // namespace

TrackFile::TrackFile()
{
    formatManager.registerFormat (new SoundFormat(), true);
    formatManager.registerBasicFormats();
}

std::unique_ptr<juce::AudioFormatReader> TrackFile::open (const juce::File& file, FileInput::MayGoOn mayGoOn)
{
    for (auto* format : formatManager)
    {
        if (! format->canHandleFile (file))
            continue;

        auto opened = regularFile (file);

        if (! opened.isOpen() || (mayGoOn && ! mayGoOn()))
            return nullptr;

        const auto bytes = opened.size();
        auto stream = std::make_unique<FileInput> (std::move (opened), mayGoOn);
        std::unique_ptr<juce::AudioFormatReader> reader (format->createReaderFor (stream.release(), true));

        if (reader != nullptr && hasPossibleRate (*reader) && ! promisesTooMuch (*reader, *format, bytes))
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
