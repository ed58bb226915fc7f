#include "support/TemporaryFolder.h"

#include <algorithm>
#include <stdexcept>
#include <unistd.h>

TemporaryFolder::TemporaryFolder()
{
    auto name = juce::File::getSpecialLocation (juce::File::tempDirectory)
                    .getChildFile ("solvane-test-XXXXXX")
                    .getFullPathName()
                    .toStdString();

    if (::mkdtemp (name.data()) == nullptr)
        throw std::runtime_error ("no folder for the test");

    folder = juce::File (juce::String (name));
}

TemporaryFolder::~TemporaryFolder()
{
    folder.deleteRecursively();
}

std::string TemporaryFolder::path (const std::string& name) const
{
    return folder.getFullPathName().toStdString() + "/" + name;
}

juce::File TemporaryFolder::file (const std::string& name) const
{
    // Absolute as it is, so that a tilde in front is a letter like any other.
    return juce::File (juce::String::fromUTF8 (path (name).c_str()));
}

std::vector<std::string> TemporaryFolder::names() const
{
    std::vector<std::string> result;

    for (const auto& entry : juce::RangedDirectoryIterator (folder, false, "*", juce::File::findFilesAndDirectories))
        result.push_back (entry.getFile().getFileName().toStdString());

    std::sort (result.begin(), result.end());
    return result;
}
