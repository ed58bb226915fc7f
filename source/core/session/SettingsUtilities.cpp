#include "core/session/SettingsUtilities.h"

#include "core/session/SessionXml.h"

#include <juce_audio_processors/juce_audio_processors.h>

#include <array>
#include <atomic>
#include <filesystem>

#if JUCE_WINDOWS
    #include <process.h>
#else
    #include <sys/stat.h>
    #include <unistd.h>
#endif

namespace
{
constexpr auto rootTag = "ZVQ-PRESETS";
constexpr auto settingsTag = "general-settings";
constexpr int moveTries = 5;
constexpr int moveRetryMilliseconds = 100;

/** A file of ours has some hundred bytes. */
constexpr std::size_t longestFile = std::size_t { 1 } << 20;

int processId() noexcept
{
#if JUCE_WINDOWS
    return _getpid();
#else
    return static_cast<int> (getpid());
#endif
}

std::filesystem::path pathOf (const juce::File& file)
{
#if JUCE_WINDOWS
    return file.getFullPathName().toWideCharPointer();
#else
    return file.getFullPathName().toStdString();
#endif
}

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

/** A name beside the target that no other instance uses. Chance alone does not do: processes that were forked from the
    same host draw the same numbers. */
juce::File temporaryBeside (const juce::File& target)
{
    static std::atomic<unsigned> count { 0 };
    const auto name = target.getFileNameWithoutExtension() + "_temp" + juce::String (processId()) + "-"
                      + juce::String (++count) + "-" + juce::String::toHexString (juce::Time::getHighResolutionTicks())
                      + target.getFileExtension();
    return target.getSiblingFile (name);
}

/** Removes its file at the end, where it has not been moved away by then. */
class ScopedFile
{
public:
    explicit ScopedFile (juce::File fileToOwn) : owned (std::move (fileToOwn)) { owned.deleteFile(); }
    ~ScopedFile() { owned.deleteFile(); }

    ScopedFile (const ScopedFile&) = delete;
    ScopedFile& operator= (const ScopedFile&) = delete;

    [[nodiscard]] const juce::File& get() const noexcept { return owned; }

private:
    juce::File owned;
};

bool writeAll (const juce::File& file, const juce::MemoryBlock& contents)
{
    {
        juce::FileOutputStream stream (file);

        if (! stream.openedOk() || ! stream.write (contents.getData(), contents.getSize()))
            return false;

        stream.flush();

        if (stream.getStatus().failed())
            return false;
    }

    // The stream calls it a success when a disk that runs full takes a part.
    return file.getSize() == static_cast<juce::int64> (contents.getSize());
}

/** In one step: the framework's own function falls back to deleting the target and copying. */
bool replaceInOneStep (const juce::File& target, const juce::File& replacement)
{
    std::error_code error;
    std::filesystem::rename (pathOf (replacement), pathOf (target), error);
    return ! error;
}

bool moveOver (const juce::File& target, const juce::File& replacement)
{
    for (int attempt = 1; attempt <= moveTries; ++attempt)
    {
        if (! isLocked (target) && replaceInOneStep (target, replacement))
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
        root = SessionXml::parse (contents.getData(), static_cast<int> (contents.getSize()));

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
    contents.reset();

    if (file == juce::File() || ! file.existsAsFile())
        return false;

    juce::FileInputStream stream (file);

    if (! stream.openedOk())
        return false;

    // To its end, whatever that is: another instance may put a file of another size in its place meanwhile, and the
    // framework takes a stream's length from the path.
    std::array<char, 4096> piece;

    while (contents.getSize() <= longestFile)
    {
        const auto count = stream.read (piece.data(), static_cast<int> (piece.size()));

        if (count <= 0)
            return count == 0 && stream.getStatus().wasOk();

        contents.append (piece.data(), static_cast<std::size_t> (count));
    }

    return false;
}

bool SettingsUtilities::writeFile (const juce::MemoryBlock& contents) const
{
    if (! file.exists() && file.create().failed())
        return false;

    if (! file.existsAsFile())
        return false;

    if (contents.isEmpty())
    {
        juce::FileOutputStream stream (file);
        return stream.openedOk() && stream.setPosition (0) && stream.truncate().wasOk();
    }

    const ScopedFile replacement (temporaryBeside (file));
    return writeAll (replacement.get(), contents) && moveOver (file, replacement.get());
}
