#pragma once

#include "gui/heat/HeatPeaks.h"

#include <cstdint>
#include <span>
#include <vector>

/** Which bins of the spectrum a strip shows at which height, and how bright.

    A row is two pixels high; row 0 stands on the floor. Frequencies are those of the room's front plane. One thread at
   a time; only prepare() allocates. */
class HeatRows
{
public:
    static constexpr int rowHeight = 2;

    /** The first and the last bin of a row; both belong to it. */
    struct Bins
    {
        int first = 0;
        int last = -1;

        bool operator== (const Bins&) const = default;
    };

    /** Works out the bins for a strip of this height in pixels. Does nothing where neither has changed. Without a
       sample rate no row has any bin. */
    void prepare (int height, double sampleRate);

    [[nodiscard]] std::size_t count() const noexcept { return rows.size(); }
    [[nodiscard]] Bins bins (std::size_t row) const { return rows[row]; }

    /** Writes an alpha for each row.
        @returns whether any is above 0 */
    bool alphas (HeatPeaks::Magnitudes peaks, std::span<std::uint8_t> destination) const noexcept;

    /** What a sum of magnitudes shows as: 0 not at all, from 1 on in full. */
    [[nodiscard]] static std::uint8_t alphaOf (float sum) noexcept;

private:
    std::vector<Bins> rows;
    int preparedHeight = 0;
    double preparedRate = 0.0;
};
