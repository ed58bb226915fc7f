#include "app/AudioOutput.h"

#include "app/CommandError.h"
#include "app/FileArgument.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <optional>

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

std::optional<Container> containerByEnding (const juce::File& file)
{
    if (file.hasFileExtension ("wav;wave"))
        return Container::wav;

    if (file.hasFileExtension ("aif;aiff"))
        return Container::aiff;

    if (file.hasFileExtension ("flac"))
        return Container::flac;

    return {};
}

std::string quoted (const juce::File& file)
{
    return "'" + file.getFullPathName().toStdString() + "'";
}

/** What a symbolic link stands for, also where nothing is there yet. */
juce::File behindLinks (juce::File file)
{
    constexpr int longestChain = 40;

    for (int step = 0; step < longestChain && file.isSymbolicLink(); ++step)
    {
        const std::filesystem::path link (file.getFullPathName().toStdString());
        std::error_code error;
        const auto next = std::filesystem::read_symlink (link, error);

        if (error)
            break;

        file = fileFor ((link.parent_path() / next).string());
    }

    return file;
}

/** The nearest whole number of so many bits, in the upper bits of 32; 0 for what is no number. */
int wholeNumberOf (float sample, int bits) noexcept
{
    const auto scale = static_cast<double> (1 << (bits - 1));
    const auto value = std::isnan (sample) ? 0.0 : std::clamp (sample * scale, -scale, scale - 1.0);
    return static_cast<int> (std::lrint (value)) * (1 << (32 - bits));
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
    switch (containerByEnding (file).value_or (Container::wav))
    {
        case Container::aiff:
            return { Container::aiff, 24 };
        case Container::flac:
            return { Container::flac, 24 };
        case Container::wav:
            break;
    }

    if (containerByEnding (file).has_value())
        return { Container::wav, 32 };

    throw CommandError (ExitCode::badArguments,
                        "'" + file.getFileName().toStdString()
                            + "' does not end in .wav, .aiff or .flac. Choose with --format what it is to be.");
}

OutputFormat OutputFormat::choose (const std::string& name, const juce::File& file)
{
    if (name.empty())
        return fromFile (file);

    const auto format = fromName (name);

    if (const auto byEnding = containerByEnding (file); byEnding.has_value() && *byEnding != format.container)
        throw CommandError (ExitCode::badArguments,
                            "'" + file.getFileName().toStdString()
                                + "' would hold what its ending does not say: --format " + name + " was asked for.");

    return format;
}

std::string OutputFormat::description() const
{
    for (const auto& candidate : namedFormats)
        if (candidate.format.container == container && candidate.format.bits == bits)
            return candidate.description;

    return {};
}

//======================================================================================================================
/** What became of a stream. Outlives it, as writers store their last bytes when they die. */
struct AudioOutput::StreamRecord
{
    bool failed = false;
    std::string reason;

    /** Size that the file must have, in bytes. */
    juce::int64 end = 0;

    void note (const juce::Result& result)
    {
        if (result.wasOk() || failed)
            return;

        failed = true;
        reason = result.getErrorMessage().toStdString();
    }
};

/** Tells whether everything that a writer handed over reached the file. */
class AudioOutput::CheckedStream final : public juce::OutputStream
{
public:
    CheckedStream (const juce::File& file, std::shared_ptr<StreamRecord> recordToKeep)
        : stream (file), record (std::move (recordToKeep))
    {
        record->note (stream.getStatus());
    }

    ~CheckedStream() override { flush(); }

    void flush() override
    {
        stream.flush();
        record->note (stream.getStatus());
    }

    bool setPosition (juce::int64 position) override { return noted (stream.setPosition (position)); }
    juce::int64 getPosition() override { return stream.getPosition(); }

    bool write (const void* data, size_t byteCount) override
    {
        const auto succeeded = noted (stream.write (data, byteCount));
        record->end = std::max (record->end, stream.getPosition());
        return succeeded;
    }

private:
    bool noted (bool succeeded)
    {
        record->note (stream.getStatus());
        record->failed |= ! succeeded;
        return succeeded;
    }

    juce::FileOutputStream stream;
    std::shared_ptr<StreamRecord> record;
};

