#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <random>
#include <vector>

/** Signals and block partitions that the tests of the audio path share. */

inline std::vector<double> noise (int count, unsigned seed)
{
    std::mt19937 random (seed);
    std::uniform_real_distribution<double> anyValue (-1.0, 1.0);
    std::vector<double> result (static_cast<std::size_t> (count));
    std::generate (result.begin(), result.end(), [&] { return anyValue (random); });
    return result;
}

inline std::vector<double> sine (int count, double cyclesPerSample)
{
    std::vector<double> result (static_cast<std::size_t> (count));

    for (std::size_t i = 0; i < result.size(); ++i)
        result[i] = std::sin (2.0 * std::numbers::pi * cyclesPerSample * static_cast<double> (i));

    return result;
}

inline std::vector<float> toFloats (const std::vector<double>& values)
{
    std::vector<float> result (values.size());
    std::transform (values.begin(), values.end(), result.begin(), [] (double v) { return static_cast<float> (v); });
    return result;
}

inline std::vector<double> toDoubles (const std::vector<float>& values)
{
    return { values.begin(), values.end() };
}

/** The signal `samples` later, with zeros before it, in the same length. */
inline std::vector<double> delayedBy (const std::vector<double>& signal, int samples)
{
    std::vector<double> result (signal.size(), 0.0);
    const auto kept = static_cast<std::ptrdiff_t> (signal.size()) - samples;

    if (kept > 0)
        std::copy_n (signal.begin(), kept, result.begin() + samples);

    return result;
}

inline double largestDifference (const std::vector<double>& a, const std::vector<double>& b)
{
    double largest = a.size() == b.size() ? 0.0 : HUGE_VAL;

    for (std::size_t i = 0; i < std::min (a.size(), b.size()); ++i)
        largest = std::max (largest, std::abs (a[i] - b[i]));

    return largest;
}

struct Block
{
    int start;
    int count;
};

/** Cuts `total` samples, a multiple of `unit`, into blocks of random multiples of `unit` up to `maxCount`. */
inline std::vector<Block> randomBlocks (int total, int unit, int maxCount, unsigned seed)
{
    std::mt19937 random (seed);
    std::uniform_int_distribution<int> anyCount (1, std::max (maxCount / unit, 1));
    std::vector<Block> blocks;

    for (int start = 0; start < total; start += blocks.back().count)
        blocks.push_back ({ start, std::min (anyCount (random) * unit, total - start) });

    return blocks;
}
