#include "targets/SmartBands.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace SmartBands
{
namespace
{
/** The share of a gain at which a band's edges lie: single precision's 0.707. */
constexpr auto edgeShare = static_cast<double> (0.707f);

constexpr double smallestPeakDb = 0.1;
constexpr double largestDipDb = 0.0;

/** Points on either side of a peak whose slopes it has to stand out of. */
constexpr std::ptrdiff_t slopeReach = 4;
constexpr std::size_t fewestPoints = 4;

/** Below the first and above the second only the strongest band is taken. */
constexpr int lowestOfMany = 431;
constexpr int highestOfMany = 14799;

using Indices = std::vector<std::size_t>;

/** Differences to the point before, with 0 before the first. */
std::vector<double> slopesOf (std::span<const double> curve)
{
    std::vector<double> slopes;
    auto before = 0.0;

    for (const auto value : curve)
    {
        slopes.push_back (value - before);
        before = value;
    }

    return slopes;
}

/** Nine slopes around a point, those behind it as magnitudes. Indices beyond the ends repeat the last slope there. */
double sumOfSlopesAround (const std::vector<double>& slopes, std::size_t index)
{
    const auto last = static_cast<std::ptrdiff_t> (slopes.size()) - 1;
    auto sum = 0.0;

    for (auto offset = -slopeReach; offset <= slopeReach; ++offset)
    {
        const auto at = std::clamp<std::ptrdiff_t> (static_cast<std::ptrdiff_t> (index) + offset, 0, last);
        const auto slope = slopes[static_cast<std::size_t> (at)];
        sum += offset > 0 ? std::abs (slope) : slope;
    }

    return sum;
}

bool isMaximum (const std::vector<double>& slopes, std::size_t index)
{
    const auto next = std::min (index + 1, slopes.size() - 1);
    return slopes[index] >= 0.0 && slopes[next] < 0.0 && sumOfSlopesAround (slopes, index) > 0.0;
}

bool isMinimum (const std::vector<double>& slopes, std::size_t index)
{
    return index + 1 < slopes.size() && slopes[index] < 0.0 && slopes[index + 1] > 0.0;
}

/** Finds the edges of a curve's bands. */
class BandSearch
{
public:
    BandSearch (std::span<const double> curveDb, std::span<const double> frequenciesHz)
        : curve (curveDb),
          frequencies (frequenciesHz),
          maxima (findExtrema (curve, Extremum::maximum)),
          minima (findExtrema (curve, Extremum::minimum))
    {
    }

    /** Peaks, then dips, each with rising frequencies. */
    [[nodiscard]] std::vector<SmartBand> run() const
    {
        std::vector<SmartBand> bands;

        for (std::size_t position = 0; position < maxima.size(); ++position)
            if (curve[maxima[position]] > smallestPeakDb)
                bands.push_back (peakAt (position));

        for (const auto index : minima)
            if (curve[index] <= largestDipDb)
                bands.push_back (dipAt (index));

        return bands;
    }

private:
    /** Nothing for 0, which stands for an edge that was not found. */
    [[nodiscard]] std::optional<int> edgeAt (std::size_t index) const
    {
        const auto hz = static_cast<int> (frequencies[index]);
        return hz != 0 ? std::optional (hz) : std::nullopt;
    }

    [[nodiscard]] std::optional<int> edgeAt (std::optional<std::size_t> index) const
    {
        return index ? edgeAt (*index) : std::nullopt;
    }

    /** The first point from `from` down to `end`, both included, that has passed the edge. */
    template <typename Passed>
    [[nodiscard]] std::optional<int> walkDown (std::size_t from, std::size_t end, Passed passed) const
    {
        for (auto index = from + 1; index-- > end;)
            if (passed (curve[index]))
                return edgeAt (index);

        return {};
    }

    /** The first point from `from` up to `end`, which is left out, that has passed the edge. */
    template <typename Passed>
    [[nodiscard]] std::optional<int> walkUp (std::size_t from, std::size_t end, Passed passed) const
    {
        for (auto index = from; index < end; ++index)
            if (passed (curve[index]))
                return edgeAt (index);

        return {};
    }

    [[nodiscard]] static std::optional<std::size_t> nearestBelow (const Indices& indices, std::size_t index)
    {
        const auto found = std::ranges::lower_bound (indices, index);
        return found != indices.begin() ? std::optional (*std::prev (found)) : std::nullopt;
    }

    [[nodiscard]] static std::optional<std::size_t> nearestAbove (const Indices& indices, std::size_t index)
    {
        const auto found = std::ranges::upper_bound (indices, index);
        return found != indices.end() ? std::optional (*found) : std::nullopt;
    }

    [[nodiscard]] SmartBand
    bandAt (std::size_t index, std::optional<int> foundLower, std::optional<int> foundUpper) const
    {
        const auto frequency = static_cast<int> (frequencies[index]);
        const auto lower = foundLower.value_or (frequency - frequency / 2);
        const auto upper = foundUpper.value_or (frequency / 2 + frequency);

        return { .q = static_cast<float> (frequency) / static_cast<float> (upper - lower),
                 .gain = static_cast<float> (curve[index]),
                 .upper = upper,
                 .lower = lower,
                 .frequency = frequency };
    }

    /** A peak's neighbours bound its edges; where there is none above, nothing is looked for. */
    [[nodiscard]] SmartBand peakAt (std::size_t position) const
    {
        const auto index = maxima[position];
        const auto edgeDb = curve[index] * edgeShare;
        const auto fallen = [edgeDb] (double value) { return value < edgeDb; };
        const auto bottom = position == 0 ? 0 : maxima[position - 1];
        const auto top = maxima[std::min (position + 1, maxima.size() - 1)];

        auto lower = walkDown (index, bottom, fallen);
        auto upper = walkUp (index, top, fallen);

        if (! lower)
            lower = edgeAt (nearestBelow (minima, index));

        if (! upper)
            upper = edgeAt (nearestAbove (minima, index));

        return bandAt (index, lower, upper);
    }

    /** A dip reaches to the peaks beside it at most; where there is none, its edge is not looked for. */
    [[nodiscard]] SmartBand dipAt (std::size_t index) const
    {
        const auto edgeDb = curve[index] * edgeShare;
        const auto risen = [edgeDb] (double value) { return value > edgeDb; };
        const auto below = nearestBelow (maxima, index);
        const auto above = nearestAbove (maxima, index);
        std::optional<int> lower, upper;

        if (below)
            lower = walkDown (index, *below + 1, risen);

        if (above)
            upper = walkUp (index, *above, risen);

        return bandAt (index, lower ? lower : edgeAt (below), upper ? upper : edgeAt (above));
    }

    const std::span<const double> curve;
    const std::span<const double> frequencies;
    const Indices maxima;
    const Indices minima;
};

/** Appends what a test admits: one band as it is, of several the strongest, and of equals the last. */
template <typename Admits>
void appendStrongest (std::vector<SmartBand>& result, const std::vector<SmartBand>& bands, Admits admits)
{
    const SmartBand* strongest = nullptr;

    for (const auto& band : bands)
        if (admits (band) && (strongest == nullptr || std::abs (band.gain) >= std::abs (strongest->gain)))
            strongest = &band;

    if (strongest != nullptr)
        result.push_back (*strongest);
}
} // namespace

std::vector<std::size_t> findExtrema (std::span<const double> curve, Extremum wanted)
{
    const auto slopes = slopesOf (curve);
    Indices found;

    for (std::size_t index = 0; index < slopes.size(); ++index)
        if (slopes.size() < fewestPoints
            || (wanted == Extremum::maximum ? isMaximum (slopes, index) : isMinimum (slopes, index)))
            found.push_back (index);

    return found;
}

std::vector<SmartBand> findSmartBands (std::span<const double> curve, std::span<const double> frequencies)
{
    auto bands = BandSearch (curve, frequencies).run();

    // Of bands at one frequency the one that was found last comes first.
    std::ranges::reverse (bands);
    std::ranges::stable_sort (bands, std::ranges::greater(), &SmartBand::frequency);

    const auto isHigh = [] (const SmartBand& band) { return band.frequency > highestOfMany; };
    const auto isLow = [] (const SmartBand& band) { return band.frequency < lowestOfMany; };
    std::vector<SmartBand> result;
    std::ranges::copy_if (
        bands, std::back_inserter (result), [&] (const SmartBand& band) { return ! isHigh (band) && ! isLow (band); });
    appendStrongest (result, bands, isHigh);
    appendStrongest (result, bands, isLow);
    return result;
}

std::vector<Setting> settingsFor (std::span<const SmartBand> bands, Limits limits)
{
    constexpr std::size_t mostBands = 10;
    constexpr float largestGain = 12.0f, largestMasterGain = 4.0f, smallestGain = 0.5f;
    constexpr float largestMasterQ = 1.5f, smallestQ = 0.5f, largestQ = 5.0f;
    constexpr int lowestFrequency = 320;
    constexpr int highestPeak = 15000, shelfOffset = 2500;
    constexpr float largestPeakGain = 1.0f;

    std::vector<Setting> settings;

    // One that is left out has used up its place among the ten.
    for (const auto& band : bands.first (std::min (bands.size(), mostBands)))
    {
        auto gain = std::clamp (band.gain, -largestGain, largestGain);
        auto q = band.q;

        if (limits == Limits::master)
        {
            gain = std::clamp (gain, -largestMasterGain, largestMasterGain);
            q = std::min (q, largestMasterQ);
        }

        if (std::isinf (q) || band.frequency <= lowestFrequency || std::abs (gain) < smallestGain)
            continue;

        const auto shelf = band.frequency > highestPeak && std::abs (gain) > largestPeakGain;
        settings.push_back ({ .frequency = shelf ? band.frequency - shelfOffset : band.frequency,
                              .gain = gain,
                              .q = std::clamp (q, smallestQ, largestQ),
                              .shelf = shelf });
    }

    return settings;
}
} // namespace SmartBands
