#include "gui/analysis/FileDialog.h"

FileDialog::FileDialog()
    : opener ([this] (const Question& question, const Answer& answer) { openSystems (question, answer); })
{
}

void FileDialog::ask (const Question& question, Answer answer)
{
    if (open)
    {
        // The framework's own dialog; one of the desktop is a program of its own.
        juce::ModalComponentManager::getInstance()->bringModalComponentsToFront();
        return;
    }

    open = true;
    opener (question,
            [weak = juce::WeakReference<FileDialog> (this), answer = std::move (answer)] (const Files& files)
            {
                if (weak == nullptr)
                    return;

                weak->open = false;
                answer (files);
            });
}

void FileDialog::openSystems (const Question& question, const Answer& answer)
{
    const auto place =
        question.suggestedName.isEmpty()
            ? juce::File()
            : juce::File::getSpecialLocation (juce::File::userHomeDirectory).getChildFile (question.suggestedName);
    chooser = std::make_unique<juce::FileChooser> (question.title, place, question.pattern);
    chooser->launchAsync (question.flags,
                          [answer] (const juce::FileChooser& closed)
                          {
                              const auto results = closed.getResults();
                              answer ({ results.begin(), results.end() });
                          });
}
