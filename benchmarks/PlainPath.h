#pragma once

#include "dsp/design/FirLengths.h"
#include "dsp/rate/RateFilterTable.h"

#include <vector>

/** The audio path of one channel in plain loops, as a measure for the vector code. */
namespace Plain
{
class Fir
{
public:
    explicit Fir (std::vector<double> firTaps);
    void run (const double* input, double* output, int count);

private:
    std::vector<double> taps;
    std::vector<double> line;
};

/** A rate filter in direct form II over every sample, dropped ones and zeros between samples included. */
class RateFilter
{
public:
    explicit RateFilter (int decimationFactor);
    void decimate (const float* input, double* output, int count);
    void interpolate (const double* input, double* output, int reducedCount);

private:
    double process (double input);

    int factor;
    std::vector<double> numerator;
    std::vector<double> denominator;
    std::vector<double> state;
};

class Delay
{
public:
    explicit Delay (int samples) : ring (static_cast<std::size_t> (samples), 0.0) {}
    double process (double input);

private:
    std::vector<double> ring;
    std::size_t index = 0;
};

/** BlockPath for one channel in linear phase, decimation included. */
class Path
{
public:
    Path (double sampleRate, FilterMode mode, const std::vector<double>& lowTaps, const std::vector<double>& highTaps);
    void process (const float* input, float* output, int count);

private:
    int factor;
    RateFilter decimator;
    RateFilter interpolator;
    Fir lowFir;
    Fir highFir;
    Delay dryDelay;
    Delay lowDelay;
    std::vector<double> low;
    std::vector<double> correction;
    std::vector<double> sum;
    std::vector<double> result;
};
} // namespace Plain
