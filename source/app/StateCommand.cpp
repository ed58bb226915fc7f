#include "app/StateCommand.h"

#include "app/CommandError.h"
#include "app/FileArgument.h"
#include "core/ParameterTable.h"
#include "core/SessionXml.h"

#include <juce_data_structures/juce_data_structures.h>

#include <iostream>

namespace
{
/** The value of a parameter in a saved tree, or its default. */
double valueOf (const juce::XmlElement& tree, const ParameterRow& row)
{
    if (const auto* child = tree.getChildByAttribute ("id", row.id))
        return child->getDoubleAttribute ("value", static_cast<double> (row.defaultValue));

    return static_cast<double> (row.defaultValue);
}

juce::String textOf (const ParameterRow& row, double value)
{
    return row.text == ParameterText::framework ? juce::String (static_cast<int> (value))
                                                : ParameterTable::textOf (row.text, static_cast<float> (value));
}

void describeParameters (const juce::XmlElement& tree, const juce::String& indent)
{
    auto changed = 0;

    for (const auto& row : ParameterTable::rows())
    {
        const auto value = valueOf (tree, row);

        if (static_cast<float> (value) == row.defaultValue)
            continue;

        std::cout << indent << row.name << ": " << textOf (row, value) << '\n';
        ++changed;
    }

    if (changed == 0)
        std::cout << indent << "every parameter at its default\n";
}

void describeSettings (const juce::XmlElement& settings)
{
    std::cout << "Target of the user's: " << (settings.getBoolAttribute ("target-set-user", false) ? "set" : "not set")
              << ", " << settings.getStringAttribute ("lufs-overall", "0") << " LUFS, bands";

    for (int band = 0; band < 10; ++band)
        std::cout << ' ' << settings.getStringAttribute ("lufs-" + juce::String (band), "0");

    std::cout << "\nWindow: " << settings.getIntAttribute ("width", 0) << " by "
              << settings.getIntAttribute ("height", 0)
              << "\nRoom scale: " << settings.getStringAttribute ("db-scale", "12")
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

    for (const auto* settings : root->getChildWithTagNameIterator ("settings"))
        describeSettings (*settings);

    for (const auto* track : root->getChildWithTagNameIterator ("reference-track"))
        describeTrack (*track);

    for (const auto* name : { "parameterStoreA", "parameterStoreB" })
        if (const auto* store = root->getChildByName (name);
            store != nullptr && store->getFirstChildElement() != nullptr)
        {
            std::cout << "Comparison store " << juce::String (name).getLastCharacters (1) << ":\n";
            describeParameters (*store->getFirstChildElement(), "  ");
        }
}
