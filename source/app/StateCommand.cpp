#include "app/StateCommand.h"

#include "app/Printable.h"
#include "app/SessionFile.h"
#include "core/parameters/ParameterTable.h"
#include "core/session/SessionXml.h"

#include <juce_data_structures/juce_data_structures.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <utility>
#include <vector>

namespace
{
constexpr int defaultScaleDb = 12;

/** The last child of a name, which is the one that counts; null where there is none. */
const juce::XmlElement* lastChild (const juce::XmlElement& parent, const char* name)
{
    const juce::XmlElement* last = nullptr;

    for (const auto* child : parent.getChildWithTagNameIterator (name))
        last = child;

    return last;
}

/** What a saved tree makes of a parameter: its value within its range, and its default where there is no number. */
float valueOf (const juce::XmlElement& tree, const ParameterRow& row)
{
    const auto defaultValue = static_cast<double> (row.defaultValue);
    auto value = defaultValue;

    for (const auto* child : tree.getChildWithTagNameIterator ("PARAM"))
        if (child->compareAttribute ("id", row.id))
            value = child->getDoubleAttribute ("value", defaultValue);

    return std::isfinite (value) ? std::clamp (static_cast<float> (value), row.minimum, row.maximum) : row.defaultValue;
}

juce::String textOf (const ParameterRow& row, float value)
{
    return row.text == ParameterText::framework ? juce::String (static_cast<int> (value))
                                                : ParameterTable::textOf (row.text, value);
}

void describeParameters (const juce::XmlElement& tree, const juce::String& indent)
{
    auto changed = 0;

    for (const auto& row : ParameterTable::rows())
    {
        const auto value = valueOf (tree, row);

        if (value == row.defaultValue)
            continue;

        std::cout << indent << row.name << ": " << textOf (row, value) << '\n';
        ++changed;
    }

    if (changed == 0)
        std::cout << indent << "every parameter at its default\n";
}

bool isTargetSet (const juce::XmlElement& settings)
{
    return settings.getBoolAttribute ("target-set-user", false)
           && ! std::isnan (SessionXml::getDecimal (settings, "lufs-overall"));
}

int scaleOf (const juce::XmlElement& settings)
{
    const auto scale = settings.getIntAttribute ("db-scale", defaultScaleDb);
    return scale > 0 ? scale : defaultScaleDb;
}

/** The comparison stores that hold something, with their letters. */
std::vector<std::pair<std::string, const juce::XmlElement*>> storesOf (const juce::XmlElement& root)
{
    std::vector<std::pair<std::string, const juce::XmlElement*>> stores;

    for (const auto* name : { "parameterStoreA", "parameterStoreB" })
        if (const auto* store = lastChild (root, name); store != nullptr && store->getFirstChildElement() != nullptr)
            stores.emplace_back (juce::String (name).getLastCharacters (1).toStdString(),
                                 store->getFirstChildElement());

    return stores;
}

/** A session may hold what steers a terminal. */
std::string
printableAttribute (const juce::XmlElement& element, const juce::String& name, const juce::String& defaultText = {})
{
    return printable (element.getStringAttribute (name, defaultText).toStdString());
}

void describeSettings (const juce::XmlElement& settings)
{
    std::cout << "Target of the user's: " << (isTargetSet (settings) ? "set" : "not set") << ", "
              << printableAttribute (settings, "lufs-overall", "0") << " LUFS, bands";

    for (int band = 0; band < 10; ++band)
        std::cout << ' ' << printableAttribute (settings, "lufs-" + juce::String (band), "0");

    std::cout << "\nWindow: " << settings.getIntAttribute ("width", 0) << " by "
              << settings.getIntAttribute ("height", 0) << "\nRoom scale: " << scaleOf (settings)
              << " dB\nComparison: " << (settings.getBoolAttribute ("comparison-A-selected", false) ? "A" : "B")
              << " selected\n"
              << "Highest thread priority: " << settings.getIntAttribute ("max-thread-priority", 0) << '\n';
}

void describeTrack (const juce::XmlElement& track)
{
    std::cout << "Reference track: " << printableAttribute (track, "display-name") << ", file "
              << printableAttribute (track, "file-path") << '\n';

    for (const auto* loop : track.getChildWithTagNameIterator ("loop"))
        std::cout << "  Loop from sample " << loop->getIntAttribute ("start-samples", 0) << " to "
                  << loop->getIntAttribute ("end-samples", 0)
                  << (loop->getBoolAttribute ("active", false) ? ", in use\n" : ", not in use\n");
}
void printText (const juce::XmlElement& root)
{
    std::cout << "Parameters that differ from their defaults:\n";
    describeParameters (root, "  ");

    if (const auto* settings = lastChild (root, "settings"))
        describeSettings (*settings);

    for (const auto* track : root.getChildWithTagNameIterator ("reference-track"))
        describeTrack (*track);

    for (const auto& [letter, store] : storesOf (root))
    {
        std::cout << "Comparison store " << letter << ":\n";
        describeParameters (*store, "  ");
    }
}

nlohmann::json numberOrNull (float value)
{
    return std::isfinite (value) ? nlohmann::json (value) : nlohmann::json();
}

/** Every parameter with its plain value. */
nlohmann::json parametersToJson (const juce::XmlElement& tree)
{
    auto values = nlohmann::json::object();

    for (const auto& row : ParameterTable::rows())
        values[row.id.toStdString()] = valueOf (tree, row);

    return values;
}

nlohmann::json settingsToJson (const juce::XmlElement& settings)
{
    auto levels = nlohmann::json::array();

    for (int band = 0; band < 10; ++band)
        levels.push_back (numberOrNull (SessionXml::getDecimal (settings, "lufs-" + juce::String (band))));

    return { { "targetSet", isTargetSet (settings) },
             { "targetLufs", numberOrNull (SessionXml::getDecimal (settings, "lufs-overall")) },
             { "targetBands", levels },
             { "window", { settings.getIntAttribute ("width", 0), settings.getIntAttribute ("height", 0) } },
             { "scaleDb", scaleOf (settings) },
             { "comparison", settings.getBoolAttribute ("comparison-A-selected", false) ? "A" : "B" },
             { "maxThreadPriority", settings.getIntAttribute ("max-thread-priority", 0) } };
}

nlohmann::json trackToJson (const juce::XmlElement& track)
{
    auto loops = nlohmann::json::array();

    for (const auto* loop : track.getChildWithTagNameIterator ("loop"))
        loops.push_back ({ { "start", loop->getIntAttribute ("start-samples", 0) },
                           { "end", loop->getIntAttribute ("end-samples", 0) },
                           { "active", loop->getBoolAttribute ("active", false) } });

    return { { "name", track.getStringAttribute ("display-name").toStdString() },
             { "file", track.getStringAttribute ("file-path").toStdString() },
             { "loops", loops } };
}

void printJson (const juce::XmlElement& root)
{
    const auto* settings = lastChild (root, "settings");
    nlohmann::json state { { "parameters", parametersToJson (root) },
                           { "settings", settings != nullptr ? settingsToJson (*settings) : nlohmann::json() },
                           { "referenceTracks", nlohmann::json::array() },
                           { "stores", nlohmann::json::object() } };

    for (const auto* track : root.getChildWithTagNameIterator ("reference-track"))
        state["referenceTracks"].push_back (trackToJson (*track));

    for (const auto& [letter, store] : storesOf (root))
        state["stores"][letter] = parametersToJson (*store);

    std::cout << state.dump (1) << '\n';
}
} // namespace

void StateCommand::run() const
{
    juce::MemoryBlock block;
    const auto root = SessionFile::load (file, block);

    if (json)
        printJson (*root);
    else
        printText (*root);
}
