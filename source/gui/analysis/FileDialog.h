#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>
#include <memory>
#include <vector>

/** Asks the user for files, one question at a time and without holding up the host. A question that is still open comes
    to the front in place of another. Message thread. */
class FileDialog
{
public:
    struct Question
    {
        juce::String title;

        /** Such as "*.wav;*.mp3". */
        juce::String pattern;

        /** Flags of juce::FileBrowserComponent. */
        int flags = 0;

        /** The name that is offered for a file to be written. */
        juce::String suggestedName;
    };

    using Files = std::vector<juce::File>;

    /** No files where the user has changed his mind. */
    using Answer = std::function<void (const Files&)>;

    /** Shows a dialog; a test puts its own in the place of the system's. */
    using Opener = std::function<void (const Question&, Answer)>;

    FileDialog();

    void setOpener (Opener newOpener) { opener = std::move (newOpener); }

    /** Does not ask while another question is open. The answer comes later, and not at all once this object has gone.
     */
    void ask (const Question& question, Answer answer);

    [[nodiscard]] bool isOpen() const noexcept { return open; }

private:
    void openSystems (const Question& question, const Answer& answer);

    Opener opener;
    std::unique_ptr<juce::FileChooser> chooser;
    bool open = false;

    JUCE_DECLARE_WEAK_REFERENCEABLE (FileDialog)
    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (FileDialog)
};
