#include "app/StepNotes.h"

#include "core/parameters/ParameterTable.h"

#include <cmath>
#include <sstream>

namespace
{
using Kind = Settings::Parameter;

/** A value with the digits that it has. */
std::string textOf (float value)
{
    std::ostringstream text;
    text << value;
    return text.str();
}

/** "the gain 3.04 becomes 3"; nothing where the parameter holds what was asked for. */
std::string change (const juce::String& id, const char* what, float asked, float held)
{
    for (const auto& row : ParameterTable::rows())
    {
        // A hundredth of a step is what single precision leaves of numbers with a point.
        if (row.id != id || std::abs (asked - held) < 0.01f * row.step)
            continue;

        const auto steps = std::round (held / row.step);
        const auto tidy = row.step < 1.0f ? steps / std::round (1.0f / row.step) : held;
        return std::string ("the ") + what + " " + textOf (asked) + " becomes " + textOf (tidy);
    }

    return {};
}
} // namespace

std::vector<std::string> stepNotes (const EqualiserSettings& settings, const PluginModel& model)
{
    std::vector<std::string> notes;

    for (int index = 0; index < static_cast<int> (settings.bands.size()); ++index)
    {
        const auto& band = settings.bands[static_cast<std::size_t> (index)];
        std::string changes;

        const auto compare = [&] (Kind kind, const char* what, float asked)
        {
            const auto text =
                change (ParameterIds::ofBand (index, kind), what, asked, model.getBandValue (index, kind));
            changes += (changes.empty() || text.empty() ? "" : ", ") + text;
        };

        compare (Kind::frequency, "frequency", band.frequencyHz);
        compare (Kind::gain, "gain", band.gainDb);

        // A shelf has none that counts.
        if (! band.highShelf)
            compare (Kind::q, "Q", band.q);

        compare (Kind::midSide, "mid/side value", band.midSide);

        if (! changes.empty())
            notes.push_back ("of band " + std::to_string (index + 1) + " " + changes
                             + ". Bands go in steps of 10 Hz, 0.1 dB, 0.1 of Q and 0.01 between mid and side.");
    }

    if (const auto text =
            change (ParameterIds::gainScale, "gain scale", settings.gainScalePercent, model.gainScalePercent());
        ! text.empty())
        notes.push_back (text + ". It goes in steps of 1 percent.");

    if (const auto text = change (ParameterIds::outputGain, "output gain", settings.outputGainDb, model.outputGainDb());
        ! text.empty())
        notes.push_back (text + ". It goes in steps of 0.01 dB.");

    return notes;
}
