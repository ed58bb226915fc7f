#pragma once

#include <juce_audio_basics/juce_audio_basics.h>

#include <atomic>

/** Works out whether the host plays.

    A host that never says so is seen as playing while its position moves; one that has said so once is believed from
    then on, until the processor dies. Everything but the getters belongs to the audio thread. */
class Transport
{
public:
    /** Takes the position of one block; nothing counts as position 0, not playing. Real-time safe. */
    void update (const juce::Optional<juce::AudioPlayHead::PositionInfo>& position, bool hostAlwaysRuns) noexcept;

    /** Any thread. */
    [[nodiscard]] bool isPlaying() const noexcept { return transportPlaying.load (std::memory_order_relaxed); }

    /** True while playing, and always in hosts whose transport means nothing. Any thread. */
    [[nodiscard]] bool isPlayingOrAlwaysRunning() const noexcept
    {
        return transportOrAlwaysRunning.load (std::memory_order_relaxed);
    }

private:
    [[nodiscard]] bool judge (bool hostSaysPlaying, juce::int64 timeInSamples, double ppqPosition) noexcept;

    bool hostIsPlayingTrusted = false;
    bool firstBlock = true;
    juce::int64 lastTimeInSamples = 0;
    double lastPpqPosition = 0.0;
    std::atomic<bool> transportPlaying { false };
    std::atomic<bool> transportOrAlwaysRunning { false };
};
