#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

namespace orvik
{
/** How a HopWindow adds up powers. Double sums: a window of 3 s at 192 kHz holds more terms than a float resolves. */
struct SumOfPowers
{
    static double of (float value) noexcept { return static_cast<double> (value); }
    static double join (double a, double b) noexcept { return a + b; }
    static double repeated (float value, int count) noexcept { return static_cast<double> (value) * count; }
};

/** How a HopWindow finds the largest absolute sample. */
struct LargestSample
{
    static double of (float value) noexcept { return std::abs (static_cast<double> (value)); }
    static double join (double a, double b) noexcept { return a < b ? b : a; }
    static double repeated (float value, int count) noexcept { return count > 0 ? of (value) : 0.0; }
};

/** A sliding window over a stream that is read once per hop.

    Nothing of the stream is stored: each hop is folded into one figure, and a reading joins the figures of the hops
    in the window anew, so that no running total can drift. Where the window is not a whole number of hops, each hop
    keeps a second figure for its last samples, which the oldest hop contributes alone.
    A hop whose figure is not finite counts as nothing, so that bad input leaves with its hop at the latest.
    One thread at a time. Only `prepare` allocates. */
template <typename Fold>
class HopWindow
{
public:
    /** Sets the lengths in samples, both at least 1, and fills the window with zeros. */
    void prepare (int windowLength, int hopLength)
    {
        length = windowLength;
        hop = hopLength;
        hopsInWindow = length / hop;
        headLength = hop - length % hop;
        hops.assign (static_cast<std::size_t> (hopsInWindow) + 1, {});
        fill (0.0f, 0);
    }

    /** Makes the whole window hold one value.

        @param newPosition samples of the current hop that count as already taken */
    void fill (float value, int newPosition) noexcept
    {
        for (auto& figures : hops)
            figures = { Fold::repeated (value, headLength), Fold::repeated (value, hop - headLength) };

        position = newPosition;
        lanes = {};
        segmentStart = position < headLength ? 0 : headLength;
        segmentEnd = position < headLength ? headLength : hop;
        lanes[0] = Fold::repeated (value, position - segmentStart);
    }

    [[nodiscard]] int positionInHop() const noexcept { return position; }

    /** Takes one value. Real-time safe. */
    void push (float value) noexcept
    {
        auto& lane = lanes[static_cast<std::size_t> (position - segmentStart) % laneCount];
        lane = Fold::join (lane, Fold::of (value));

        if (++position == segmentEnd)
            finishSegment();
    }

    /** Takes `count` values, with the same result as one by one. Real-time safe. */
    void push (const float* values, int count) noexcept;

    /** Joins the window's hops; to be asked when a hop has just ended. Real-time safe. */
    [[nodiscard]] double read() const noexcept
    {
        auto result = 0.0;
        auto index = newest;

        for (int i = 0; i < hopsInWindow; ++i)
        {
            result = Fold::join (result, Fold::join (hops[index].head, hops[index].tail));
            index = index == 0 ? hops.size() - 1 : index - 1;
        }

        return Fold::join (result, hops[index].tail);
    }

    [[nodiscard]] int windowLength() const noexcept { return length; }

private:
    /** Independent accumulators: one alone would wait for its own addition at every sample. */
    static constexpr std::size_t laneCount = 8;

    struct Figures
    {
        double head = 0.0;
        double tail = 0.0;
    };

    void finishSegment() noexcept;

    std::vector<Figures> hops { 1 };
    std::array<double, laneCount> lanes {};
    std::size_t newest = 0;
    int length = 1;
    int hop = 1;
    int hopsInWindow = 1;
    int headLength = 1;
    int position = 0;
    int segmentStart = 0;
    int segmentEnd = 1;
};

extern template class HopWindow<SumOfPowers>;
extern template class HopWindow<LargestSample>;
} // namespace orvik
