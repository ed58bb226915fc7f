#include "app/AudioOutput.h"

#include "app/CommandError.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace
{
struct NamedFormat
{
    const char* name;
    OutputFormat format;
    const char* description;
};

using Container = OutputFormat::Container;

constexpr std::array namedFormats {
    NamedFormat { "wav-16", { Container::wav, 16 }, "WAV, 16 bits" },
    NamedFormat { "wav-24", { Container::wav, 24 }, "WAV, 24 bits" },
    NamedFormat { "wav-float", { Container::wav, 32 }, "WAV, 32 bits floating point" },
    NamedFormat { "aiff-16", { Container::aiff, 16 }, "AIFF, 16 bits" },
    NamedFormat { "aiff-24", { Container::aiff, 24 }, "AIFF, 24 bits" },
    NamedFormat { "flac-16", { Container::flac, 16 }, "FLAC, 16 bits" },
    NamedFormat { "flac-24", { Container::flac, 24 }, "FLAC, 24 bits" },
};

std::unique_ptr<juce::AudioFormat> codecFor (Container container)
{
    switch (container)
    {
        case Container::aiff:
            return std::make_unique<juce::AiffAudioFormat>();
        case Container::flac:
            return std::make_unique<juce::FlacAudioFormat>();
        case Container::wav:
            break;
    }

    return std::make_unique<juce::WavAudioFormat>();
}
} // namespace

OutputFormat OutputFormat::fromName (const std::string& name)
{
    std::string known;

    for (const auto& candidate : namedFormats)
    {
        if (name == candidate.name)
            return candidate.format;

        known += (known.empty() ? "" : ", ") + std::string (candidate.name);
    }

    throw CommandError (ExitCode::badArguments, "--format " + name + " is not known. There are " + known + ".");
}

OutputFormat OutputFormat::fromFile (const juce::File& file)
{
    if (file.hasFileExtension ("wav;wave"))
        return { Container::wav, 32 };

    if (file.hasFileExtension ("aif;aiff"))
        return { Container::aiff, 24 };

    if (file.hasFileExtension ("flac"))
        return { Container::flac, 24 };

    throw CommandError (ExitCode::badArguments,
                        "'" + file.getFileName().toStdString()
                            + "' does not end in .wav, .aiff or .flac; choose with --format what it is to be.");
}

std::string OutputFormat::description() const
{
    for (const auto& candidate : namedFormats)
        if (candidate.format.container == container && candidate.format.bits == bits)
            return candidate.description;

    return {};
}

//======================================================================================================================
/** Tells whether everything that a writer handed over reached the file, also what it hands over as it dies. */
class AudioOutput::CheckedStream final : public juce::OutputStream
{
public:
    CheckedStream (const juce::File& file, std::shared_ptr<bool> failedFlag)
        : stream (file), failed (std::move (failedFlag))
    {
        if (stream.failedToOpen())
            *failed = true;
    }

    ~CheckedStream() override { flush(); }

    void flush() override
    {
        stream.flush();
        note (stream.getStatus().wasOk());
    }

    bool setPosition (juce::int64 position) override { return note (stream.setPosition (position)); }
    juce::int64 getPosition() override { return stream.getPosition(); }
    bool write (const void* data, size_t byteCount) override { return note (stream.write (data, byteCount)); }

private:
    bool note (bool succeeded)
    {
        if (! succeeded)
            *failed = true;

        return succeeded;
    }

    juce::FileOutputStream stream;
    std::shared_ptr<bool> failed;
};

//======================================================================================================================
AudioOutput::AudioOutput (const juce::File& targetToUse, OutputFormat formatToUse, double sampleRate, int channelCount)
    : target (targetToUse), format (formatToUse)
{
    if (target.isDirectory())
        throw CommandError (ExitCode::unwritableOutput,
                            "'" + target.getFullPathName().toStdString() + "' is a folder.");

    if (! target.getParentDirectory().isDirectory())
        throw CommandError (ExitCode::unwritableOutput,
                            "There is no folder '" + target.getParentDirectory().getFullPathName().toStdString()
                                + "'.");

    partial = target.getSiblingFile ("." + target.getFileName() + ".part").getNonexistentSibling();
    auto stream = std::make_unique<CheckedStream> (partial, streamFailed);

    if (*streamFailed)
        fail ("could not be made: the folder may not be written to, or the disk is full.");

    writer.reset (
        codecFor (format.container)
            ->createWriterFor (stream.get(), sampleRate, static_cast<unsigned> (channelCount), format.bits, {}, 0));

    if (writer == nullptr)
        fail ("cannot be " + format.description() + " at " + std::to_string (static_cast<int> (sampleRate)) + " Hz.");

    stream.release(); // the writer owns it now
}

AudioOutput::~AudioOutput()
{
    writer.reset();
    partial.deleteFile();
}

void AudioOutput::inspect (const juce::AudioBuffer<float>& block, int start, int count) noexcept
{
    for (int channel = 0; channel < block.getNumChannels(); ++channel)
    {
        const auto* samples = block.getReadPointer (channel, start);

        for (int sample = 0; sample < count; ++sample)
        {
            const auto magnitude = std::abs (samples[sample]);
            largest = std::max (largest, magnitude);
            clipped += magnitude > 1.0f ? 1 : 0;
        }
    }
}

void AudioOutput::write (const juce::AudioBuffer<float>& block, int start, int count)
{
    inspect (block, start, count);

    if (! writer->writeFromAudioSampleBuffer (block, start, count) || *streamFailed)
        fail ("could not be written: the disk is full, or the file grew too large.");
}

void AudioOutput::commit()
{
    writer.reset();

    if (*streamFailed)
        fail ("could not be finished: the disk is full, or the file grew too large.");

    if (! partial.moveFileTo (target))
        fail ("could not be put in its place.");
}

void AudioOutput::fail (const std::string& what)
{
    writer.reset();
    partial.deleteFile();
    throw CommandError (ExitCode::unwritableOutput, "'" + target.getFullPathName().toStdString() + "' " + what);
}
