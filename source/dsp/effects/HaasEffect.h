#pragma once

#include "dsp/effects/IFXProcessor.h"

#include <vector>

/** A gated short delay that returns the difference between the delayed and the direct signal.

    The gate follows the input or a side chain, with a soft knee 5 dB wide. The delay is read between samples by a
   cubic, and may glide to a new length. Off at first: then the input passes. One thread at a time; `process` and the
   setters are real-time safe. */
class HaasEffect final : public IFXProcessor
{
public:
    /** @param newSampleRate in Hz  @param maxDelayMs longest delay in milliseconds */
    explicit HaasEffect (int newSampleRate, float newMaxDelayMs = 50.0f);

    float process (float input, float sideChain) noexcept override;
    float readAndClearPeak() noexcept override;

    void setEnabled (bool shouldBeEnabled) noexcept { enabled = shouldBeEnabled; }

    /** Lets the gate follow the side chain in place of the input. */
    void setUseSideChain (bool shouldUse) noexcept { useSideChain = shouldUse; }

    void setThresholdDb (float newThresholdDb) noexcept { thresholdDb = newThresholdDb; }
    void setWetLevelDb (float newWetLevelDb) noexcept { wetLevelDb = newWetLevelDb; }

    /** Sets the delay, limited to 0 .. maximum, to be reached evenly after `rampSamples` samples. */
    void setDelayMs (float newDelayMs, int rampSamples = 0) noexcept;

    [[nodiscard]] float delayMs() const noexcept { return currentDelayMs; }
    [[nodiscard]] float gateGainDb() const noexcept { return gainDb; }

private:
    void followLevel (float detectorInput) noexcept;
    void advanceDelay() noexcept;
    [[nodiscard]] float gateTargetDb (float levelDb) const noexcept;
    [[nodiscard]] float readDelayed() const noexcept;

    bool useSideChain = false;
    std::vector<float> delayLine;
    float currentDelayMs;
    float targetDelayMs;
    float maxDelayMs;
    int rampSteps = 0;
    float rampStep = 0.0f;
    int sampleRate;
    float readPosition = 0.0f;
    int writeIndex = 0;
    int delayLength;
    float thresholdDb = -60.0f;
    float wetLevelDb = 0.0f;
    float envelopeCoefficient;
    float attackCoefficient;
    float releaseCoefficient;
    float envelope = 0.0f;
    float peakEnvelope = 0.0f;
    float gainDb = 0.0f;
    bool enabled = false;
};
