#include "dsp/effects/HaasEffect.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace
{
constexpr float startDelayMs = 15.0f;
constexpr float envelopeMs = 10.0f;
constexpr float attackMs = 5.0f;
constexpr float releaseMs = 100.0f;

constexpr float silenceDb = -120.0f;
constexpr float silentEnvelope = 1.0e-6f;
constexpr float halfKneeDb = 2.5f;
constexpr float kneeCurvature = 9.9f;

/** Samples that the cubic needs around the place it reads, with some to spare. */
constexpr int interpolationMargin = 8;
constexpr float readLead = 3.0f;

float decay (float timeMs, int sampleRate)
{
    return std::exp (-1000.0f / (timeMs * static_cast<float> (sampleRate)));
}

float linearGain (float gainDb)
{
    return std::pow (10.0f, gainDb / 20.0f);
}
} // namespace

HaasEffect::HaasEffect (int newSampleRate, float newMaxDelayMs)
    : currentDelayMs (std::min (startDelayMs, newMaxDelayMs)),
      targetDelayMs (currentDelayMs),
      maxDelayMs (newMaxDelayMs),
      sampleRate (newSampleRate),
      delayLength (static_cast<int> (static_cast<float> (newSampleRate) * newMaxDelayMs / 1000.0f)
                   + interpolationMargin),
      envelopeCoefficient (decay (envelopeMs, newSampleRate)),
      attackCoefficient (decay (attackMs, newSampleRate)),
      releaseCoefficient (decay (releaseMs, newSampleRate))
{
    delayLine.assign (static_cast<std::size_t> (delayLength), 0.0f);
}

void HaasEffect::setDelayMs (float newDelayMs, int rampSamples) noexcept
{
    targetDelayMs = std::clamp (newDelayMs, 0.0f, maxDelayMs);
    rampSteps = std::max (0, rampSamples);
    rampStep = rampSteps > 0 ? (targetDelayMs - currentDelayMs) / static_cast<float> (rampSteps) : 0.0f;
}

float HaasEffect::process (float input, float sideChain) noexcept
{
    if (! enabled)
        return input;

    followLevel (useSideChain ? sideChain : input);
    advanceDelay();

    const auto length = static_cast<float> (delayLength);
    const auto behind = currentDelayMs * 0.001f * static_cast<float> (sampleRate);
    readPosition = std::fmod (static_cast<float> (writeIndex) - behind + length - readLead, length);

    if (readPosition < 0.0f)
        readPosition += length;

    const auto dry = linearGain (gainDb) * input;
    delayLine[static_cast<std::size_t> (writeIndex)] = dry;
    const auto wet = readDelayed();

    writeIndex = writeIndex + 1 == delayLength ? 0 : writeIndex + 1;
    readPosition += 1.0f;

    if (readPosition >= length)
        readPosition = 0.0f;

    return linearGain (wetLevelDb) * wet - dry;
}

float HaasEffect::readAndClearPeak() noexcept
{
    const auto peak = peakEnvelope;
    peakEnvelope = 0.0f;
    return peak;
}

void HaasEffect::followLevel (float detectorInput) noexcept
{
    envelope = std::sqrt (detectorInput * detectorInput * (1.0f - envelopeCoefficient)
                          + envelope * envelope * envelopeCoefficient);
    peakEnvelope = std::max (peakEnvelope, envelope);

    const auto levelDb = envelope < silentEnvelope ? silenceDb : 20.0f * std::log10 (envelope);
    const auto target = gateTargetDb (levelDb) - levelDb;
    const auto coefficient = gainDb >= target ? releaseCoefficient : attackCoefficient;
    gainDb = (1.0f - coefficient) * target + coefficient * gainDb;
}

float HaasEffect::gateTargetDb (float levelDb) const noexcept
{
    const auto upperEdge = thresholdDb + halfKneeDb;

    if (levelDb >= upperEdge)
        return levelDb;

    if (levelDb < thresholdDb - halfKneeDb)
        return silenceDb;

    // A parabola that meets the straight part at the upper edge with slope 1. Written around the edge: expanded in
    // powers of the level, its terms cancel from some 1e5 dB.
    const auto below = levelDb - upperEdge;
    return upperEdge + below - kneeCurvature * below * below;
}

void HaasEffect::advanceDelay() noexcept
{
    if (rampSteps > 0 && --rampSteps >= 1)
        currentDelayMs += rampStep;
    else
        currentDelayMs = targetDelayMs;
}

float HaasEffect::readDelayed() const noexcept
{
    const auto length = static_cast<std::size_t> (delayLength);
    const auto index = std::min (static_cast<std::size_t> (readPosition), length - 1);
    const auto t = readPosition - static_cast<float> (index);
    const auto before = delayLine[(index + length - 1) % length];
    const auto here = delayLine[index];
    const auto next = delayLine[(index + 1) % length];
    const auto afterNext = delayLine[(index + 2) % length];

    const auto cubic = 1.5f * here - 0.5f * before - 1.5f * next + 0.5f * afterNext;
    const auto square = before - 2.5f * here + 2.0f * next - 0.5f * afterNext;
    const auto slope = 0.5f * next - 0.5f * before;
    return ((cubic * t + square) * t + slope) * t + here;
}
