#include "dsp/meters/BandFilterBank.h"

#include "dsp/filters/VariableQ2ndOrder.h"
#include "dsp/simd/SimdLanes.h"
#include "dsp/simd/SimdLevel.h"

#include <algorithm>
#include <cmath>

namespace orvik
{
namespace
{
using State = BandFilterBank::State;

constexpr auto bandCount = BandFilterBank::bandCount;
constexpr std::size_t sectionCount = BandFilterBank::sectionCount;

/** The first sections are low-passes, the others high-passes. */
constexpr std::size_t lowPassCount = 2;
constexpr std::array<double, sectionCount> sectionQs { 0.5411961, 1.306563, 0.5411961, 1.306563 };

/** Frames between two turnings of the powers from frames into rows. */
constexpr int tileLength = 256;
using Tile = std::array<std::array<float, bandCount>, static_cast<std::size_t> (tileLength)>;

/** Frames of the channels that fill the lanes from `firstLane` on. `right` is read only where the lanes span both. */
struct BankJob
{
    State& state;
    std::size_t firstLane;
    const float* left;
    const float* right;
    Tile& powers;
    int count;
};

template <int lanes>
using Vector = typename SimdLanes<lanes>::Vector;

template <int lanes>
using SingleVector [[gnu::vector_size (extent (lanes) * sizeof (float))]] = float;

/** The same at any address of a float. */
template <int lanes>
using SingleInMemory [[gnu::vector_size (extent (lanes) * sizeof (float)), gnu::aligned (4), gnu::may_alias]] = float;

/** One section in registers. Its numerator is taken as two sums, or differences, of neighbours in a row. */
template <int lanes>
struct Running
{
    SOLVANE_ALWAYS_INLINE void load (const BandFilterBank::Section& section, std::size_t firstLane) noexcept
    {
        a1 = lanesAt<lanes> (section.a1.data() + firstLane);
        a2 = lanesAt<lanes> (section.a2.data() + firstLane);
        sum1 = lanesAt<lanes> (section.sum1.data() + firstLane);
        y1 = lanesAt<lanes> (section.y1.data() + firstLane);
        y2 = lanesAt<lanes> (section.y2.data() + firstLane);
    }

    SOLVANE_ALWAYS_INLINE void store (BandFilterBank::Section& section, std::size_t firstLane) const noexcept
    {
        lanesAt<lanes> (section.sum1.data() + firstLane) = sum1;
        lanesAt<lanes> (section.y1.data() + firstLane) = y1;
        lanesAt<lanes> (section.y2.data() + firstLane) = y2;
    }

    template <bool isLowPass>
    SOLVANE_ALWAYS_INLINE void step (const Vector<lanes>& x0, const Vector<lanes>& x1) noexcept
    {
        const Vector<lanes> sum = isLowPass ? x0 + x1 : x0 - x1;
        const Vector<lanes> numerator = isLowPass ? sum + sum1 : sum - sum1;
        const Vector<lanes> output = numerator - a2 * y2 - a1 * y1;
        sum1 = sum;
        y2 = y1;
        y1 = output;
    }

    /** Takes the newest output of the section before, which has not yet run in this turn. */
    template <bool isLowPass>
    SOLVANE_ALWAYS_INLINE void stepAfter (const Running& before) noexcept
    {
        step<isLowPass> (before.y1, before.y2);
    }

    Vector<lanes> a1, a2, sum1, y1, y2;
};

/** The four sections in a row. Each works one frame behind the one before it: the four of a turn then do not wait for
    each other, which counts for more than the width of the vector. */
template <int lanes>
class Pipeline
{
public:
    explicit SOLVANE_ALWAYS_INLINE Pipeline (const BankJob& newJob) noexcept : job (newJob)
    {
        for (std::size_t s = 0; s < sectionCount; ++s)
            sections[s].load (job.state.sections[s], job.firstLane);

        x1 = lanesAt<lanes> (job.state.x1.data() + job.firstLane);
        gain = lanesAt<lanes> (job.state.gain.data() + job.firstLane);
    }

    SOLVANE_ALWAYS_INLINE void run() noexcept
    {
        constexpr int lag = static_cast<int> (sectionCount) - 1;
        const auto fill = std::min (lag, job.count);
        int turn = 0;

        for (; turn < fill; ++turn)
            turnAtTheEnds (turn);

        for (; turn < job.count; ++turn)
        {
            give (turn - lag);
            sections[2].template stepAfter<false> (sections[1]);
            sections[1].template stepAfter<true> (sections[0]);
            take (turn);
        }

        for (; turn < job.count + lag; ++turn)
            turnAtTheEnds (turn);

        for (std::size_t s = 0; s < sectionCount; ++s)
            sections[s].store (job.state.sections[s], job.firstLane);

        lanesAt<lanes> (job.state.x1.data() + job.firstLane) = x1;
    }

private:
    [[nodiscard]] SOLVANE_ALWAYS_INLINE bool isFrame (int index) const noexcept
    {
        return index >= 0 && index < job.count;
    }

    /** Leaves out the sections that have no frame yet, or none any more. */
    SOLVANE_ALWAYS_INLINE void turnAtTheEnds (int turn) noexcept
    {
        if (isFrame (turn - 3))
            give (turn - 3);

        if (isFrame (turn - 2))
            sections[2].template stepAfter<false> (sections[1]);

        if (isFrame (turn - 1))
            sections[1].template stepAfter<true> (sections[0]);

        if (isFrame (turn))
            take (turn);
    }

