#include "app/BandsFile.h"

#include "app/CommandError.h"
#include "app/FileArgument.h"

#include <juce_core/juce_core.h>

#include <sstream>

std::vector<BandOption> BandsFile::read (const std::string& path)
{
    const auto file = fileFor (path);
    juce::MemoryBlock bytes;

    if (! file.existsAsFile() || ! file.loadFileAsData (bytes))
        throw CommandError (ExitCode::unreadableInput, "'" + path + "' cannot be read.");

    std::istringstream lines (std::string (static_cast<const char*> (bytes.getData()), bytes.getSize()));
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
