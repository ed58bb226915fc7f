#pragma once

#include "app/EqualiserSettings.h"

#include <complex>
#include <vector>

/** What the equaliser does to each frequency, measured: the answer of the plug-in's processor to an impulse, with the
    delay of its path taken off and without the output gain. One thread. */
class HeardResponse
{
public:
    /** The two signals that a stereo file consists of. */
    enum class Signal
    {
        middle,
        sides
    };

    /** Renders the impulses. @param sampleRate one of the six that the filters serve; @param channelCount 1 or 2, and
        of a single channel the response is that of the middle */
    HeardResponse (double sampleRate, int channelCount, EqualiserSettings settings);

    /** Complex factor at a frequency in Hz. A linear-phase filter gives a real one, negative where the polarity is
        turned. */
    [[nodiscard]] std::complex<double> at (Signal signal, double frequencyHz) const;

    /** Its magnitude in dB. */
    [[nodiscard]] double decibelsAt (Signal signal, double frequencyHz) const;

private:
    /** An answer from its first value that is not 0 on, which is `offset` samples after the impulse. */
    struct Answer
    {
        std::vector<double> samples;
        double offset = 0.0;
    };

    [[nodiscard]] const Answer& answerTo (Signal signal) const noexcept
    {
        return signal == Signal::middle ? middle : sides;
    }

    double rate;
    Answer middle;
    Answer sides;
};
