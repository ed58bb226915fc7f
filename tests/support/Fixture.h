#pragma once

#include <nlohmann/json.hpp>

#include <fstream>
#include <limits>
#include <stdexcept>
#include <string>

/** A JSON file from the fixtures. "-inf" and "nan" stand there as strings. */
inline nlohmann::json readFixture (const std::string& name)
{
    std::ifstream file (std::string (SOLVANE_FIXTURES "/") + name);

    if (! file)
        throw std::runtime_error ("no fixture " + name);

    return nlohmann::json::parse (file);
}

inline double numberOf (const nlohmann::json& value)
{
    if (! value.is_string())
        return value.get<double>();

    return value == "-inf" ? -std::numeric_limits<double>::infinity() : std::numeric_limits<double>::quiet_NaN();
}
