#pragma once

#include <cstddef>
#include <span>
#include <vector>

/** A band that would answer one peak or dip of a target curve. */
struct SmartBand
{
    float q = 0.0f;    ///< frequency over the width; infinite where the edges meet
    float gain = 0.0f; ///< dB, as the curve has it
    int upper = 0;     ///< edges and centre in Hz, cut to whole numbers
    int lower = 0;
    int frequency = 0;
};

/** Derives bands from a target curve: its peaks and dips, with edges where the curve has fallen to about 0.7 of the
    gain, and of those a selection that leaves at most one band at either end.

    Peaks and dips are deliberately not treated alike: a peak needs more than 0.1 dB and a dip only 0 dB, and the last
    peak looks for no edge of its own above it. Curves are in dB over rising frequencies in Hz, of the same length.
    Nothing here is real-time safe. */
namespace SmartBands
{
enum class Extremum
{
    maximum,
    minimum
};

/** The rising indices of the peaks or dips of a curve. Before its first point a curve counts as 0, and all points of
    one with fewer than four count as both. A peak has to stand out of the slopes within four points of it; the last
    point is never a dip. */
[[nodiscard]] std::vector<std::size_t> findExtrema (std::span<const double> curve, Extremum wanted);

/** All bands from 431 to 14799 Hz with falling frequencies; then the strongest above, then the strongest below. */
[[nodiscard]] std::vector<SmartBand> findSmartBands (std::span<const double> curve,
                                                     std::span<const double> frequencies);

/** What a band's parameters are set to. */
struct Setting
{
    int frequency = 0;
    float gain = 0.0f;
    float q = 0.0f;
    bool shelf = false;
};

/** How far a band may go: within 12 dB, or within 4 dB and a Q of 1.5. */
enum class Limits
{
    mix,
    master
};

/** The settings for the first ten bands, less those that are not worth one: at or below 320 Hz, below 0.5 dB, or
   without a width, which Master's limit of Q hides. A strong band above 15 kHz becomes a high shelf 2500 Hz below. */
[[nodiscard]] std::vector<Setting> settingsFor (std::span<const SmartBand> bands, Limits limits);
} // namespace SmartBands
