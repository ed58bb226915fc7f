#include "core/SettingsUtilities.h"

#include <juce_audio_processors/juce_audio_processors.h>

#if ! JUCE_WINDOWS
    #include <sys/stat.h>
#endif

namespace
{
constexpr auto rootTag = "ZVQ-PRESETS";
constexpr auto settingsTag = "general-settings";
constexpr int moveTries = 5;
constexpr int moveRetryMilliseconds = 100;

/** Moving a file over another replaces it whatever its mode says, and an administrator may write to any: a target that
    nobody may write to counts as locked all the same. */
bool isLocked (const juce::File& file)
{
#if JUCE_WINDOWS
    return file.exists() && ! file.hasWriteAccess();
#else
    struct stat status
    {
    };
    return stat (file.getFullPathName().toRawUTF8(), &status) == 0
           && (status.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0;
#endif
}

bool moveOver (const juce::File& target, const juce::TemporaryFile& replacement)
{
    for (int attempt = 1; attempt <= moveTries; ++attempt)
    {
        if (! isLocked (target) && replacement.getFile().replaceFileIn (target))
            return true;

        if (attempt < moveTries)
            juce::Thread::sleep (moveRetryMilliseconds);
    }

    return false;
}
} // namespace

SettingsUtilities::SettingsUtilities (const juce::String& fileName, const juce::String& folderName)
    : file (juce::File::getSpecialLocation (juce::File::userApplicationDataDirectory)
                .getChildFile (folderName)
                .getChildFile (fileName))
{
}

void SettingsUtilities::loadSettings()
{
    juce::MemoryBlock contents;
    std::unique_ptr<juce::XmlElement> root;

    if (readFile (contents))
        root = juce::AudioProcessor::getXmlFromBinary (contents.getData(), static_cast<int> (contents.getSize()));

    if (root == nullptr || ! root->hasTagName (rootTag))
    {
        setDefaultSettings();
        return;
    }

    for (const auto* child : root->getChildWithTagNameIterator (settingsTag))
        readSettings (*child);
}

bool SettingsUtilities::saveSettings()
{
    juce::XmlElement root (rootTag);
    writeSettings (*root.createNewChildElement (settingsTag));

    juce::MemoryBlock contents;
    juce::AudioProcessor::copyXmlToBinary (root, contents);
    return writeFile (contents);
}

bool SettingsUtilities::readFile (juce::MemoryBlock& contents) const
{
    if (file == juce::File() || ! file.existsAsFile())
        return false;

    juce::FileInputStream stream (file);
    return stream.openedOk() && stream.readIntoMemoryBlock (contents) == static_cast<size_t> (file.getSize());
}

bool SettingsUtilities::writeFile (const juce::MemoryBlock& contents) const
{
    if (! file.existsAsFile() && file.create().failed())
        return false;

    if (contents.isEmpty())
    {
        juce::FileOutputStream stream (file);
        return stream.openedOk() && stream.setPosition (0) && stream.truncate().wasOk();
    }

    juce::TemporaryFile replacement (file);

    {
        juce::FileOutputStream stream (replacement.getFile());

        if (! stream.openedOk() || ! stream.write (contents.getData(), contents.getSize()))
            return false;

        stream.flush();

        if (stream.getStatus().failed())
            return false;
    }

    return moveOver (file, replacement);
}
