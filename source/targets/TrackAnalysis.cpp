#include "targets/TrackAnalysis.h"

#include "dsp/meters/LUFSProcessor.h"
#include "dsp/rate/RateConverter.h"
#include "targets/RateCorrection.h"
#include "targets/TopBand.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace
{
constexpr int lowChunk = 1024;
constexpr std::int64_t progressStep = 40000;

class TrackMeters
{
public:
    TrackMeters (const TrackReader& readerOfTrack, int sampleCount, const TrackRates& rates)
        : read (readerOfTrack), trackLength (sampleCount)
    {
        const auto factor = std::max (rates.decimation, 1);
        lowCount = static_cast<std::size_t> (lowChunk / factor);
        analyser.prepareBands (rates.session / factor, rates.session);
        rateConverter.setSampleRate (rates.session);
        rateConverter.buildFilters();
        overall.setSampleRate (rates.session);
        overall.prepare();
        overall.reset (resetLevelDb);
    }

    /** Takes samples for the overall meter and the high bands. */
    void process (int start, int count)
    {
        const auto part = read (start, count);
        overall.integratedOfPlain (part, count);
        analyser.processHigh (part.left, part.right, count);
    }

    /** Takes a chunk for the low bands, with zeros behind the track's end. */
    void processLowChunk (int start)
    {
        const auto count = std::min (lowChunk, trackLength - start);
        const auto part = read (start, count);
        const auto left = chunkOf (part.left, count);

        if (part.right == nullptr)
        {
            rateConverter.decimateSingle (left.data(), lowChunk);
            const auto lowLeft = singlePrecision (rateConverter.outputLeft());
            analyser.processLow (lowLeft.data(), nullptr, static_cast<int> (lowCount));
            return;
        }

        const auto right = chunkOf (part.right, count);
        rateConverter.decimateStereo (left.data(), right.data(), lowChunk);
        const auto lowLeft = singlePrecision (rateConverter.outputLeft());
        const auto lowRight = singlePrecision (rateConverter.outputRight());
        analyser.processLow (lowLeft.data(), lowRight.data(), static_cast<int> (lowCount));
    }

    [[nodiscard]] float lufs() const noexcept { return overall.integratedValue(); }

    [[nodiscard]] std::array<float, analysisBandCount> bands() const noexcept
    {
        std::array<float, analysisBandCount> levels;
        std::ranges::transform (
            analyser.bandLevels, levels.begin(), [] (const std::atomic<float>& level) { return level.load(); });
        return levels;
    }

private:
    using Chunk = std::array<float, lowChunk>;

    [[nodiscard]] static Chunk chunkOf (const float* samples, int count) noexcept
    {
        Chunk chunk {};
        std::copy_n (samples, count, chunk.begin());
        return chunk;
    }

    [[nodiscard]] Chunk singlePrecision (const double* values) const noexcept
    {
        Chunk chunk {};
        std::transform (
            values, values + lowCount, chunk.begin(), [] (double value) { return static_cast<float> (value); });
        return chunk;
    }

    const TrackReader& read;
    const int trackLength;
    std::size_t lowCount;
    RateConverter rateConverter;
    BandAnalyser analyser { BandAnalyser::Storing::everyReturn };
    orvik::LUFSProcessor<3000> overall;
};

/** Counts samples, and tells after every so many. */
class ProgressCount
{
public:
    ProgressCount (int trackLength, const std::function<void (float)>& functionToTell)
        : length (trackLength), tell (functionToTell)
    {
    }

    [[nodiscard]] int untilNextTell() const noexcept
    {
        return static_cast<int> (progressStep - measured % progressStep);
    }

    void add (int count)
    {
        measured += count;

        if (measured % progressStep == 0 && tell)
            tell (static_cast<float> (measured) / static_cast<float> (length) * 100.0f);
    }

    [[nodiscard]] bool isZero() const noexcept { return measured == 0; }

private:
    const int length;
    const std::function<void (float)>& tell;
    std::int64_t measured = 0;
};

void measureRange (TrackMeters& meters, const TrackRange& range, int trackLength, ProgressCount& progress)
{
    for (int index = range.first; index < range.end;)
    {
        const auto taken = index - range.first;

        // The guard looks at how far the range has come, not at where it stands.
        if (taken % lowChunk == 0 && trackLength - taken > lowChunk)
            meters.processLowChunk (index);

        const auto count = std::min ({ lowChunk - taken % lowChunk, range.end - index, progress.untilNextTell() });
        meters.process (index, count);
        index += count;
        progress.add (count);
    }
}

void correctAndExtrapolate (std::array<float, analysisBandCount>& bands, const TrackRates& rates)
{
    const auto correction = rateCorrectionDb (rates.session, rates.file);

    for (std::size_t band = 0; band < bands.size(); ++band)
        bands[band] += correction[band];

    makeTopBandValue (
        { static_cast<double> (bands[6]), static_cast<double> (bands[7]), static_cast<double> (bands[8]) }, &bands[9]);
}
} // namespace

TrackReading analyseTrack (const TrackReader& read,
                           int sampleCount,
                           std::span<const TrackRange> ranges,
                           const TrackRates& rates,
                           const std::function<void (float percent)>& progress)
{
    const TrackRange whole { 0, sampleCount };
    const auto parts = ranges.empty() ? std::span (&whole, 1) : ranges;
    TrackMeters meters (read, sampleCount, rates);
    ProgressCount count (sampleCount, progress);
    TrackReading reading;
    auto lastLufs = 0.0f;
    auto sum = 0.0f;

    for (const auto& part : parts)
    {
        const TrackRange cut { std::clamp (part.first, 0, sampleCount), std::clamp (part.end, 0, sampleCount) };

        if (cut.first < cut.end)
        {
            measureRange (meters, cut, sampleCount, count);
            lastLufs = meters.lufs();
        }

        reading.rangeLufs.push_back (lastLufs);
        sum += lastLufs;
    }

    reading.lufs = sum / static_cast<float> (parts.size());
    reading.exists = std::isfinite (reading.lufs) && ! count.isZero();
    reading.bands = meters.bands();
    correctAndExtrapolate (reading.bands, rates);
    return reading;
}

TrackReading analyseTrack (const TrackSamples& samples,
                           std::span<const TrackRange> ranges,
                           const TrackRates& rates,
                           const std::function<void (float percent)>& progress)
{
    const auto read = [&samples] (int start, int) {
        return orvik::ChannelPointers { samples.left + start,
                                        samples.right != nullptr ? samples.right + start : nullptr };
    };
    return analyseTrack (read, samples.count, ranges, rates, progress);
}
