#pragma once

/** An effect that takes one sample at a time and may listen to a side chain. */
class IFXProcessor
{
public:
    virtual ~IFXProcessor() = default;

    virtual float process (float input, float sideChain) noexcept = 0;

    /** The highest level of the detector since the last call, linear. */
    virtual float readAndClearPeak() noexcept = 0;
};
