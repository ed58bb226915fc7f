#include "dsp/rate/RateConverter.h"
#include "dsp/rate/RateFilterTable.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <functional>
#include <memory>
#include <numbers>
#include <random>
#include <vector>

// Prints the round-off of the rate filters in the three direct forms, one section in double precision at the host's
// rate as the coefficients are given, and in the form that RateConverter runs. The measure is the same section in
// extended precision; figures are dB of the error's root mean square relative to full scale.

namespace
{
#ifdef __SIZEOF_FLOAT128__
__extension__ using Extended = __float128;
#else
using Extended = long double;
#endif

using Signal = std::vector<double>;

constexpr int sampleCount = 8192;

/** One section of b and a in any precision. */
template <typename Number>
struct Section
{
    template <int order>
    explicit Section (const RateFilterSection<order>& section)
        : b (section.numerator.begin(), section.numerator.end()),
          a (section.denominator.begin(), section.denominator.end())
    {
    }

    [[nodiscard]] std::size_t order() const { return a.size() - 1; }

    std::vector<Number> b;
    std::vector<Number> a;
};

template <typename Number>
Signal directFormOne (const Section<Number>& section, const Signal& input)
{
    std::vector<Number> output (input.size());

    for (std::size_t n = 0; n < input.size(); ++n)
    {
        Number sum = 0;

        for (std::size_t k = 0; k <= std::min (section.order(), n); ++k)
            sum += section.b[k] * static_cast<Number> (input[n - k]);

        for (std::size_t k = 1; k <= std::min (section.order(), n); ++k)
            sum -= section.a[k] * output[n - k];

        output[n] = sum;
    }

    Signal rounded (output.size());
    std::transform (output.begin(), output.end(), rounded.begin(), [] (Number v) { return static_cast<double> (v); });
    return rounded;
}

Signal directFormTwo (const Section<double>& section, const Signal& input)
{
    Signal inner (input.size());
    Signal output (input.size());

    for (std::size_t n = 0; n < input.size(); ++n)
    {
        inner[n] = input[n];

        for (auto k = std::min (section.order(), n); k > 0; --k)
            inner[n] -= section.a[k] * inner[n - k];

        for (std::size_t k = 0; k <= std::min (section.order(), n); ++k)
            output[n] += section.b[k] * inner[n - k];
    }

    return output;
}

Signal transposedFormTwo (const Section<double>& section, const Signal& input)
{
    Signal state (section.order() + 1, 0.0);
    Signal output (input.size());

    for (std::size_t n = 0; n < input.size(); ++n)
    {
        output[n] = section.b[0] * input[n] + state[0];

        for (std::size_t k = 1; k <= section.order(); ++k)
            state[k - 1] = section.b[k] * input[n] - section.a[k] * output[n] + state[k];
    }

    return output;
}

Signal kept (const Signal& input, int factor)
{
    Signal result;

    for (std::size_t i = 0; i < input.size(); i += static_cast<std::size_t> (factor))
        result.push_back (input[i]);

    return result;
}

Signal stuffed (const Signal& input, int factor)
{
    Signal result (input.size() * static_cast<std::size_t> (factor), 0.0);

    for (std::size_t i = 0; i < input.size(); ++i)
        result[i * static_cast<std::size_t> (factor)] = factor * input[i];

    return result;
}

Signal decimateAsWeDo (double sampleRate, const Signal& input)
{
    const auto converter = std::make_unique<RateConverter>();
    converter->setSampleRate (sampleRate);
    converter->buildFilters();
    const std::vector<float> floats (input.begin(), input.end());
    converter->decimateSingle (floats.data(), sampleCount);
    return { converter->outputLeft(), converter->outputLeft() + sampleCount / converter->decimationFactor() };
}

Signal interpolateAsWeDo (double sampleRate, const Signal& input)
{
    const auto converter = std::make_unique<RateConverter>();
    converter->setSampleRate (sampleRate);
    converter->buildFilters();
    converter->interpolateSingle (input.data(), static_cast<int> (input.size()));
    return { converter->interpolatedLeft(), converter->interpolatedLeft() + sampleCount };
}

double errorDb (const Signal& output, const Signal& exact)
{
    double sum = 0.0;

    for (std::size_t i = 0; i < exact.size(); ++i)
        sum += (output[i] - exact[i]) * (output[i] - exact[i]);

    return 10.0 * std::log10 (sum / static_cast<double> (exact.size()) + 1e-300);
}

Signal sine (int count, double cyclesPerSample)
{
    Signal result (static_cast<std::size_t> (count));

    for (std::size_t i = 0; i < result.size(); ++i)
        result[i] = static_cast<double> (
            static_cast<float> (std::sin (2.0 * std::numbers::pi * cyclesPerSample * static_cast<double> (i))));

    return result;
}

Signal noise (int count)
{
    std::mt19937 random (1);
    std::normal_distribution<double> anyValue (0.0, 0.3);
    Signal result (static_cast<std::size_t> (count));
    std::generate (
        result.begin(), result.end(), [&] { return static_cast<double> (static_cast<float> (anyValue (random))); });
    return result;
}

template <int order>
void printRows (const RateFilterSection<order>& given, double sampleRate, int factor)
{
    const Section<double> section (given);
    const Section<Extended> exactSection (given);
    const auto same = [] (const Signal& signal, int) { return signal; };
    const std::function<Signal (const Signal&, int)> notChanged = same;

    const auto print = [&] (const char* direction,
                            const char* signalName,
                            const Signal& input,
                            const std::function<Signal (const Signal&, int)>& before,
                            const std::function<Signal (const Signal&, int)>& after,
                            const Signal& ours)
    {
        const auto filtered = before (input, factor);
        const auto exact = after (directFormOne (exactSection, filtered), factor);
        std::printf ("%5d  %-13s %-6s %8.1f %8.1f %11.1f %8.1f\n",
                     order,
                     direction,
                     signalName,
                     errorDb (after (directFormOne (section, filtered), factor), exact),
                     errorDb (after (directFormTwo (section, filtered), factor), exact),
                     errorDb (after (transposedFormTwo (section, filtered), factor), exact),
                     errorDb (ours, exact));
    };

    const auto tone = 1000.0 / sampleRate;
    const auto reducedCount = sampleCount / factor;

    for (const auto& [name, input] :
         { std::pair { "sine", sine (sampleCount, tone) }, std::pair { "noise", noise (sampleCount) } })
        print ("decimation", name, input, notChanged, kept, decimateAsWeDo (sampleRate, input));

    for (const auto& [name, input] :
         { std::pair { "sine", sine (reducedCount, tone * factor) }, std::pair { "noise", noise (reducedCount) } })
        print ("interpolation", name, input, stuffed, notChanged, interpolateAsWeDo (sampleRate, input));
}
} // namespace

int main()
{
    std::printf ("Round-off in dB of full scale: sine of 1 kHz and amplitude 1, noise of 0.3 rms\n");
    std::printf ("order  direction     signal   form I  form II  transposed     ours\n");
    printRows (rateFilterByFour, 48000.0, 4);
    printRows (rateFilterByEight, 192000.0, 8);
    return 0;
}
