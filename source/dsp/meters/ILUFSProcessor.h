#pragma once

namespace orvik
{
/** A loudness meter that takes one power or sample at a time. All calls are real-time safe. */
class ILUFSProcessor
{
public:
    virtual ~ILUFSProcessor() = default;

    /** The power of one stereo frame. For one channel the caller squares the sample itself. */
    [[nodiscard]] virtual float sumOfSquares (float a, float b) noexcept = 0;

    /** Takes the power of one frame and returns the gated loudness of the last blocks, in dB. */
    virtual float integrated (float power) noexcept = 0;

    /** Takes the power of one frame and returns the loudness of the last three seconds, in dB.

        @param updated set true when the value is a new one, never cleared; may be null */
    virtual float shortTerm (float power, bool* updated) noexcept = 0;

    /** Takes one sample and returns the largest absolute sample of the last three seconds, linear. */
    virtual float peak (float sample) noexcept = 0;
};
} // namespace orvik
