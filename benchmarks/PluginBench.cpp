#include "AnalysisCost.h"
#include "BenchSignal.h"
#include "CoreProbe.h"
#include "DesignTimes.h"
#include "HostedEqualiser.h"
#include "InstanceCost.h"
#include "KernelRatios.h"
#include "Measurement.h"
#include "OwnEqualiser.h"
#include "SessionCost.h"

#include "dsp/simd/SimdLevel.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <numeric>
#include <vector>

// One table of what the plug-in costs, printed by bench.sh. Figures are medians unless the table says otherwise.

namespace
{
constexpr auto ownLibrary = SOLVANE_DIST "/vst/SOLVANE.so";
constexpr auto lspLibrary = "/usr/lib/vst/lsp-plugins/para-equalizer-x16-stereo.so";
constexpr auto iemLibrary = "/usr/lib/x86_64-linux-gnu/iem-plugin-suite/vst/libMultiEQ.so";

constexpr int tableRounds = 9;
constexpr int raceRounds = 75;
constexpr int probeSteps = 240'000;

constexpr double sampleRates[] { 48000.0, 96000.0, 192000.0 };
constexpr double framesPerTurn = BenchSignal::frameCount;

struct Level
{
    SimdLevel level;
    const char* name;

    /** Aims of our cost over the recursive peer's, at 48 and at 192 kHz, meters included. */
    double aimAt48;
    double aimAt192;
};

constexpr Level levels[] { { SimdLevel::baseline, "SSE2", 3.0, 5.0 },
                           { SimdLevel::v3, "AVX2", 1.75, 2.5 },
                           { SimdLevel::v4, "AVX-512", 1.25, 1.5 } };

bool isThere (const Level& level)
{
    return level.level <= bestSimdLevel();
}

const char* nameOf (FilterMode mode)
{
    return mode == FilterMode::mix ? "Mix" : "Master";
}

const char* nameOf (FilterPhase phase)
{
    return phase == FilterPhase::linear ? "linear" : "minimum";
}

/** The same instance at every level, so that they meet the same memory. */
std::vector<Measurement::Entrant> entrantsFor (OwnEqualiser& equaliser, const BenchSignal& signal)
{
    std::vector<Measurement::Entrant> entrants;

    for (const auto& level : levels)
        if (isThere (level))
            entrants.push_back ({ std::string ("SOLVANE, ") + level.name,
                                  [&equaliser, &signal, level]
                                  {
                                      setSimdLevel (level.level);
                                      equaliser.process (signal);
                                  },
                                  framesPerTurn,
                                  {} });

    return entrants;
}

void printCallbackRow (const OwnEqualiser::Setup& setup, const BenchSignal& signal)
{
    std::printf ("%4.0f  %-7s %-8s %-9s",
                 setup.sampleRate / 1000.0,
                 nameOf (setup.mode),
                 nameOf (setup.phase),
                 OwnEqualiser::nameOf (setup.layout).c_str());
    auto best = 0.0;

    for (const auto blockSize : { 64, 512 })
    {
        OwnEqualiser equaliser (setup, blockSize);
        auto entrants = entrantsFor (equaliser, signal);
        Measurement::race (entrants, tableRounds);

        for (const auto& entrant : entrants)
            std::printf (" %8.1f", entrant.medianNanoseconds());

        best = entrants.back().medianNanoseconds();
        std::printf ("  |");
    }

    std::printf (" %8.0f\n", 1.0e9 / (best * setup.sampleRate));
    std::fflush (stdout);
}

void printCallbackTable (const BenchSignal& signal)
{
    std::printf (
        "Audio thread, ns per sample frame, whole callback with its meters, ten bands. \"x real time\" is that of\n"
        "the last column: how many instances one core runs.\n\n"
        " kHz  mode    phase    layout   ");

    for (const auto blockSize : { 64, 512 })
    {
        for (const auto& level : levels)
            if (isThere (level))
                std::printf (" %8s", level.name);

        std::printf ("%s", blockSize == 64 ? " <64|" : "<512|");
    }

    std::printf (" x real time\n");

    for (const auto rate : sampleRates)
        for (const auto mode : { FilterMode::mix, FilterMode::master })
            for (const auto phase : { FilterPhase::linear, FilterPhase::minimum })
                for (const auto layout : { OwnEqualiser::Layout::mono,
                                           OwnEqualiser::Layout::stereo,
                                           OwnEqualiser::Layout::midSide,
                                           OwnEqualiser::Layout::both })
                    if (baseLatencyFor (rate, mode, FilterPhase::minimum)
                            != baseLatencyFor (rate, mode, FilterPhase::linear)
                        || phase == FilterPhase::linear)
                        printCallbackRow ({ rate, mode, phase, layout }, signal);
}

void printKernelRatios()
{
    std::printf (
        "\nPlain scalar loops over ours, blocks of 512, two channels: ns per frame of the plain version, then how\n"
        "many times faster each level is.\n\n%-28s %8s",
        "",
        "plain");

    for (const auto& level : levels)
        if (isThere (level))
            std::printf (" %8s", level.name);

    std::printf ("\n");

    for (auto& contest : kernelContests())
    {
        std::vector<Measurement::Entrant> entrants { { "plain", contest.plain, contest.framesPerTurn, {} } };

        for (const auto& level : levels)
            if (isThere (level))
                entrants.push_back ({ level.name,
                                      [&contest, level]
                                      {
                                          setSimdLevel (level.level);
                                          contest.ours();
                                      },
                                      contest.framesPerTurn,
                                      {} });

        Measurement::race (entrants, raceRounds);
        const auto plain = entrants.front().medianNanoseconds();
        std::printf ("%-28s %8.1f", contest.name.c_str(), plain);

        for (std::size_t index = 1; index < entrants.size(); ++index)
            std::printf (" %7.1fx", plain / entrants[index].medianNanoseconds());

        std::printf ("\n");
        std::fflush (stdout);
    }

    setSimdLevel (bestSimdLevel());
}

void printDesignTimes()
{
    std::printf (
        "\nDesign of one parameter message with ten bands, ms of a worker's time: median and 99th percentile\n\n"
        " kHz  mode    phase      median     99 %%\n");

    for (const auto rate : sampleRates)
        for (const auto mode : { FilterMode::mix, FilterMode::master })
            for (const auto phase : { FilterPhase::linear, FilterPhase::minimum })
                if (phase == FilterPhase::linear
                    || baseLatencyFor (rate, mode, FilterPhase::minimum)
                           != baseLatencyFor (rate, mode, FilterPhase::linear))
                {
                    const auto times = DesignTimes::measure (rate, mode, phase);
                    std::printf ("%4.0f  %-7s %-8s %8.3f %8.3f\n",
                                 rate / 1000.0,
                                 nameOf (mode),
                                 nameOf (phase),
                                 times.medianMilliseconds,
                                 times.slowMilliseconds);
                    std::fflush (stdout);
                }
}

void printInstanceCost()
{
    const auto cost = InstanceCost::measure (ownLibrary);
    std::printf ("\nOne more instance in a host: %.1f ms to its first block, %.1f MB\n",
                 cost.creationMilliseconds,
                 cost.megabytes);
}

void printSessionCost()
{
    const auto cost = SessionCost::measure();
    std::printf ("A full session of %d bytes: %.2f ms to save, %.2f ms to load\n",
                 cost.bytes,
                 cost.saveMilliseconds,
                 cost.loadMilliseconds);
}

void printAnalysisCost()
{
    constexpr double secondsWatched = 8.0;
    std::printf (
        "\nLive analysis at 48 kHz in stereo with the spectrum, both threads together, in %% of one core: what they\n"
        "compute; the same at the pace of a sound card, cold and with all waking; waking alone, without work\n"
        "  %-10s %9s %9s %9s\n",
        "",
        "computing",
        "at pace",
        "waking");

    for (const auto& level : levels)
        if (setSimdLevel (level.level))
        {
            const auto cost = AnalysisCost::measure (secondsWatched);
            std::printf ("  %-10s %9.2f %9.2f %9.2f\n", level.name, cost.work, cost.atPace, cost.waking);
            std::fflush (stdout);
        }

    setSimdLevel (bestSimdLevel());
}

std::unique_ptr<HostedEqualiser> makePeer (const char* library, double rate, BenchSignal& signal, auto setUp)
{
    if (! std::filesystem::exists (library))
        return nullptr;

    auto peer = std::make_unique<HostedEqualiser> (library, rate, 512);
    setUp (*peer);

    constexpr double smallestChangeDb = 1.5;
    if (! (peer->largestChangeDb (signal) > smallestChangeDb))
        throw std::runtime_error (std::string (library) + " has not taken its settings");

    return peer;
}

using Rounds = std::vector<std::size_t>;

Rounds allRounds()
{
    Rounds rounds (raceRounds);
    std::iota (rounds.begin(), rounds.end(), std::size_t { 0 });
    return rounds;
}

double medianOf (const std::vector<double>& values, const Rounds& rounds)
{
    std::vector<double> chosen;

    for (const auto round : rounds)
        chosen.push_back (values[round]);

    return Measurement::median (chosen);
}

/** How many independent steps the core made in the time of one, round by round: a figure that the core's clock leaves
    alone. */
std::vector<double> stepsAtOnce (const std::vector<double>& oneChain, const std::vector<double>& eightChains)
{
    std::vector<double> steps;

    for (std::size_t round = 0; round < oneChain.size(); ++round)
        steps.push_back (oneChain[round] / eightChains[round]);

    return steps;
}

/** Rounds at whose beginning and end the core made about as many steps at once as in the best quarter of this race;
   none where they are too few to be judged by. A round in which the one chain was interrupted shows more steps than any
   core makes: it is left out like a shared one, and the quarter is wide enough that a few of them do not set the
   measure. */
Rounds roundsOfAFreeCore (const std::vector<double>& steps)
{
    constexpr double tolerance = 0.05;
    constexpr std::size_t fewestRounds = 8;
    const auto usual = Measurement::quantile (steps, 0.75);
    const auto isUsual = [usual] (double figure) { return std::abs (figure - usual) <= tolerance * usual; };
    Rounds rounds;

    for (std::size_t round = 1; round < steps.size(); ++round)
        if (isUsual (steps[round - 1]) && isUsual (steps[round]))
            rounds.push_back (round);

    return rounds.size() < fewestRounds ? Rounds {} : rounds;
}

void printPeerRace (double rate, BenchSignal& signal)
{
    using Phase = HostedEqualiser::Phase;
    OwnEqualiser own ({ rate, FilterMode::mix, FilterPhase::linear, OwnEqualiser::Layout::stereo }, 512);
    const auto hosted = makePeer (ownLibrary, rate, signal, [] (auto& peer) { peer.setUpOwn(); });
    const auto recursive = makePeer (lspLibrary, rate, signal, [] (auto& peer) { peer.setUpLsp (Phase::minimum); });
    const auto linear = makePeer (lspLibrary, rate, signal, [] (auto& peer) { peer.setUpLsp (Phase::linear); });
    const auto iem = makePeer (iemLibrary, rate, signal, [] (auto& peer) { peer.setUpIem(); });

    auto entrants = entrantsFor (own, signal);
    const auto ownLevels = entrants.size();
    std::vector<const HostedEqualiser*> hosts (ownLevels, hosted.get());

    const auto add = [&] (const char* name, HostedEqualiser* equaliser)
    {
        if (equaliser == nullptr)
            return;

        entrants.push_back ({ name, [equaliser, &signal] { equaliser->process (signal); }, framesPerTurn, {} });
        hosts.push_back (equaliser);
    };

    add ("SOLVANE, its library", hosted.get());
    add ("LSP x16, recursive", recursive.get());
    add ("LSP x16, linear phase", linear.get());
    add ("IEM MultiEQ, six bands", iem.get());

    const auto equaliserCount = entrants.size();

    for (auto* probe : { CoreProbe::runOneChain, CoreProbe::runEightChains })
        entrants.push_back ({ "", [probe] { probe (probeSteps); }, probeSteps, {} });

    Measurement::race (entrants, raceRounds);
    setSimdLevel (bestSimdLevel());

    if (recursive == nullptr)
        return;

    const auto steps = stepsAtOnce (entrants[equaliserCount].nanoseconds, entrants[equaliserCount + 1].nanoseconds);
    const auto freeRounds = roundsOfAFreeCore (steps);

    for (std::size_t index = 0; index < equaliserCount; ++index)
    {
        std::printf ("%4.0f  %-24s", rate / 1000.0, entrants[index].name.c_str());

        for (const auto& rounds : { allRounds(), freeRounds })
        {
            const auto cost = medianOf (entrants[index].nanoseconds, rounds);
            const auto reference = medianOf (entrants[ownLevels + 1].nanoseconds, rounds);

            if (rounds.empty())
                std::printf (" %8s %8s", "-", "-");
            else
                std::printf (" %8.1f %8.2f", cost, cost / reference);
        }

        if (index < ownLevels && rate != 96000.0)
            std::printf (" %8.2f", rate == 48000.0 ? levels[index].aimAt48 : levels[index].aimAt192);
        else
            std::printf (" %8s", "");

        std::printf (" %8d\n", hosts[index]->latency());
    }

    std::printf ("%4.0f  %-24s", rate / 1000.0, "independent steps");

    std::printf (" %17.1f", medianOf (steps, allRounds()));

    if (freeRounds.empty())
        std::printf (" %17s, too few free rounds\n", "-");
    else
        std::printf (" %17.1f in %zu of %d rounds\n", medianOf (steps, freeRounds), freeRounds.size(), raceRounds);

    std::fflush (stdout);
}

void printPeers (BenchSignal& signal)
{
    std::printf (
        "\nBeside other equalisers, stereo, blocks of 512, ten bells at the same frequencies; ours in Mix and linear\n"
        "phase. Ratios are to the recursive one. First the median of all rounds, then of those in which nobody else\n"
        "computed on the same core, which slows wide vectors down more than a recursion. That shows in how many\n"
        "independent steps the core makes in the time of one: a shared core makes fewer, and a run that knows no free\n"
        "round gives itself away by a lower figure than other runs.\n\n"
        " kHz  %-24s %8s %8s %8s %8s %8s %8s\n",
        "",
        "all",
        "ratio",
        "free",
        "ratio",
        "aim",
        "latency");

    for (const auto rate : sampleRates)
        printPeerRace (rate, signal);
}
} // namespace

int main (int argumentCount, char** arguments)
{
    // Settings of the user's own plug-ins stay as they are.
    auto home = (std::filesystem::temp_directory_path() / "solvane-bench-XXXXXX").string();

    if (mkdtemp (home.data()) != nullptr)
        setenv ("HOME", home.c_str(), 1);

    unsetenv ("DISPLAY");

    {
        const juce::ScopedJuceInitialiser_GUI framework;
        BenchSignal signal;
        printCallbackTable (signal);
        printKernelRatios();
        printDesignTimes();
        printInstanceCost();
        printSessionCost();
        printAnalysisCost();

        for (int index = 1; index < argumentCount; ++index)
            if (std::string (arguments[index]) == "--peers")
                printPeers (signal);
    }

    std::filesystem::remove_all (home);
    return 0;
}
