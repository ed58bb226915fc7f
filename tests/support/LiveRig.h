#pragma once

#include "support/PluginRig.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <numbers>
#include <thread>

/** A processor whose analysis threads can be waited for. The thread that uses it is the audio thread. */
class LiveRig
{
public:
    LiveRig()
        : token (processor.model.channels.add ([this] { notePass(); }, Channels::integratedLUFSAnalysisChanged)),
          spectrumToken (processor.model.channels.add ([this] { ++spectra; }, Channels::dftAnalysisChanged))
    {
    }

    ~LiveRig()
    {
        processor.model.channels.remove (token);
        processor.model.channels.remove (spectrumToken);
    }

    LiveRig (const LiveRig&) = delete;
    LiveRig& operator= (const LiveRig&) = delete;

    /** Returns once everything fed before is measured and both threads sleep. */
    void waitForAnalysis() { processor.liveAnalysis().runPass(); }

    /** Sends a signal through, at a pace that the analysis can follow, and waits until it is measured. */
    void feed (const PluginRig::Signal& signal, int blockSize)
    {
        constexpr int longestStretch = 4096;
        const auto stretch = std::max (longestStretch / blockSize, 1) * blockSize;
        const auto length = static_cast<int> (signal[0].size());

        for (int start = 0; start < length; start += stretch)
        {
            PluginRig::Signal part;

            for (const auto& channel : signal)
                part.emplace_back (channel.begin() + start, channel.begin() + std::min (start + stretch, length));

            std::ignore = rig.run (part, blockSize);
            waitForAnalysis();
        }
    }

    [[nodiscard]] std::vector<float> levels() const
    {
        const auto& source = processor.liveAnalysis().bands().bandLevels;
        return { source.begin(), source.end() };
    }

    [[nodiscard]] std::vector<float> gainTargets() const
    {
        const auto& source = processor.liveAnalysis().gainTargets().gainTarget;
        return { source.begin(), source.end() };
    }

    [[nodiscard]] float inputLoudness() const { return processor.loudnessMeters().inputLoudness(); }

    /** What the passes since the last call told: the largest move, and whether any moved. */
    struct Moves
    {
        float largest = 0.0f;
        bool any = false;
    };

    [[nodiscard]] Moves takeMoves() { return { largestMove.exchange (0.0f), anyMove.exchange (false) }; }

    PluginRig rig;
    VelmoraAudioProcessor& processor = rig.processor;
    std::atomic<int> passes { 0 };
    std::atomic<int> spectra { 0 };

private:
    void notePass()
    {
        const auto& analysis = processor.liveAnalysis();
        largestMove = std::max (largestMove.load(), analysis.gainTargets().maxChange.load());
        anyMove = anyMove || analysis.gainTargetChanged;
        ++passes;
    }

    std::atomic<float> largestMove { 0.0f };
    std::atomic<bool> anyMove { false };
    int token;
    int spectrumToken;
};

namespace signals
{
struct Tone
{
    double frequencyHz;
    double amplitude;
};

/** A sum of sines, in the left channel and, times `rightGain`, in the right. */
inline PluginRig::Signal
tones (const std::vector<Tone>& parts, int length, double sampleRate, int channelCount = 2, double rightGain = 1.0)
{
    PluginRig::Signal signal (static_cast<std::size_t> (channelCount),
                              std::vector<float> (static_cast<std::size_t> (length)));

    for (std::size_t n = 0; n < signal[0].size(); ++n)
    {
        auto sum = 0.0;

        for (const auto& [frequency, amplitude] : parts)
            sum += amplitude * std::sin (2.0 * std::numbers::pi * frequency * static_cast<double> (n) / sampleRate);

        signal[0][n] = static_cast<float> (sum);

        if (channelCount == 2)
            signal[1][n] = static_cast<float> (rightGain * sum);
    }

    return signal;
}

/** One value on and on. */
inline PluginRig::Signal constant (float value, int length, int channelCount = 2)
{
    return { static_cast<std::size_t> (channelCount), std::vector<float> (static_cast<std::size_t> (length), value) };
}
} // namespace signals
