#pragma once

#include "core/presets/Presets.h"
#include "dsp/meters/BandAnalyser.h"
#include "targets/TopBand.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <stdexcept>
#include <string>

/** Rows of the library as tests speak of them. Frequencies are those of the analysis bands, in hertz. */
namespace PresetRows
{
using Presets::TableRow;

constexpr int firstMixCategory = 8;
constexpr auto floorDb = -69.5f;

inline const TableRow& rowOf (int id)
{
    const auto rows = Presets::table();
    return *std::find_if (rows.begin(), rows.end(), [id] (const TableRow& row) { return row.id == id; });
}

inline std::string titleOf (const TableRow& row)
{
    return std::string (Presets::groupNames()[static_cast<std::size_t> (row.category)]) + "/" + row.name;
}

/** The only row with this title, as in "BASS/METAL". Throws where there is none, or more than one. */
inline const TableRow& rowOf (const std::string& title)
{
    const auto rows = Presets::table();
    const auto matches = [&title] (const TableRow& row) { return titleOf (row) == title; };
    const auto found = std::find_if (rows.begin(), rows.end(), matches);

    if (found == rows.end() || std::count_if (rows.begin(), rows.end(), matches) > 1)
        throw std::invalid_argument (title + " is not the title of one preset");

    return *found;
}

inline std::string describe (const TableRow& row)
{
    return std::to_string (row.id) + " " + titleOf (row);
}

inline bool hasTarget (const TableRow& row)
{
    return row.id != Presets::noTargetsId && row.id != Presets::userSettingId;
}

/** Whether the row's figures are given and not made by the script. */
inline bool isGiven (const TableRow& row)
{
    constexpr int given[] { 1, 2, 4, 40, 71, 127, 130, 131 };
    return std::find (std::begin (given), std::end (given), row.id) != std::end (given);
}

/** What the plug-in aims at at 18 kHz. Nothing is stored there where a row has nine values. */
inline float topBandInUse (const TableRow& row)
{
    auto level = row.values.size() > 9 ? row.values[9] : 0.0f;
    makeTopBandValue ({ static_cast<double> (row.values[6]),
                        static_cast<double> (row.values[7]),
                        static_cast<double> (row.values[8]) },
                      &level);
    return level;
}

inline std::size_t bandAt (int frequencyHz)
{
    const auto found = std::find (analysisCentresHz.begin(), analysisCentresHz.end(), static_cast<float> (frequencyHz));

    if (found == analysisCentresHz.end())
        throw std::invalid_argument (std::to_string (frequencyHz) + " Hz is not the centre of a band");

    return static_cast<std::size_t> (found - analysisCentresHz.begin());
}

/** Level of a band against the row's overall loudness, in dB; at 18 kHz the one in use. */
inline float shapeAt (const TableRow& row, std::size_t band)
{
    return (band == 9 ? topBandInUse (row) : row.values[band]) - row.lufs;
}

/** Mean of the shape over the bands from one frequency to another, in dB. */
inline float meanShape (const TableRow& row, int fromHz, int toHz)
{
    const auto first = bandAt (fromHz);
    const auto last = bandAt (toHz);
    auto sum = 0.0f;

    for (auto band = first; band <= last; ++band)
        sum += shapeAt (row, band);

    return sum / static_cast<float> (last - first + 1);
}
} // namespace PresetRows
