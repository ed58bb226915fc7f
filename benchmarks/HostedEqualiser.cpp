#include "HostedEqualiser.h"

#include "TenBands.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <complex>
#include <cstdlib>
#include <numbers>
#include <stdexcept>
#include <thread>

namespace
{
constexpr int textSteps = 400;
constexpr int bisections = 30;

/** Passes over the signal, with pauses for those who design their filters on other threads, after which every peer has
    taken its new settings over. */
constexpr int warmUpPasses = 40;
constexpr std::chrono::milliseconds warmUpPause { 10 };
} // namespace

HostedEqualiser::HostedEqualiser (const std::string& library, double sampleRate, int blockSize)
    : host (library), rate (sampleRate), block (blockSize)
{
    // Some of the peers offer many channels and take the narrowest bus only when asked.
    host.setChannelCount (2);
    host.prepare (sampleRate, blockSize);
}

void HostedEqualiser::setUpOwn()
{
    setNormalised ("Mix/Master Mode", 1.0f);

    for (std::size_t band = 0; band < tenBands.size(); ++band)
    {
        const auto name = "Band " + std::to_string (band + 1) + " ";
        setNormalised (name + "Active", 1.0f);
        setNumber (name + "Frequency", static_cast<double> (tenBands[band].frequencyHz));
        setNumber (name + "Q", static_cast<double> (tenBands[band].q));
        setNumber (name + "Gain", static_cast<double> (tenBands[band].gainDb));
    }
}

void HostedEqualiser::setUpLsp (Phase phase)
{
    setChoice ("mode", phase == Phase::linear ? "FFT" : "IIR");

    for (std::size_t band = 0; band < tenBands.size(); ++band)
    {
        const auto number = std::to_string (band);
        setChoice ("ft_" + number, "Bell");
        setNumber ("f_" + number, static_cast<double> (tenBands[band].frequencyHz));
        setNumber ("q_" + number, static_cast<double> (tenBands[band].q));
        setNumber ("g_" + number, static_cast<double> (tenBands[band].gainDb));
    }
}

void HostedEqualiser::setUpIem()
{
    // Six bands are all it has, and only the inner four can be bells.
    constexpr std::array<std::size_t, 6> bands { 0, 2, 4, 6, 8, 9 };

    for (std::size_t index = 0; index < bands.size(); ++index)
    {
        const auto number = std::to_string (index + 1);
        setChoice ("Filter Type " + number, index == 0 ? "Low-shelf" : index == 5 ? "High-shelf" : "Peak");
        setNumber ("Filter Frequency " + number, static_cast<double> (tenBands[bands[index]].frequencyHz));
        setNumber ("Filter Q " + number, static_cast<double> (tenBands[bands[index]].q));
        setNumber ("Filter Gain " + number, static_cast<double> (tenBands[bands[index]].gainDb));
    }
}

void HostedEqualiser::process (BenchSignal& signal)
{
    for (int start = 0; start < BenchSignal::frameCount; start += block)
    {
        const float* input[] { signal.channel (0) + start, signal.channel (1) + start };
        float* output[] { signal.output (0) + start, signal.output (1) + start };
        host.process (input, output, 2, block);
    }
}

double HostedEqualiser::largestChangeDb (BenchSignal& signal)
{
    for (int pass = 0; pass < warmUpPasses; ++pass)
    {
        process (signal);
        std::this_thread::sleep_for (warmUpPause);
    }

    std::vector<float> silence (BenchSignal::frameCount, 0.0f);
    std::vector<float> impulse (silence);
    impulse[0] = 1.0f;
    std::vector<float> response (silence);
    std::vector<float> other (silence);

    for (auto* sent : { &silence, &silence, &impulse })
        for (int start = 0; start < BenchSignal::frameCount; start += block)
        {
            const float* input[] { sent->data() + start, sent->data() + start };
            float* output[] { response.data() + start, other.data() + start };
            host.process (input, output, 2, block);
        }

    auto largest = 0.0;

    for (const auto& band : tenBands)
    {
        const auto step = 2.0 * std::numbers::pi * static_cast<double> (band.frequencyHz) / rate;
        std::complex<double> sum;

        for (std::size_t index = 0; index < response.size(); ++index)
            sum += static_cast<double> (response[index]) * std::polar (1.0, -step * static_cast<double> (index));

        largest = std::max (largest, std::abs (20.0 * std::log10 (std::abs (sum))));
    }

    return largest;
}

void HostedEqualiser::setChoice (const std::string& name, const std::string& text)
{
    const auto index = find (name);

    for (int step = 0; step <= textSteps; ++step)
    {
        host.setParameter (index, static_cast<float> (step) / textSteps);

        if (host.parameterText (index) == text)
            return;
    }

    throw std::runtime_error (name + " cannot be " + text);
}

void HostedEqualiser::setNumber (const std::string& name, double value)
{
    const auto index = find (name);
    auto low = 0.0f;
    auto high = 1.0f;

    // Every one of these rises with its number.
    for (int step = 0; step < bisections; ++step)
    {
        const auto middle = 0.5f * (low + high);
        host.setParameter (index, middle);
        (std::strtod (host.parameterText (index).c_str(), nullptr) < value ? low : high) = middle;
    }

    host.setParameter (index, high);
}

void HostedEqualiser::setNormalised (const std::string& name, float value)
{
    host.setParameter (find (name), value);
}

int HostedEqualiser::find (const std::string& name) const
{
    if (const auto index = host.findParameter (name); index >= 0)
        return index;

    throw std::runtime_error (host.effectName() + " has no parameter " + name);
}
