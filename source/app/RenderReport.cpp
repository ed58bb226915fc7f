#include "app/RenderReport.h"

#include "app/MeasurementReport.h"
#include "app/Printable.h"

#include <cmath>
#include <iomanip>
#include <iostream>
#include <limits>
#include <sstream>

namespace
{
/** Not finite for silence. */
double peakDb (float peak)
{
    const auto level = std::round (2000.0 * std::log10 (static_cast<double> (peak))) / 100.0;
    return level == 0.0 ? 0.0 : level;
}

std::string peakText (float peak)
{
    if (peak <= 0.0f)
        return "silent";

    std::ostringstream text;
    text << "peak " << std::fixed << std::setprecision (2) << peakDb (peak) << " dBFS";
    return text.str();
}

const char* modeText (FilterMode mode)
{
    return mode == FilterMode::mix ? "mix" : "master";
}

const char* phaseText (FilterPhase phase)
{
    return phase == FilterPhase::linear ? "linear" : "minimum";
}

/** A parameter's value with the digits that it has, and not those of its binary form. */
double tidy (float value)
{
    return std::round (static_cast<double> (value) * 100.0) / 100.0;
}

std::string percentText (float percent)
{
    std::ostringstream text;
    text << percent << " %";
    return text.str();
}

nlohmann::json toJson (const RenderResult::Band& band)
{
    return { { "number", band.number },
             { "frequency", tidy (band.asked.frequencyHz) },
             { "gain", tidy (band.actingGainDb) },
             { "askedGain", tidy (band.asked.gainDb) },
             { "q", tidy (band.asked.q) },
             { "shelf", band.asked.highShelf },
             { "midSide", tidy (band.asked.midSide) },
             { "solo", band.asked.solo },
             { "bypass", band.asked.bypass } };
}
nlohmann::json toJson (const TargetDistance& distance)
{
    return { { "lufs", MeasurementReport::numberOrNull (distance.lufs) },
             { "bands", MeasurementReport::listOf (distance.bands) },
             { "adjustments", MeasurementReport::listOf (distance.adjustments) },
             { "rms", MeasurementReport::numberOrNull (distance.rms) } };
}

nlohmann::json toJson (const std::vector<BandOption>& bands)
{
    auto list = nlohmann::json::array();

    for (const auto& band : bands)
        list.push_back ({ { "frequency", tidy (band.frequencyHz) },
                          { "gain", tidy (band.gainDb) },
                          { "q", tidy (band.q) },
                          { "shelf", band.highShelf } });

    return list;
}

/** The levels before and after beside the target's, and what is left to adjust. */
void print (const RenderResult::SmartBands& chosen, std::ostream& text)
{
    constexpr auto none = std::numeric_limits<float>::quiet_NaN();
    const auto row = [&] (const char* label, float lufs, const Measurement::Levels& levels)
    { text << MeasurementReport::rowText (label, lufs, levels) << '\n'; };
    const auto adjustment = [&] (const char* label, const TargetDistance& distance)
    {
        text << MeasurementReport::rowText (label, none, distance.adjustments);

        if (std::isfinite (distance.rms))
            text << "   rms " << std::fixed << std::setprecision (1) << distance.rms;

        text << '\n';
    };

    text << "Target: " << printable (chosen.target.title) << '\n';

    if (chosen.fit.has_value())
        text << "Fit:    " << percentText (chosen.fit->amountPercent) << " of the way\n";

    text << MeasurementReport::headingText();
    row ("input", chosen.before.lufs, chosen.before.bands);
    row ("target", chosen.target.lufs, chosen.target.values);
    adjustment ("adjustment dB", chosen.before);
    row ("result", chosen.after.lufs, chosen.after.bands);
    adjustment ("left dB", chosen.after);
}
} // namespace

void RenderReport::print (const RenderResult& result)
{
    // A stream of its own, whose form of numbers begins the same for every file.
    std::ostringstream text;
    text << "Input:  " << printable (result.input) << " (" << result.inputFormat << ", " << result.sampleRate << " Hz, "
         << (result.channels == 1 ? "mono" : "stereo") << ", " << std::fixed << std::setprecision (2) << result.seconds
         << " s)\n"
         << "Filter: " << (result.mode == FilterMode::mix ? "Mix" : "Master") << ", " << phaseText (result.phase)
         << " phase, " << result.delaySamples << " samples of delay taken off\n";

    for (const auto& band : result.bands)
        text << "  Band " << band.number << ": " << band.text << '\n';

    if (result.gainScalePercent != 100.0f)
        text << "  Gain scale " << result.gainScalePercent << " %\n";

    if (result.outputGainDb != 0.0f)
        text << "  Output gain " << result.outputGainDb << " dB\n";

    if (result.smartBands.has_value())
        ::print (*result.smartBands, text);
    else if (! result.preset.empty())
        text << "  Preset " << result.preset << " (a target; it changes no sound)\n";

    text << "Result: " << printable (result.output) << " (" << result.outputFormat << ", " << peakText (result.peak)
         << ")\n";
    std::cout << text.str();
}

nlohmann::json RenderReport::toJson (const RenderResult& result)
{
    auto bands = nlohmann::json::array();

    for (const auto& band : result.bands)
        bands.push_back (::toJson (band));

    nlohmann::json object { { "input", result.input },
                            { "output", result.output },
                            { "inputFormat", result.inputFormat },
                            { "outputFormat", result.outputFormat },
                            { "sampleRate", result.sampleRate },
                            { "channels", result.channels },
                            { "seconds", result.seconds },
                            { "mode", modeText (result.mode) },
                            { "phase", phaseText (result.phase) },
                            { "delaySamples", result.delaySamples },
                            { "bands", bands },
                            { "gainScale", tidy (result.gainScalePercent) },
                            { "outputGain", tidy (result.outputGainDb) },
                            { "preset", result.preset.empty() ? nlohmann::json() : nlohmann::json (result.preset) },
                            { "peakDb", result.peak > 0.0f ? nlohmann::json (peakDb (result.peak)) : nlohmann::json() },
                            { "clippedSamples", result.clipped },
                            { "notFiniteSamples", result.notFinite },
                            { "notes", result.notes } };

    if (result.smartBands.has_value())
    {
        object["target"] = MeasurementReport::toJson (result.smartBands->target);
        object["before"] = ::toJson (result.smartBands->before);
        object["after"] = ::toJson (result.smartBands->after);
        object["smartBands"] = ::toJson (result.smartBands->bands);
        object["fit"] = result.smartBands->fit.has_value()
                            ? nlohmann::json { { "amount", tidy (result.smartBands->fit->amountPercent) },
                                               { "levels", result.smartBands->fit->levels } }
                            : nlohmann::json();
    }

    return object;
}
