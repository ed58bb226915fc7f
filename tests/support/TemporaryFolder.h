#pragma once

#include <juce_core/juce_core.h>

#include <string>
#include <vector>

/** A folder for one test, removed with it. */
class TemporaryFolder
{
public:
    TemporaryFolder();
    ~TemporaryFolder();

    TemporaryFolder (const TemporaryFolder&) = delete;
    TemporaryFolder& operator= (const TemporaryFolder&) = delete;

    /** The path of a file in here. */
    [[nodiscard]] std::string path (const std::string& name) const;
    [[nodiscard]] juce::File file (const std::string& name) const;

    /** Names of everything in here, also of what is hidden, in order. */
    [[nodiscard]] std::vector<std::string> names() const;

private:
    juce::File folder;
};
