#include "files/SoundWriter.h"

#include <algorithm>
#include <array>

namespace
{
using Container = SoundEncoding::Container;

/** Sizes are stored in 32 bits; AIFF's have a sign. What stands around the samples needs a part. */
constexpr juce::int64 roomForExtras = 1 << 20;
constexpr juce::int64 largestWav = (juce::int64 { 1 } << 32) - roomForExtras;
constexpr juce::int64 largestAiff = (juce::int64 { 1 } << 31) - roomForExtras;

int bytesOf (SoundEncoding::Width width)
{
    const auto bits = SoundEncoding { Container::wav, width }.wholeNumberBits();
    return bits > 0 ? bits / 8 : width == SoundEncoding::Width::doubles ? 8 : 4;
}

SF_INFO infoFor (const SoundEncoding& encoding, double sampleRate, int channelCount)
{
    SF_INFO info {};
    info.samplerate = static_cast<int> (sampleRate);
    info.channels = channelCount;
    info.format = encoding.libraryFormat();
    return info;
}

/** Opus has five rates, MP3 nine; the library finds out too late, or not at all. */
bool hasRate (Container container, int rate)
{
    constexpr std::array opusRates { 8000, 12000, 16000, 24000, 48000 };
    constexpr std::array mp3Rates { 8000, 11025, 12000, 16000, 22050, 24000, 32000, 44100, 48000 };

    if (container == Container::opus)
        return std::find (opusRates.begin(), opusRates.end(), rate) != opusRates.end();

    return container != Container::mp3 || std::find (mp3Rates.begin(), mp3Rates.end(), rate) != mp3Rates.end();
}
} // namespace

std::optional<std::string>
SoundWriter::refusal (const SoundEncoding& encoding, double sampleRate, int channelCount, juce::int64 length)
{
    auto info = infoFor (encoding, sampleRate, channelCount);

    if (! hasRate (encoding.container, info.samplerate) || sf_format_check (&info) == 0)
        return "does not go with " + std::to_string (info.samplerate) + " Hz";

    const auto bytes = length * channelCount * bytesOf (encoding.width);

    if (encoding.container == Container::wav && bytes > largestWav)
        return "holds 4 GB at most; RF64, W64, CAF and FLAC hold more";

    if (encoding.container == Container::aiff && bytes > largestAiff)
        return "holds 2 GB at most; RF64, W64, CAF and FLAC hold more";

    return {};
}

std::unique_ptr<SoundWriter> SoundWriter::create (std::unique_ptr<juce::OutputStream>& stream,
                                                  const SoundEncoding& encoding,
                                                  double sampleRate,
                                                  int channelCount,
                                                  const SoundExtras& extras)
{
    auto info = infoFor (encoding, sampleRate, channelCount);

    if (! hasRate (encoding.container, info.samplerate))
        return {};

    auto sink = std::make_unique<SoundSink> (SoundSink { *stream });
    auto handle = SoundStreams::openForWriting (*sink, info);

    if (handle == nullptr)
        return {};

    auto* const file = handle.get();

    // The peaks are all that the library dates with the clock: without them, the same sound gives the same file.
    sf_command (file, SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);

    if (encoding.width == SoundEncoding::Width::lossy)
    {
        auto lowest = 0.0;
        sf_command (file, SFC_SET_COMPRESSION_LEVEL, &lowest, sizeof (lowest));
    }

    extras.storeIn (file);
    sf_set_string (file, SF_STR_SOFTWARE, mark.data());
    return std::unique_ptr<SoundWriter> (
        new SoundWriter (std::move (stream), std::move (sink), std::move (handle), encoding, info));
}

SoundWriter::SoundWriter (std::unique_ptr<juce::OutputStream> stream,
                          std::unique_ptr<SoundSink> sinkToUse,
                          SoundHandle handleToUse,
                          const SoundEncoding& encoding,
                          const SF_INFO& info)
    : AudioFormatWriter (stream.release(),
                         SoundEncoding::containerName (encoding.container),
                         info.samplerate,
                         static_cast<unsigned> (info.channels),
                         encoding.wholeNumberBits() > 0 ? static_cast<unsigned> (encoding.wholeNumberBits()) : 32u),
      sink (std::move (sinkToUse)),
      handle (std::move (handleToUse))
{
    usesFloatingPointData = true;

    if (encoding.wholeNumberBits() > 0)
        quantiser.emplace (encoding.wholeNumberBits(), info.channels);
}

SoundWriter::~SoundWriter()
{
    finish();
}

bool SoundWriter::write (const int** samplesToWrite, int numSamples)
{
    const auto width = static_cast<std::size_t> (numChannels);
    frames.resize (static_cast<std::size_t> (numSamples) * width);

    for (std::size_t channel = 0; channel < width; ++channel)
    {
        const auto* const samples = reinterpret_cast<const float*> (samplesToWrite[channel]);

        for (std::size_t sample = 0; sample < static_cast<std::size_t> (numSamples); ++sample)
            frames[sample * width + channel] = samples[sample];
    }

    return store (numSamples) && ! sink->failed;
}

bool SoundWriter::store (int frameCount)
{
    if (! quantiser.has_value())
        return sf_writef_float (handle.get(), frames.data(), frameCount) == frameCount;

    wholeNumbers.resize (frames.size());

    for (std::size_t sample = 0; sample < frames.size(); sample += numChannels)
        quantiser->convert (frames.data() + sample, wholeNumbers.data() + sample);

    return sf_writef_int (handle.get(), wholeNumbers.data(), frameCount) == frameCount;
}

bool SoundWriter::finish()
{
    if (handle != nullptr)
    {
        const auto closed = sf_close (handle.release()) == SF_ERR_NO_ERROR;
        output->flush();
        sink->failed |= ! closed;
    }

    return ! sink->failed;
}
