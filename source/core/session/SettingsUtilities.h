#pragma once

#include <juce_core/juce_core.h>

/** Preferences that hold across sessions and instances, in one small file per user.

    The file holds XML text in the framework's binary wrapping. It is written beside its target and moved over it, so
    that a crash, a full disk or another instance leaves the old file or the new one, never half of either. The last
    instance to save wins. Message thread, or the constructor and destructor of the owner. */
class SettingsUtilities
{
public:
    virtual ~SettingsUtilities() = default;

    /** Puts the preferences into the element as attributes. */
    virtual void writeSettings (juce::XmlElement& settingsElement) = 0;

    /** Takes the preferences from the element. */
    virtual void readSettings (const juce::XmlElement& settingsElement) = 0;

    /** Used when there is no valid file. */
    virtual void setDefaultSettings() = 0;

    /** Reads the file. One that is missing or damaged gives the default settings; one without settings changes nothing.
     */
    void loadSettings();

    /** Writes the file. @returns false when that failed; the old file is then still there */
    bool saveSettings();

    /** Reads the whole file. @returns false when there is none or it cannot be read */
    [[nodiscard]] bool readFile (juce::MemoryBlock& contents) const;

    /** Replaces the file's contents, creating file and folders where needed. Up to five tries, 100 ms apart.
        @returns false when they all failed */
    [[nodiscard]] bool writeFile (const juce::MemoryBlock& contents) const;

    [[nodiscard]] const juce::File& settingsFile() const noexcept { return file; }

protected:
    /** The file lies in a folder of this name in the user's application data. */
    SettingsUtilities (const juce::String& fileName, const juce::String& folderName);

private:
    const juce::File file;
};
