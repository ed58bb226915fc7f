#include "core/model/Transport.h"

void Transport::update (const juce::Optional<juce::AudioPlayHead::PositionInfo>& position, bool hostAlwaysRuns) noexcept
{
    const auto info = position.orFallback (juce::AudioPlayHead::PositionInfo {});
    const auto timeInSamples = info.getTimeInSamples().orFallback (0);
    const auto ppqPosition = info.getPpqPosition().orFallback (0.0);

    const auto playing = judge (info.getIsPlaying(), timeInSamples, ppqPosition);
    transportPlaying.store (playing, std::memory_order_relaxed);
    lastTimeInSamples = timeInSamples;
    lastPpqPosition = ppqPosition;
    transportOrAlwaysRunning.store (playing || hostAlwaysRuns, std::memory_order_relaxed);
}

bool Transport::judge (bool hostSaysPlaying, juce::int64 timeInSamples, double ppqPosition) noexcept
{
    if (hostIsPlayingTrusted)
        return hostSaysPlaying;

    if (firstBlock)
    {
        firstBlock = false;
        return false;
    }

    if (timeInSamples == lastTimeInSamples && ppqPosition == lastPpqPosition)
        return false;

    hostIsPlayingTrusted = hostSaysPlaying;
    return true;
}
