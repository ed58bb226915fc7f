#pragma once

#include "BenchSignal.h"
#include "hosts/Vst2Host.h"

#include <string>

/** An equaliser in a library with the classic 2.4 interface, with the ten bands or as many of them as it has.

    Its parameters are found by name and set by the text that they show. A name or text that is not there throws
    std::runtime_error: a peer that is not set up as announced must not be compared. */
class HostedEqualiser
{
public:
    enum class Phase
    {
        minimum,
        linear
    };

    HostedEqualiser (const std::string& library, double sampleRate, int blockSize);

    void setUpOwn();
    void setUpLsp (Phase phase);
    void setUpIem();

    /** Processes the whole signal once. */
    void process (BenchSignal& signal);

    /** The largest level in dB of the response at the ten frequencies, without the sign: tells that bands are at work.
     */
    [[nodiscard]] double largestChangeDb (BenchSignal& signal);

    [[nodiscard]] int latency() const noexcept { return host.latency(); }

private:
    void setChoice (const std::string& name, const std::string& text);
    void setNumber (const std::string& name, double value);
    void setNormalised (const std::string& name, float value);
    [[nodiscard]] int find (const std::string& name) const;

    Vst2Host host;
    const double rate;
    const int block;
};
