#include "app/AudioInput.h"

#include "app/CommandError.h"

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

/** By what the file begins with. The framework would try one reader after the other, and an MP3 reader finds something
    to play in nearly everything. */
std::optional<Codec> codecOf (const juce::File& file)
{
    std::array<unsigned char, 4> start {};
    juce::FileInputStream stream (file);

    if (stream.read (start.data(), static_cast<int> (start.size())) != static_cast<int> (start.size()))
        return {};

    const std::string_view magic (reinterpret_cast<const char*> (start.data()), start.size());

    if (magic == "RIFF" || magic == "RF64")
        return Codec::wav;

    if (magic == "FORM")
        return Codec::aiff;

    if (magic == "fLaC")
        return Codec::flac;

    // A tag, or the eleven set bits that every frame begins with.
    if (magic.starts_with ("ID3") || (start[0] == 0xff && (start[1] & 0xe0) == 0xe0))
        return Codec::mp3;

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
    explicit WatchedStream (const juce::File& file) : stream (file) {}

    [[nodiscard]] bool opened() const { return stream.openedOk(); }
    [[nodiscard]] bool gaveLess() const noexcept { return shortRead; }
    [[nodiscard]] bool saidThatItEnded() const noexcept { return toldEnd; }

    void forget() noexcept
    {
        shortRead = false;
        toldEnd = false;
    }

    juce::int64 getTotalLength() override { return stream.getTotalLength(); }
    juce::int64 getPosition() override { return stream.getPosition(); }
    bool setPosition (juce::int64 position) override { return stream.setPosition (position); }

    bool isExhausted() override
    {
        const auto ended = stream.isExhausted();
        toldEnd |= ended;
        return ended;
    }

    int read (void* destination, int byteCount) override
    {
        const auto given = stream.read (destination, byteCount);
        shortRead |= given < byteCount;
        return given;
    }

private:
    juce::FileInputStream stream;
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

    if (formatName() == "MP3")
        measureLength();

    if (reader->lengthInSamples <= 0 || reader->numChannels == 0)
        throw CommandError (ExitCode::unreadableInput, quoted (file) + " holds no sound.");
}

void AudioInput::open()
{
    const auto codec = codecOf (file);
    auto watched = std::make_unique<WatchedStream> (file);

    if (! codec.has_value() || ! watched->opened())
        return;

    stream = watched.get();
    reader.reset (formatFor (*codec)->createReaderFor (watched.release(), true));

    // Finding out what the file is asks beyond its end now and then.
    if (reader != nullptr)
        stream->forget();
}

void AudioInput::measureLength()
{
    // Where the file does not say how many frames it has, the reader guesses from its size and the first frame, which
    // goes wrong where frames differ in size. So the frames are decoded once. The reader goes on with silence behind
    // the last one, and takes pages from the file, so that the file's end is met up to a page before the sound's.
    constexpr int frameLength = 1152;
    constexpr double pageBytes = 16384.0;

    juce::AudioBuffer<float> frame (static_cast<int> (reader->numChannels), frameLength);
    juce::int64 position = 0;
    juce::int64 end = 0;

    const auto decodeFrame = [&]
    {
        const auto decoded = reader->read (&frame, 0, frameLength, position, true, true);
        position += frameLength;

        if (decoded && frame.getMagnitude (0, frameLength) > 0.0f)
            end = position;

        return decoded;
    };

    while (! stream->isExhausted() && decodeFrame())
    {
    }

    end = std::max (end, position);
    const auto averageFrameBytes =
        static_cast<double> (stream->getTotalLength()) * frameLength / static_cast<double> (end);
    const auto framesInPage = static_cast<int> (pageBytes / averageFrameBytes) + 2;

    for (int index = 0; index < framesInPage && decodeFrame(); ++index)
    {
    }

    const auto stated = reader->lengthInSamples;
    open();
    reader->lengthInSamples = stated >= end && stated <= position ? stated : end;
}

std::string AudioInput::formatName() const
{
    return reader->getFormatName().upToFirstOccurrenceOf (" ", false, false).toStdString();
}

void AudioInput::read (juce::AudioBuffer<float>& block, juce::int64 start, int count)
{
    const auto complete = reader->read (&block, 0, count, start, true, true);
    const auto format = formatName();

    // An MP3 has no header that could say more than there is, and its length was measured. The FLAC library reads in
    // pages, the last one not full, and asks whether that was all only when it needs more.
    if (format == "MP3")
        return;

    if (! complete || (format == "FLAC" ? stream->saidThatItEnded() : stream->gaveLess()))
        throw CommandError (ExitCode::unreadableInput,
                            quoted (file) + " ends before its header says so, or is damaged.");
}