//======================================================================================================================
AudioOutput::AudioOutput (const juce::File& targetToUse, OutputFormat formatToUse, double sampleRate, int channelCount)
    : target (behindLinks (targetToUse)), format (formatToUse), record (std::make_shared<StreamRecord>())
{
    requireWritableTarget();

    partial = target.getSiblingFile (".solvane-" + juce::String (juce::Time::getHighResolutionTicks()) + ".part")
                  .getNonexistentSibling();
    auto stream = std::make_unique<CheckedStream> (partial, record);

    if (record->failed)
        fail ("could not be made");

    // What others may not read must not lie open while it is made anew.
    takePermissionsOfTarget();
    writer.reset (
        codecFor (format.container)
            ->createWriterFor (stream.get(), sampleRate, static_cast<unsigned> (channelCount), format.bits, {}, 0));

    if (writer == nullptr)
    {
        record->reason =
            format.description() + " does not go with " + std::to_string (static_cast<int> (sampleRate)) + " Hz";
        fail ("could not be made");
    }

    stream.release(); // the writer owns it now
    wholeNumbers.resize (static_cast<std::size_t> (channelCount));
}

AudioOutput::~AudioOutput()
{
    writer.reset();
    partial.deleteFile();
}

void AudioOutput::requireWritableTarget() const
{
    if (target.isDirectory())
        throw CommandError (ExitCode::unwritableOutput, quoted (target) + " is a folder.");

    if (! target.getParentDirectory().isDirectory())
        throw CommandError (ExitCode::unwritableOutput,
                            "There is no folder " + quoted (target.getParentDirectory()) + ".");

    std::error_code error;
    const auto status = std::filesystem::status (target.getFullPathName().toStdString(), error);

    if (! std::filesystem::exists (status))
        return;

    // A device or a pipe would be replaced by a file.
    if (! std::filesystem::is_regular_file (status))
        throw CommandError (ExitCode::unwritableOutput, quoted (target) + " is not an ordinary file.");

    if (! target.hasWriteAccess())
        throw CommandError (ExitCode::unwritableOutput, quoted (target) + " may not be written to by this user.");
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

bool AudioOutput::store (const juce::AudioBuffer<float>& block, int start, int count)
{
    if (writer->isFloatingPoint())
        return writer->writeFromAudioSampleBuffer (block, start, count);

    // The writer takes the upper bits of 32, for each channel, and a null behind the last.
    std::vector<const int*> channels;

    for (std::size_t channel = 0; channel < wholeNumbers.size(); ++channel)
    {
        auto& numbers = wholeNumbers[channel];
        const auto* samples = block.getReadPointer (static_cast<int> (channel), start);
        numbers.resize (static_cast<std::size_t> (count));
        std::transform (samples,
                        samples + count,
                        numbers.begin(),
                        [this] (float sample) { return wholeNumberOf (sample, format.bits); });
        channels.push_back (numbers.data());
    }

    channels.push_back (nullptr);
    return writer->write (channels.data(), count);
}

void AudioOutput::write (const juce::AudioBuffer<float>& block, int start, int count)
{
    inspect (block, start, count);

    if (! store (block, start, count) || record->failed)
        fail ("could not be written");
}

void AudioOutput::commit()
{
    writer.reset();

    // A disk that has room for a part of the last bytes reports no error for them.
    if (record->failed || partial.getSize() != record->end)
        fail ("could not be written");

    const std::filesystem::path from (partial.getFullPathName().toStdString());
    const std::filesystem::path to (target.getFullPathName().toStdString());
    std::error_code error;

    takePermissionsOfTarget();
    std::filesystem::rename (from, to, error);

    if (error)
    {
        record->reason = error.message();
        fail ("could not be put in its place");
    }
}

void AudioOutput::takePermissionsOfTarget() const
{
    std::error_code error;

    if (const auto existing = std::filesystem::status (target.getFullPathName().toStdString(), error);
        std::filesystem::exists (existing))
        std::filesystem::permissions (partial.getFullPathName().toStdString(), existing.permissions(), error);
}

void AudioOutput::fail (const std::string& what)
{
    writer.reset();
    partial.deleteFile();
    throw CommandError (ExitCode::unwritableOutput,
                        quoted (target) + " " + what + ": "
                            + (record->reason.empty() ? "the disk is full, or the file grew too large" : record->reason)
                            + ".");
}
