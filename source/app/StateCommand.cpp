#include "app/StateCommand.h"

#include "app/CommandError.h"
#include "app/FileArgument.h"
#include "core/parameters/ParameterTable.h"
#include "core/session/SessionXml.h"

#include <juce_data_structures/juce_data_structures.h>

#include <algorithm>
#include <cmath>
#include <iostream>

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

void describeSettings (const juce::XmlElement& settings)
{
    const auto isTargetSet = settings.getBoolAttribute ("target-set-user", false)
                             && ! std::isnan (SessionXml::getDecimal (settings, "lufs-overall"));
    const auto scale = settings.getIntAttribute ("db-scale", defaultScaleDb);

    std::cout << "Target of the user's: " << (isTargetSet ? "set" : "not set") << ", "
              << settings.getStringAttribute ("lufs-overall", "0") << " LUFS, bands";

    for (int band = 0; band < 10; ++band)
        std::cout << ' ' << settings.getStringAttribute ("lufs-" + juce::String (band), "0");

    std::cout << "\nWindow: " << settings.getIntAttribute ("width", 0) << " by "
              << settings.getIntAttribute ("height", 0) << "\nRoom scale: " << (scale > 0 ? scale : defaultScaleDb)
              << " dB\nComparison: " << (settings.getBoolAttribute ("comparison-A-selected", false) ? "A" : "B")
              << " selected\n"
              << "Highest thread priority: " << settings.getIntAttribute ("max-thread-priority", 0) << '\n';
}

void describeTrack (const juce::XmlElement& track)
{
    std::cout << "Reference track: " << track.getStringAttribute ("display-name") << ", file "
              << track.getStringAttribute ("file-path") << '\n';

    for (const auto* loop : track.getChildWithTagNameIterator ("loop"))
        std::cout << "  Loop from sample " << loop->getIntAttribute ("start-samples", 0) << " to "
                  << loop->getIntAttribute ("end-samples", 0)
                  << (loop->getBoolAttribute ("active", false) ? ", in use\n" : ", not in use\n");
}
} // namespace

void StateCommand::run() const
{
    juce::MemoryBlock block;
    const auto source = fileFor (file);

    if (! source.existsAsFile() || ! source.loadFileAsData (block))
        throw CommandError (ExitCode::unreadableInput, "'" + file + "' cannot be read.");

    const auto root = SessionXml::parse (block.getData(), static_cast<int> (block.getSize()));

    if (root == nullptr || ! root->hasTagName ("ZVQ_Processor"))
        throw CommandError (ExitCode::unreadableInput, "'" + file + "' is not a session block of SOLVANE.");

    std::cout << "Parameters that differ from their defaults:\n";
    describeParameters (*root, "  ");

    if (const auto* settings = lastChild (*root, "settings"))
        describeSettings (*settings);

    for (const auto* track : root->getChildWithTagNameIterator ("reference-track"))
        describeTrack (*track);

    for (const auto* name : { "parameterStoreA", "parameterStoreB" })
        if (const auto* store = lastChild (*root, name); store != nullptr && store->getFirstChildElement() != nullptr)
        {
            std::cout << "Comparison store " << juce::String (name).getLastCharacters (1) << ":\n";
            describeParameters (*store->getFirstChildElement(), "  ");
        }
}
