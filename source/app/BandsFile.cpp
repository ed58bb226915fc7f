#include "app/BandsFile.h"

#include "app/InputFile.h"

#include <sstream>

std::vector<BandOption> BandsFile::read (const std::string& path)
{
    std::istringstream lines (InputFile::read (path));
    std::vector<BandOption> bands;
    auto number = 1;

    for (std::string line; std::getline (lines, line); ++number)
    {
        auto text = line.substr (0, line.find ('#'));
        text.erase (text.find_last_not_of (" \t\r") + 1);

        if (! text.empty())
            bands.push_back (BandOption::parse (text, "'" + path + "', line " + std::to_string (number) + ": "));
    }

    return bands;
}
