#include "app/PresetsCommand.h"

#include "app/Measurement.h"
#include "core/presets/Presets.h"

#include <nlohmann/json.hpp>

#include <iomanip>
#include <iostream>

namespace
{
void printJson (const Presets::Library& library)
{
    auto list = nlohmann::json::array();

    for (const auto& group : library.groups())
        for (const auto& preset : group.presets)
            list.push_back ({ { "id", preset.id },
                              { "category", preset.category },
                              { "group", group.name.toStdString() },
                              { "name", preset.name.toStdString() },
                              { "lufs", preset.lufs },
                              { "frequencies", analysisCentresHz },
                              { "values", preset.values },
                              { "valuesInUse", MeasurementTarget::of (library, preset).values } });

    std::cout << list.dump (1) << '\n';
}

void printTable (const Presets::Library& library)
{
    std::cout << std::fixed << std::setprecision (1);

    for (const auto& group : library.groups())
    {
        std::cout << group.name << '\n';

        for (const auto& preset : group.presets)
        {
            std::cout << std::setw (5) << preset.id << "  " << std::left << std::setw (26) << preset.name << std::right
                      << std::setw (7) << preset.lufs << " LUFS ";

            for (const auto value : MeasurementTarget::of (library, preset).values)
                std::cout << std::setw (7) << value;

            std::cout << '\n';
        }
    }
}
} // namespace

void PresetsCommand::run() const
{
    const Presets::Library library;

    if (json)
        printJson (library);
    else
        printTable (library);
}
