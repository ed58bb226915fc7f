#include "app/ResponseNotes.h"

#include "dsp/rate/ReducedRate.h"

#include <algorithm>
#include <cmath>
#include <iomanip>
#include <set>
#include <sstream>

namespace
{
using Signal = HeardResponse::Signal;

/** One band alone leaves -12 dB, and one of each group -24: what lies deeper was asked for by nobody. */
constexpr double nothingDb = -30.0;

/** Minima are looked for from here to 20 kHz, so many to an octave, and refined where they are this deep. */
constexpr double lowestHz = 100.0;
constexpr double highestHz = 20000.0;
constexpr int pointsPerOctave = 48;
constexpr double worthRefiningDb = -12.0;

constexpr double missedDb = 1.0;

std::string decibels (double value)
{
    std::ostringstream text;
    text << std::fixed << std::setprecision (1) << value << " dB";
    return text.str();
}

/** To the nearest 10 Hz, which is as near as a band can be set. */
std::string hertz (double frequency)
{
    return std::to_string (static_cast<int> (std::lround (frequency / 10.0)) * 10);
}

/** The deepest place between two frequencies, by the golden section; it has one minimum there. */
double deepestBetween (const HeardResponse& heard, Signal signal, double low, double high)
{
    constexpr auto golden = 0.6180339887498949;
    constexpr auto steps = 30;

    for (int step = 0; step < steps; ++step)
    {
        const auto inner = high - golden * (high - low);
        const auto outer = low + golden * (high - low);

        if (std::abs (heard.at (signal, inner)) < std::abs (heard.at (signal, outer)))
            high = outer;
        else
            low = inner;
    }

    return 0.5 * (low + high);
}

/** Frequencies of which nothing is left. */
std::vector<double> silentPlaces (const HeardResponse& heard, Signal signal, double limitHz)
{
    const auto frequencyOf = [] (int index) { return lowestHz * std::exp2 (double (index) / pointsPerOctave); };
    std::vector<double> levels;

    for (int index = 0; frequencyOf (index) < limitHz; ++index)
        levels.push_back (heard.decibelsAt (signal, frequencyOf (index)));

    std::vector<double> places;

    for (std::size_t index = 1; index + 1 < levels.size(); ++index)
        if (levels[index] < worthRefiningDb && levels[index] <= levels[index - 1] && levels[index] < levels[index + 1])
        {
            const auto place = deepestBetween (
                heard, signal, frequencyOf (static_cast<int> (index) - 1), frequencyOf (static_cast<int> (index) + 1));

            if (heard.decibelsAt (signal, place) < nothingDb)
                places.push_back (place);
        }

    return places;
}

std::string listOf (const std::vector<double>& frequencies)
{
    std::string text;

    for (std::size_t index = 0; index < frequencies.size(); ++index)
        text += (index == 0 ? "" : index + 1 == frequencies.size() ? " and " : ", ") + hertz (frequencies[index]);

    return text + " Hz";
}

/** The loudest place between the first and the last of several frequencies. */
double loudestBetween (const HeardResponse& heard, Signal signal, double low, double high)
{
    auto loudest = low;
    auto level = heard.decibelsAt (signal, low);

    for (auto frequency = low; frequency < high; frequency *= std::exp2 (1.0 / pointsPerOctave))
        if (const auto here = heard.decibelsAt (signal, frequency); here > level)
        {
            level = here;
            loudest = frequency;
        }

    return loudest;
}

/** Writes the notes for one signal. */
class SignalNotes
{
public:
    SignalNotes (VelmoraAudioProcessor& processorToRead, const HeardResponse& heardToRead, Signal signalToJudge)
        : processor (processorToRead),
          heard (heardToRead),
          asked (processorToRead),
          signal (signalToJudge),
          silent (silentPlaces (heard, signal, std::min (highestHz, 0.5 * processor.model.sampleRate)))
    {
    }

    void addTo (std::vector<std::string>& notes, const std::string& where, bool leaveOutHighBands) const
    {
        if (! silent.empty())
            notes.push_back (silenceOn (where));

        for (int band = 0; band < bandCount; ++band)
            if (const auto note = missedGain (band, where, leaveOutHighBands); ! note.empty())
                notes.push_back (note);
    }

private:
    [[nodiscard]] bool isCutTooOften (double frequency) const
    {
        return asked.at (signal, frequency) < std::pow (10.0, nothingDb / 20.0);
    }

    [[nodiscard]] std::string silenceOn (const std::string& where) const
    {
        auto text = "on " + where + " nothing is left at " + listOf (silent);

        if (silent.size() > 1)
        {
            const auto between = loudestBetween (heard, signal, silent.front(), silent.back());
            const auto turned =
                processor.model.filterPhase() == FilterPhase::linear && heard.at (signal, between).real() < 0.0;
            text += std::string (", and between them ") + (turned ? "the polarity is turned and " : "")
                    + hertz (between) + " Hz comes out at " + decibels (heard.decibelsAt (signal, between));
        }

        const auto sums = std::any_of (
            silent.begin(), silent.end(), [this] (double place) { return asked.at (signal, place) < 0.25; });
        return text
               + (sums ? ". What several bands change adds up in amplitude, not in dB: use fewer cuts at one place."
                       : ". The filter of the bands up to 1500 Hz turns the phase there.");
    }

    [[nodiscard]] std::string missedGain (int band, const std::string& where, bool leaveOutHighBands) const
    {
        const auto frequency =
            static_cast<double> (processor.model.getBandValue (band, Settings::Parameter::frequency));

        if (! asked.acts (band, signal) || isCutTooOften (frequency)
            || (leaveOutHighBands && frequency > lowPathLimitHz) || frequency >= 0.5 * processor.model.sampleRate)
            return {};

        const auto wanted = 20.0 * std::log10 (asked.at (signal, frequency));
        const auto found = heard.decibelsAt (signal, frequency);

        if (std::abs (found - wanted) <= missedDb)
            return {};

        return "at " + hertz (frequency) + " Hz (band " + std::to_string (band + 1) + ") " + where
               + " should come out at " + decibels (wanted) + ", and come out at " + decibels (found) + ". "
               + (processor.model.filterMode() == FilterMode::mix
                      ? "The filters follow no narrower band there."
                      : "--mode mix has filters that follow narrower bands.");
    }

    VelmoraAudioProcessor& processor;
    const HeardResponse& heard;
    const AskedResponse asked;
    const Signal signal;
    const std::vector<double> silent;
};
} // namespace

std::vector<std::string>
responseNotes (VelmoraAudioProcessor& processor, const HeardResponse& heard, bool leaveOutHighBands)
{
    const auto& model = processor.model;
    const auto apart = model.isStereo && model.midSidePathActive();
    std::vector<std::string> notes;
    const auto add = [&] (Signal signal, const char* where)
    { SignalNotes (processor, heard, signal).addTo (notes, where, leaveOutHighBands); };

    add (Signal::middle, apart ? "the middle" : model.isStereo ? "left and right" : "the one channel");

    if (apart)
        add (Signal::sides, "the sides");

    return notes;
}