    SOLVANE_ALWAYS_INLINE void take (int frame) noexcept
    {
        const auto left = static_cast<double> (job.left[frame]);
        Vector<lanes> sample;

        if constexpr (lanes == BandFilterBank::laneCount)
        {
            const auto right = static_cast<double> (job.right[frame]);
            sample = Vector<lanes> { left, left, left, left, right, right, right, right };
        }
        else
        {
            sample = left - Vector<lanes> {};
        }

        sections[0].template step<true> (sample, x1);
        x1 = sample;
    }

    /** Rounds to single precision and doubles, which makes good the filters' loss at the centre. Doubling first would
        give the same bits: only a value whose square is nothing could tell the difference. */
    SOLVANE_ALWAYS_INLINE void give (int frame) noexcept
    {
        sections[3].template stepAfter<false> (sections[2]);

        const Vector<lanes> output = sections[3].y1 * gain;
        const auto rounded = __builtin_convertvector(output, SingleVector<lanes>);
        const auto restored = rounded + rounded;
        const auto squares = restored * restored;
        auto* row = powers + static_cast<std::size_t> (frame) * bandCount;

        if constexpr (lanes == BandFilterBank::laneCount)
        {
            const auto both = __builtin_shufflevector (squares, squares, 0, 1, 2, 3)
                              + __builtin_shufflevector (squares, squares, 4, 5, 6, 7);
            *reinterpret_cast<SingleInMemory<static_cast<int> (bandCount)>*> (row) += both;
        }
        else
        {
            *reinterpret_cast<SingleInMemory<lanes>*> (row) += squares;
        }
    }

    const BankJob job;
    float* powers = job.powers[0].data() + job.firstLane % bandCount;
    Running<lanes> sections[sectionCount];
    Vector<lanes> x1, gain;
};

void runBaseline (const BankJob& job) noexcept
{
    Pipeline<2> (job).run();
}

#if SOLVANE_HAS_FUNCTION_VERSIONS
SOLVANE_TARGET_V3 void runV3 (const BankJob& job) noexcept
{
    Pipeline<4> (job).run();
}

SOLVANE_TARGET_V4 void runV4 (const BankJob& job) noexcept
{
    Pipeline<8> (job).run();
}
#endif

/** Runs one channel, whose four lanes start at `firstLane`. */
void runChannel (State& state, std::size_t firstLane, const float* samples, Tile& powers, int count) noexcept
{
#if SOLVANE_HAS_FUNCTION_VERSIONS
    if (simdLevel() != SimdLevel::baseline)
        return runV3 ({ state, firstLane, samples, nullptr, powers, count });
#endif

    for (std::size_t lane = 0; lane < bandCount; lane += 2)
        runBaseline ({ state, firstLane + lane, samples, nullptr, powers, count });
}

/** Adds the powers of one channel, or of both, to the tile. */
void runBank (State& state, const float* left, const float* right, Tile& powers, int count) noexcept
{
#if SOLVANE_HAS_FUNCTION_VERSIONS
    if (simdLevel() == SimdLevel::v4 && right != nullptr)
        return runV4 ({ state, 0, left, right, powers, count });
#endif

    runChannel (state, 0, left, powers, count);

    if (right != nullptr)
        runChannel (state, bandCount, right, powers, count);
}

/** Calls a visitor with each history. */
template <typename Visitor>
void forEachHistory (auto& state, Visitor visit)
{
    visit (state.x1);

    for (auto& section : state.sections)
    {
        visit (section.sum1);
        visit (section.y1);
        visit (section.y2);
    }
}

bool isFinite (const State& state) noexcept
{
    // A value that is not finite turns the sum of differences into something that is not 0.
    auto sum = 0.0;

    forEachHistory (state,
                    [&sum] (const auto& lanes)
                    {
                        for (const auto value : lanes)
                            sum += value - value;
                    });

    return sum == 0.0;
}
} // namespace

void BandFilterBank::prepare (std::span<const float> centresHz, float sampleRate) noexcept
{
    state = {};
    const auto used = std::min (centresHz.size(), bandCount);

    for (std::size_t band = 0; band < used; ++band)
    {
        auto gain = 1.0;

        for (std::size_t s = 0; s < sectionCount; ++s)
        {
            using Design = VariableQ2ndOrder<double>;
            Design design;
            design.setResponse (
                sectionQs[s], centresHz[band], sampleRate, s < lowPassCount ? Design::lowPass : Design::highPass);
            gain *= design.b0;

            for (const auto lane : { band, band + bandCount })
            {
                state.sections[s].a1[lane] = design.a1;
                state.sections[s].a2[lane] = design.a2;
            }
        }

        for (const auto lane : { band, band + bandCount })
            state.gain[lane] = gain;
    }
}

void BandFilterBank::clear() noexcept
{
    forEachHistory (state, [] (auto& lanes) { lanes.fill (0.0); });
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

        tile = {};
        runBank (state, left + start, right != nullptr ? right + start : nullptr, tile, frames);

        for (std::size_t band = 0; band < powers.size(); ++band)
            for (int i = 0; i < frames; ++i)
                powers[band][start + i] = tile[static_cast<std::size_t> (i)][band];
    }

    if (! isFinite (state))
        clear();
}
} // namespace orvik
