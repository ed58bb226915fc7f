#include "KernelRatios.h"

#include "BenchSignal.h"
#include "PlainPath.h"

#include "dsp/path/BlockPath.h"
#include "dsp/path/FirConvolver.h"
#include "dsp/rate/RateConverter.h"

#include <algorithm>
#include <array>
#include <memory>

namespace
{
constexpr int blockSize = 512;
constexpr double framesPerTurn = BenchSignal::frameCount;

using Doubles = std::vector<double>;

Doubles doubleSignal (int channel)
{
    const BenchSignal signal;
    return { signal.channel (channel), signal.channel (channel) + BenchSignal::frameCount };
}

Doubles symmetricTaps (int count)
{
    auto taps = doubleSignal (0);
    taps.resize (static_cast<std::size_t> (count));
    std::copy_n (taps.begin(), count / 2, taps.rbegin());

    for (auto& tap : taps)
        tap *= 0.1;

    return taps;
}

/** Calls with the first frame of each block of the signal. */
template <typename Body>
void forEachBlock (Body body)
{
    for (int start = 0; start < BenchSignal::frameCount; start += blockSize)
        body (start);
}

KernelContest firContest (int tapCount)
{
    const auto taps = symmetricTaps (tapCount);
    const auto fir = std::make_shared<FirConvolver> (2, tapCount, blockSize);
    fir->setTapCount (tapCount);
    fir->setTaps (taps);
    const auto plain =
        std::make_shared<std::array<Plain::Fir, 2>> (std::array { Plain::Fir (taps), Plain::Fir (taps) });
    const auto input = std::make_shared<std::array<Doubles, 2>> (std::array { doubleSignal (0), doubleSignal (1) });
    const auto output = std::make_shared<std::array<Doubles, 2>> (*input);

    return { "FIR of " + std::to_string (tapCount),
             framesPerTurn,
             [=]
             {
                 forEachBlock (
                     [&] (int start)
                     {
                         const double* const in[] { (*input)[0].data() + start, (*input)[1].data() + start };
                         double* const out[] { (*output)[0].data() + start, (*output)[1].data() + start };
                         fir->run (in, out, 2, blockSize);
                     });
             },
             [=]
             {
                 forEachBlock (
                     [&] (int start)
                     {
                         for (std::size_t channel = 0; channel < 2; ++channel)
                             (*plain)[channel].run (
                                 (*input)[channel].data() + start, (*output)[channel].data() + start, blockSize);
                     });
             } };
}

std::shared_ptr<RateConverter> converterFor (double sampleRate)
{
    auto converter = std::make_shared<RateConverter>();
    converter->setSampleRate (sampleRate);
    converter->buildFilters();
    return converter;
}

KernelContest converterContest (double sampleRate)
{
    const auto converter = converterFor (sampleRate);
    const auto factor = converter->decimationFactor();
    const auto signal = std::make_shared<BenchSignal>();
    using Filters = std::array<Plain::RateFilter, 2>;
    const Filters fresh { Plain::RateFilter (factor), Plain::RateFilter (factor) };
    const auto decimators = std::make_shared<Filters> (fresh);
    const auto interpolators = std::make_shared<Filters> (fresh);
    const auto low = std::make_shared<Doubles> (blockSize);
    const auto output = std::make_shared<Doubles> (blockSize);

    return { "rate converter by " + std::to_string (factor),
             framesPerTurn,
             [=]
             {
                 forEachBlock (
                     [&] (int start)
                     {
                         converter->decimateStereo (
                             signal->channel (0) + start, signal->channel (1) + start, blockSize);
                         converter->interpolateStereo (
                             converter->outputLeft(), converter->outputRight(), blockSize / factor);
                     });
             },
             [=]
             {
                 forEachBlock (
                     [&] (int start)
                     {
                         for (std::size_t channel = 0; channel < 2; ++channel)
                         {
                             (*decimators)[channel].decimate (
                                 signal->channel (static_cast<int> (channel)) + start, low->data(), blockSize);
                             (*interpolators)[channel].interpolate (low->data(), output->data(), blockSize / factor);
                         }
                     });
             } };
}

KernelContest pathContest (double sampleRate)
{
    const auto lengths = firLengthsFor (sampleRate, FilterMode::mix);
    const auto lowTaps = symmetricTaps (lengths.lowTapCount);
    const auto highTaps = symmetricTaps (lengths.linearHighTapCount);
    const auto converter = converterFor (sampleRate);
    const auto path = std::make_shared<BlockPath>();
    path->prepare (sampleRate);
    path->configureLengths (lengths);
    path->setTaps ({ lowTaps, highTaps, {}, {} });

    const Plain::Path fresh (sampleRate, FilterMode::mix, lowTaps, highTaps);
    const auto plain = std::make_shared<std::array<Plain::Path, 2>> (std::array { fresh, fresh });
    const auto signal = std::make_shared<BenchSignal>();

    return { "path at " + std::to_string (static_cast<int> (sampleRate / 1000.0)) + " kHz, Mix, linear",
             framesPerTurn,
             [=]
             {
                 forEachBlock (
                     [&] (int start)
                     {
                         const auto* left = signal->channel (0) + start;
                         const auto* right = signal->channel (1) + start;
                         converter->decimateStereo (left, right, blockSize);
                         path->processStereo (left,
                                              right,
                                              converter->outputLeft(),
                                              converter->outputRight(),
                                              blockSize,
                                              false,
                                              FilterPhase::linear);
                     });
             },
             [=]
             {
                 forEachBlock (
                     [&] (int start)
                     {
                         for (int channel = 0; channel < 2; ++channel)
                             (*plain)[static_cast<std::size_t> (channel)].process (
                                 signal->channel (channel) + start, signal->output (channel) + start, blockSize);
                     });
             } };
}
} // namespace

std::vector<KernelContest> kernelContests()
{
    std::vector<KernelContest> contests;
    contests.push_back (firContest (101));
    contests.push_back (firContest (301));
    contests.push_back (converterContest (48000.0));
    contests.push_back (converterContest (192000.0));
    contests.push_back (pathContest (48000.0));
    contests.push_back (pathContest (192000.0));
    return contests;
}
