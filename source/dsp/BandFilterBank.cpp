#include "dsp/BandFilterBank.h"

#include "dsp/FunctionVersions.h"
#include "dsp/VariableQ2ndOrder.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace orvik
{
namespace
{
using Sections = BandFilterBank::Sections;

constexpr auto bandCount = BandFilterBank::bandCount;
constexpr std::size_t sectionCount = BandFilterBank::sectionCount;

/** The first sections are low-passes, the others high-passes. */
constexpr std::size_t lowPassCount = 2;
constexpr std::array<double, sectionCount> sectionQs { 0.5411961, 1.306563, 0.5411961, 1.306563 };

/** Frames between two turnings of the powers from frames into rows. */
constexpr int tileLength = 64;
using Tile = std::array<std::array<float, bandCount>, static_cast<std::size_t> (tileLength)>;

using Half = double __attribute__ ((vector_size (4 * sizeof (double))));
using Full = double __attribute__ ((vector_size (8 * sizeof (double))));
using HalfSingle = float __attribute__ ((vector_size (4 * sizeof (float))));

template <typename Vector>
[[gnu::always_inline]] inline void load (Vector& vector, const BandFilterBank::Lanes& lanes) noexcept
{
    std::memcpy (&vector, lanes.data(), sizeof (Vector));
}

template <typename Vector>
[[gnu::always_inline]] inline void store (BandFilterBank::Lanes& lanes, const Vector& vector) noexcept
{
    std::memcpy (lanes.data(), &vector, sizeof (Vector));
}

[[gnu::always_inline]] inline void spread (Full& vector, double left, double right) noexcept
{
    vector = Full { left, left, left, left, right, right, right, right };
}

[[gnu::always_inline]] inline void spread (Half& vector, double left, double) noexcept
{
    vector = Half { left, left, left, left };
}

/** Rounds to single precision and doubles, which makes good the filters' loss at the centre. Doubling first would give
    the same bits: only a value whose square is nothing could tell the difference. */
[[gnu::always_inline]] inline void powersOf (const Half& output, HalfSingle& powers) noexcept
{
    const auto rounded = __builtin_convertvector (output, HalfSingle);
    const auto restored = rounded + rounded;
    powers = restored * restored;
}

[[gnu::always_inline]] inline void powersOf (const Full& output, HalfSingle& powers) noexcept
{
    HalfSingle left;
    HalfSingle right;
    powersOf (__builtin_shufflevector (output, output, 0, 1, 2, 3), left);
    powersOf (__builtin_shufflevector (output, output, 4, 5, 6, 7), right);
    powers = left + right;
}

/** One section in registers. */
template <typename Vector>
struct Running
{
    Vector b0, a1, a2, p1, p2, y1, y2;
};

template <bool isLowPass, typename Vector>
[[gnu::always_inline]] inline void step (Running<Vector>& section, const Vector& sample, Vector& output) noexcept
{
    const Vector scaled = sample * section.b0;
    const Vector twice = section.p1 + section.p1;
    const Vector numerator = (isLowPass ? scaled + twice : scaled - twice) + section.p2;
    section.p2 = section.p1;
    section.p1 = scaled;
    output = numerator - section.y1 * section.a1 - section.y2 * section.a2;
    section.y2 = section.y1;
    section.y1 = output;
}

/** The body of both versions below; the channels of one frame fill the vector. Each section works one frame behind the
    one before it: the four of a turn then do not wait for each other, which is worth more than the wide vector. */
template <typename Vector>
[[gnu::always_inline]] inline void
    run (Sections& sections, const float* left, const float* right, Tile& tile, int count) noexcept
{
    Running<Vector> running[sectionCount];

#pragma GCC unroll 4
    for (std::size_t s = 0; s < sectionCount; ++s)
    {
        load (running[s].b0, sections[s].b0);
        load (running[s].a1, sections[s].a1);
        load (running[s].a2, sections[s].a2);
        load (running[s].p1, sections[s].p1);
        load (running[s].p2, sections[s].p2);
        load (running[s].y1, sections[s].y1);
        load (running[s].y2, sections[s].y2);
    }

    constexpr int lag = static_cast<int> (sectionCount) - 1;
    Vector first {}, second {}, third {}, last {};

    const auto take = [&] (int frame) [[gnu::always_inline]]
    {
        Vector sample;
        spread (sample, static_cast<double> (left[frame]), static_cast<double> (right[frame]));
        step<true> (running[0], sample, first);
    };

    const auto give = [&] (int frame) [[gnu::always_inline]]
    {
        step<false> (running[3], third, last);
        HalfSingle powers;
        powersOf (last, powers);
        std::memcpy (tile[static_cast<std::size_t> (frame)].data(), &powers, sizeof (powers));
    };

    int turn = 0;

    for (; turn < std::min (lag, count + lag); ++turn)
    {
        if (turn >= 2 && turn - 2 < count)
            step<false> (running[2], second, third);

        if (turn >= 1 && turn - 1 < count)
            step<true> (running[1], first, second);

        if (turn < count)
            take (turn);
    }

    for (; turn < count; ++turn)
    {
        give (turn - lag);
        step<false> (running[2], second, third);
        step<true> (running[1], first, second);
        take (turn);
    }

    for (; turn < count + lag; ++turn)
    {
        give (turn - lag);

        if (turn - 2 < count)
            step<false> (running[2], second, third);

        if (turn - 1 < count)
            step<true> (running[1], first, second);
    }

#pragma GCC unroll 4
    for (std::size_t s = 0; s < sectionCount; ++s)
    {
        store (sections[s].p1, running[s].p1);
        store (sections[s].p2, running[s].p2);
        store (sections[s].y1, running[s].y1);
        store (sections[s].y2, running[s].y2);
    }
}

SOLVANE_FUNCTION_VERSIONS
void runStereo (Sections& sections, const float* left, const float* right, Tile& tile, int count) noexcept
{
    run<Full> (sections, left, right, tile, count);
}

SOLVANE_FUNCTION_VERSIONS
void runMono (Sections& sections, const float* left, Tile& tile, int count) noexcept
{
    run<Half> (sections, left, left, tile, count);
}

bool isFinite (const Sections& sections) noexcept
{
    // A value that is not finite turns the sum of differences into something that is not 0.
    auto sum = 0.0;

    for (const auto& section : sections)
        for (const auto* lanes : { &section.p1, &section.p2, &section.y1, &section.y2 })
            for (const auto value : *lanes)
                sum += value - value;

    return sum == 0.0;
}
} // namespace

void BandFilterBank::prepare (std::span<const float> centresHz, float sampleRate) noexcept
{
    sections = {};
    const auto used = std::min (centresHz.size(), bandCount);

    for (std::size_t s = 0; s < sectionCount; ++s)
    {
        for (std::size_t band = 0; band < used; ++band)
        {
            using Design = VariableQ2ndOrder<double>;
            Design design;
            design.setResponse (
                sectionQs[s], centresHz[band], sampleRate, s < lowPassCount ? Design::lowPass : Design::highPass);

            for (const auto lane : { band, band + bandCount })
            {
                sections[s].b0[lane] = design.b0;
                sections[s].a1[lane] = design.a1;
                sections[s].a2[lane] = design.a2;
            }
        }
    }
}

void BandFilterBank::clear() noexcept
{
    for (auto& section : sections)
        for (auto* lanes : { &section.p1, &section.p2, &section.y1, &section.y2 })
            lanes->fill (0.0);
}

void BandFilterBank::process (const float* left,
                              const float* right,
                              const std::array<float*, bandCount>& powers,
                              int count) noexcept
{
    Tile tile;

    for (int start = 0; start < count; start += tileLength)
    {
        const auto frames = std::min (count - start, tileLength);

        if (right != nullptr)
            runStereo (sections, left + start, right + start, tile, frames);
        else
            runMono (sections, left + start, tile, frames);

        for (std::size_t band = 0; band < powers.size(); ++band)
            for (int i = 0; i < frames; ++i)
                powers[band][start + i] = tile[static_cast<std::size_t> (i)][band];
    }

    if (! isFinite (sections))
        clear();
}
} // namespace orvik
