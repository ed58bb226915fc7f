#include "app/AudioInput.h"

#include "app/CommandError.h"
#include "app/Mp3Frames.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

namespace
{
/** Wider samples than these are taken for garbage by the framework's readers. */
constexpr unsigned widestSampleBits = 32;

std::string quoted (const juce::File& file)
{
    return "'" + file.getFullPathName().toStdString() + "'";
}

enum class Codec
{
    wav,
    aiff,
    flac,
    mp3
};

struct Recognised
{
    Codec codec;

    /** Where its first byte is: behind tags. */
    juce::int64 start = 0;
};

/** By what the file begins with. The framework would try one reader after the other, and an MP3 reader finds something
    to play in nearly everything. */
std::optional<Recognised> recognise (const juce::File& file)
{
    juce::FileInputStream stream (file);
    std::array<unsigned char, Mp3Frames::tagHeaderLength> start {};
    juce::int64 position = 0;

    const auto readStart = [&]
    {
        start.fill (0);
        return stream.setPosition (position) && stream.read (start.data(), static_cast<int> (start.size())) > 0;
    };

    // A FLAC may stand behind a tag as well.
    while (readStart())
    {
        const auto length = Mp3Frames::tagLength (start.data());

        if (length == 0)
            break;

        position += length;
    }

    const std::string_view magic (reinterpret_cast<const char*> (start.data()), 4);

    if (magic == "fLaC")
        return Recognised { Codec::flac, position };

    // A tag, or the eleven set bits that every frame begins with.
    if (position > 0 || (start[0] == 0xff && (start[1] & 0xe0) == 0xe0))
        return Recognised { Codec::mp3 };

    if (magic == "RIFF" || magic == "RF64")
        return Recognised { Codec::wav };

    if (magic == "FORM")
        return Recognised { Codec::aiff };

    return {};
}

std::unique_ptr<juce::AudioFormat> formatFor (Codec codec)
{
    switch (codec)
    {
        case Codec::aiff:
            return std::make_unique<juce::AiffAudioFormat>();
        case Codec::flac:
            return std::make_unique<juce::FlacAudioFormat>();
        case Codec::mp3:
            return std::make_unique<juce::MP3AudioFormat>();
        case Codec::wav:
            break;
    }

    return std::make_unique<juce::WavAudioFormat>();
}

void requireReadableFile (const juce::File& file)
{
    if (! file.exists())
        throw CommandError (ExitCode::unreadableInput, "There is no file " + quoted (file) + ".");

    if (file.isDirectory())
        throw CommandError (ExitCode::unreadableInput, quoted (file) + " is a folder, not an audio file.");

    if (! file.hasReadAccess())
        throw CommandError (ExitCode::unreadableInput, quoted (file) + " may not be read by this user.");
}
} // namespace

/** A file that remembers whether it gave less than it was asked for. The framework's readers fill up with silence then,
    and say nothing. */
class AudioInput::WatchedStream final : public juce::InputStream
{
public:
    explicit WatchedStream (std::unique_ptr<juce::InputStream> streamToWatch) : stream (std::move (streamToWatch)) {}

    [[nodiscard]] bool gaveLess() const noexcept { return shortRead; }
    [[nodiscard]] bool saidThatItEnded() const noexcept { return toldEnd; }

    void forget() noexcept
    {
        shortRead = false;
        toldEnd = false;
    }

    juce::int64 getTotalLength() override { return stream->getTotalLength(); }
    juce::int64 getPosition() override { return stream->getPosition(); }
    bool setPosition (juce::int64 position) override { return stream->setPosition (position); }

    bool isExhausted() override
    {
        const auto ended = stream->isExhausted();
        toldEnd |= ended;
        return ended;
    }

    int read (void* destination, int byteCount) override
    {
        const auto given = stream->read (destination, byteCount);
        shortRead |= given < byteCount;
        return given;
    }

private:
    const std::unique_ptr<juce::InputStream> stream;
    bool shortRead = false;
    bool toldEnd = false;
};

AudioInput::~AudioInput() = default;

AudioInput::AudioInput (const juce::File& fileToOpen) : file (fileToOpen)
{
    requireReadableFile (file);
    open();

    if (reader == nullptr || reader->bitsPerSample > widestSampleBits)
        throw CommandError (ExitCode::unreadableInput,
                            quoted (file)
                                + " is not a sound file that can be read. WAV and AIFF of 8 to 32 bits, FLAC and MP3 "
                                  "can.");

    if (reader->lengthInSamples <= 0 || reader->numChannels == 0)
        throw CommandError (ExitCode::unreadableInput, quoted (file) + " holds no sound.");
}

void AudioInput::open()
{
    const auto recognised = recognise (file);

    if (! recognised.has_value())
        return;

    if (recognised->codec == Codec::mp3)
        return openMp3();

    std::unique_ptr<juce::InputStream> source = file.createInputStream();

    if (source != nullptr && recognised->start > 0)
        source = std::make_unique<juce::SubregionStream> (source.release(), recognised->start, -1, true);

    if (source != nullptr)
        openReader (*formatFor (recognised->codec), std::move (source));
}

void AudioInput::openMp3()
{
    juce::MemoryBlock content;

    if (! file.loadFileAsData (content))
        return;

    auto found = Mp3Frames::find (content);

    if (! found.has_value())
        return;

    if (! found->isWhole)
        refuseDamaged();

    juce::MP3AudioFormat format;
    openReader (format, std::make_unique<juce::MemoryInputStream> (std::move (found->frames)));

    if (reader != nullptr)
        reader->lengthInSamples = found->sampleCount;
}

void AudioInput::openReader (juce::AudioFormat& format, std::unique_ptr<juce::InputStream> source)
{
    auto watched = std::make_unique<WatchedStream> (std::move (source));
    stream = watched.get();
    reader.reset (format.createReaderFor (watched.release(), true));

    // Finding out what the file is asks beyond its end now and then.
    if (reader != nullptr)
        stream->forget();
}

void AudioInput::refuseDamaged() const
{
    throw CommandError (ExitCode::unreadableInput, quoted (file) + " ends before its header says so, or is damaged.");
}

std::string AudioInput::formatName() const
{
    return reader->getFormatName().upToFirstOccurrenceOf (" ", false, false).toStdString();
}

void AudioInput::read (juce::AudioBuffer<float>& block, juce::int64 start, int count)
{
    const auto complete = reader->read (&block, 0, count, start, true, true);
    const auto format = formatName();

    // The frames of an MP3 were counted. The FLAC library reads in pages, the last one not full, and asks whether that
    // was all only when it needs more.
    if (format == "MP3")
        return;

    if (! complete || (format == "FLAC" ? stream->saidThatItEnded() : stream->gaveLess()))
        refuseDamaged();
}
