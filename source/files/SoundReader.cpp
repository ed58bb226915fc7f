#include "files/SoundReader.h"

#include "files/InfoFrameView.h"
#include "files/MpegScan.h"

#include <algorithm>
#include <array>

namespace
{
using Failure = SoundReader::Failure;

/** Where the sound begins behind tags: the library knows one tag in front of some kinds of files. 0 without a tag. */
juce::int64 lengthOfTags (juce::InputStream& stream)
{
    constexpr int headerLength = 10;
    constexpr int footerFlag = 0x10;
    juce::int64 position = 0;
    std::array<unsigned char, headerLength> header {};

    while (stream.setPosition (position) && stream.read (header.data(), headerLength) == headerLength
           && header[0] == 'I' && header[1] == 'D' && header[2] == '3')
    {
        // Seven bits a byte, and a footer where there is one.
        const auto length = (header[6] << 21) | (header[7] << 14) | (header[8] << 7) | header[9];
        position += headerLength + length + ((header[5] & footerFlag) != 0 ? headerLength : 0);
    }

    return position;
}

/** The library knows the length of a file in advance, but for what it says to be endless. */
constexpr sf_count_t unknownLength = SF_COUNT_MAX;

/** Decodes everything, to count it. Nothing where that does not work to the end. */
std::optional<sf_count_t> countSamples (SNDFILE* handle, int channels)
{
    constexpr sf_count_t blockLength = 4096;
    std::vector<float> block (static_cast<std::size_t> (blockLength * channels));
    sf_count_t total = 0;

    for (auto count = blockLength; count > 0; total += count)
        count = sf_readf_float (handle, block.data(), blockLength);

    return sf_error (handle) == SF_ERR_NO_ERROR ? std::optional (total) : std::nullopt;
}

/** The true number of samples goes into `info`, and what the header promises into `promised`. `handle` is opened anew
 * where it had to be used up. */
Failure verify (juce::InputStream& stream,
                SoundHandle& handle,
                SF_INFO& info,
                const SoundEncoding& encoding,
                PromisedSize& promised)
{
    using Container = SoundEncoding::Container;

    if (encoding.container == Container::mp3)
    {
        // The library goes by the stream's position when it reads on.
        const auto before = stream.getPosition();
        const auto scan = MpegScan::of (stream);
        stream.setPosition (before);
        info.frames = scan.has_value() ? scan->sampleCount : 0;
        return scan.has_value() ? Failure::none : Failure::damaged;
    }

    if (encoding.container == Container::flac && info.frames == unknownLength)
    {
        const auto count = countSamples (handle.get(), info.channels);

        if (! count.has_value())
            return Failure::damaged;

        SF_INFO again {};
        handle.reset();
        stream.setPosition (0);
        handle = SoundStreams::openForReading (stream, again);
        info.frames = *count;
        return handle == nullptr ? Failure::damaged : Failure::none;
    }

    // Ogg says where it ends on its last page.
    if (info.frames == unknownLength)
        return Failure::damaged;

    const auto before = stream.getPosition();
    promised = PromisedSize::look (stream);
    stream.setPosition (before);

    switch (promised.verdict)
    {
        case PromisedSize::Verdict::broken:
            return Failure::damaged;
        case PromisedSize::Verdict::nothing:
            return Failure::empty;
        case PromisedSize::Verdict::kept:
        case PromisedSize::Verdict::open:
            break;
    }

    return Failure::none;
}
} // namespace

SoundReader::Opened SoundReader::open (std::unique_ptr<juce::InputStream>& stream)
{
    SF_INFO info {};
    auto view = InfoFrameView::of (*stream, lengthOfTags (*stream));
    stream->setPosition (0);
    auto handle = SoundStreams::openForReading (view != nullptr ? *view : *stream, info);

    if (handle == nullptr)
    {
        if (const auto tags = lengthOfTags (*stream); tags > 0)
        {
            std::unique_ptr<juce::InputStream> behind =
                std::make_unique<juce::SubregionStream> (stream.get(), tags, -1, false);
            auto opened = open (behind);

            if (opened.reader != nullptr)
                opened.reader->taggedStream = std::move (stream);

            return opened;
        }

        // A header that ends within itself is one that its file does not keep.
        const auto isMalformed = sf_error (nullptr) == SF_ERR_MALFORMED_FILE;
        return { nullptr, isMalformed ? Failure::damaged : Failure::unknown };
    }

    const auto encoding = SoundEncoding::fromLibraryFormat (info.format);

    if (! encoding.has_value())
        return { nullptr, Failure::unknown };

    PromisedSize promised;

    if (const auto failure = verify (*stream, handle, info, *encoding, promised); failure != Failure::none)
        return { nullptr, failure };

    if (info.frames <= 0 || info.channels <= 0)
        return { nullptr, Failure::empty };

    std::unique_ptr<SoundReader> reader (new SoundReader (std::move (stream), std::move (handle), info, *encoding));
    reader->promise = promised;
    reader->infoFrame = std::move (view);
    return { std::move (reader), Failure::none };
}

SoundReader::SoundReader (std::unique_ptr<juce::InputStream> stream,
                          SoundHandle handleToRead,
                          const SF_INFO& info,
                          SoundEncoding encodingOfFile)
    : AudioFormatReader (stream.release(), SoundEncoding::containerName (encodingOfFile.container)),
      handle (std::move (handleToRead)),
      stored (encodingOfFile),
      carried (SoundExtras::of (handle.get()))
{
    sampleRate = info.samplerate;
    numChannels = static_cast<unsigned> (info.channels);
    lengthInSamples = info.frames;
    bitsPerSample = stored.wholeNumberBits() > 0 ? static_cast<unsigned> (stored.wholeNumberBits()) : 32u;
    usesFloatingPointData = true;
}

bool SoundReader::seekTo (juce::int64 sample)
{
    if (sample == position)
        return true;

    position = sf_seek (handle.get(), sample, SEEK_SET);
    return position == sample;
}

bool SoundReader::readSamples (int* const* destChannels,
                               int numDestChannels,
                               int startOffsetInDestBuffer,
                               juce::int64 startSampleInFile,
                               int numSamples)
{
    clearSamplesBeyondAvailableLength (
        destChannels, numDestChannels, startOffsetInDestBuffer, startSampleInFile, numSamples, lengthInSamples);

    if (numSamples <= 0)
        return true;

    const auto channels = static_cast<int> (numChannels);
    const auto wanted = static_cast<std::size_t> (numSamples);
    interleaved.assign (wanted * numChannels, 0.0f);

    const auto given = seekTo (startSampleInFile) ? sf_readf_float (handle.get(), interleaved.data(), numSamples) : 0;
    position += std::max<sf_count_t> (given, 0);

    for (int channel = 0; channel < std::min (channels, numDestChannels); ++channel)
    {
        if (destChannels[channel] == nullptr)
            continue;

        auto* const destination = reinterpret_cast<float*> (destChannels[channel]) + startOffsetInDestBuffer;

        for (std::size_t sample = 0; sample < wanted; ++sample)
            destination[sample] = interleaved[sample * numChannels + static_cast<std::size_t> (channel)];
    }

    return given == numSamples;
}
