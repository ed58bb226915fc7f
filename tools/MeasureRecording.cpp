/** Prints how loud the ten analysis bands of a recording are, against the recording as a whole.

    usage: measure-recording RATE < samples

    The samples are interleaved stereo floats in the machine's byte order, at one of the plug-in's rates. They are
    measured as the plug-in measures a reference track: unweighted, the low bands at the reduced rate. The recording is
    brought to an overall loudness of 0 first, so that the meters' floor lies 70 dB below it whatever its level, and is
    repeated until it has lasted for half a minute. One line comes out: ten values in dB; -70.00 is the floor. */

#include "dsp/meters/BandAnalyser.h"
#include "dsp/meters/LUFSProcessor.h"
#include "dsp/rate/RateConverter.h"
#include "dsp/rate/ReducedRate.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

namespace
{
constexpr double shortestSeconds = 30.0;
constexpr std::size_t chunk = 1024;

struct Samples
{
    std::vector<float> left;
    std::vector<float> right;
};

Samples readStandardInput()
{
    Samples samples;
    std::array<float, 2> frame {};

    while (std::fread (frame.data(), sizeof (float), frame.size(), stdin) == frame.size())
    {
        samples.left.push_back (frame[0]);
        samples.right.push_back (frame[1]);
    }

    return samples;
}

/** Repeats the samples until they last long enough, and makes their number a multiple of the chunk. */
void repeat (std::vector<float>& samples, double sampleRate)
{
    const auto once = samples.size();
    const auto wanted = std::max (once, static_cast<std::size_t> (shortestSeconds * sampleRate));

    for (std::size_t i = once; i < wanted; ++i)
        samples.push_back (samples[i - once]);

    samples.resize (wanted - wanted % chunk);
}

float overallLoudness (const Samples& samples, double sampleRate)
{
    const auto meter = std::make_unique<orvik::LUFSProcessor<3000>>();
    meter->setSampleRate (sampleRate);
    meter->prepare();
    meter->reset (resetLevelDb);

    for (std::size_t start = 0; start < samples.left.size(); start += chunk)
        meter->integratedOfPlain ({ samples.left.data() + start, samples.right.data() + start }, chunk);

    return meter->integratedValue();
}

void scale (std::vector<float>& samples, float gain)
{
    for (auto& sample : samples)
        sample *= gain;
}

void measureBands (const Samples& samples, double sampleRate, BandAnalyser& analyser)
{
    const auto converter = std::make_unique<RateConverter>();
    converter->setSampleRate (sampleRate);
    converter->buildFilters();

    const auto factor = static_cast<std::size_t> (converter->decimationFactor());
    Samples reduced { std::vector<float> (chunk / factor), std::vector<float> (chunk / factor) };
    analyser.prepareBands (sampleRate / static_cast<double> (factor), sampleRate);

    for (std::size_t start = 0; start < samples.left.size(); start += chunk)
    {
        const auto* left = samples.left.data() + start;
        const auto* right = samples.right.data() + start;

        converter->decimateStereo (left, right, chunk);
        const auto toFloat = [] (double sample) { return static_cast<float> (sample); };
        std::transform (
            converter->outputLeft(), converter->outputLeft() + chunk / factor, reduced.left.begin(), toFloat);
        std::transform (
            converter->outputRight(), converter->outputRight() + chunk / factor, reduced.right.begin(), toFloat);

        analyser.processLow (reduced.left.data(), reduced.right.data(), static_cast<int> (chunk / factor));
        analyser.processHigh (left, right, chunk);
    }
}
} // namespace

int main (int argumentCount, char** arguments)
{
    const auto sampleRate = argumentCount == 2 ? std::atof (arguments[1]) : 0.0;

    if (! decimationFactorFor (sampleRate).has_value())
    {
        std::fputs ("usage: measure-recording RATE < interleaved stereo floats\n", stderr);
        return 2;
    }

    auto samples = readStandardInput();

    if (samples.left.empty())
    {
        std::fputs ("measure-recording: no samples came\n", stderr);
        return 1;
    }

    repeat (samples.left, sampleRate);
    repeat (samples.right, sampleRate);

    const auto loudness = overallLoudness (samples, sampleRate);

    if (! std::isfinite (loudness))
    {
        std::fputs ("measure-recording: the recording is silent\n", stderr);
        return 1;
    }

    scale (samples.left, std::pow (10.0f, -loudness / 20.0f));
    scale (samples.right, std::pow (10.0f, -loudness / 20.0f));

    const auto analyser = std::make_unique<BandAnalyser>();
    measureBands (samples, sampleRate, *analyser);

    for (std::size_t band = 0; band < analysisBandCount; ++band)
        std::printf ("%s%.2f", band == 0 ? "" : " ", static_cast<double> (analyser->bandLevels[band].load()));

    std::printf ("\n");
    return 0;
}
