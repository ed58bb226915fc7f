#include "app/ParamsCommand.h"

#include "core/PluginProcessor.h"

#include <nlohmann/json.hpp>

#include <iomanip>
#include <iostream>

namespace
{
const juce::RangedAudioParameter& parameterAt (const VelmoraAudioProcessor& processor, int index)
{
    return *dynamic_cast<const juce::RangedAudioParameter*> (processor.getParameters()[index]);
}

void printJson (const VelmoraAudioProcessor& processor)
{
    auto list = nlohmann::json::array();

    for (int index = 0; index < processor.getParameters().size(); ++index)
    {
        const auto& parameter = parameterAt (processor, index);
        const auto& range = parameter.getNormalisableRange();
        const auto defaultValue = parameter.getDefaultValue();

        list.push_back ({ { "number", index },
                          { "id", parameter.paramID.toStdString() },
                          { "name", parameter.getName (64).toStdString() },
                          { "minimum", range.start },
                          { "maximum", range.end },
                          { "step", range.interval },
                          { "skew", range.skew },
                          { "default", parameter.convertFrom0to1 (defaultValue) },
                          { "reads", parameter.getText (defaultValue, 64).toStdString() },
                          { "automatable", parameter.isAutomatable() } });
    }

    std::cout << list.dump (1) << '\n';
}

void printTable (const VelmoraAudioProcessor& processor)
{
    std::cout << std::left << std::setw (7) << "number" << std::setw (23) << "id" << std::setw (22) << "name"
              << std::setw (9) << "minimum" << std::setw (9) << "maximum" << std::setw (7) << "step" << std::setw (6)
              << "skew" << std::setw (9) << "default" << std::setw (12) << "reads"
              << "automatable\n";

    for (int index = 0; index < processor.getParameters().size(); ++index)
    {
        const auto& parameter = parameterAt (processor, index);
        const auto& range = parameter.getNormalisableRange();
        const auto defaultValue = parameter.getDefaultValue();

        std::cout << std::setw (7) << index << std::setw (23) << parameter.paramID << std::setw (22)
                  << parameter.getName (64) << std::setw (9) << range.start << std::setw (9) << range.end
                  << std::setw (7) << range.interval << std::setw (6) << range.skew << std::setw (9)
                  << parameter.convertFrom0to1 (defaultValue) << std::setw (12) << parameter.getText (defaultValue, 64)
                  << (parameter.isAutomatable() ? "yes" : "no") << '\n';
    }
}
} // namespace

void ParamsCommand::run() const
{
    const VelmoraAudioProcessor processor (HostDescription {}, {}, VelmoraAudioProcessor::SettingsFile::leaveAlone);

    if (json)
        printJson (processor);
    else
        printTable (processor);
}
