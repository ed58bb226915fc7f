#include "gui/analysis/TrackChooser.h"

TrackChooser::TrackChooser (ReferenceTrackModel& tracks, FileDialog& dialogToAsk) : model (tracks), dialog (dialogToAsk)
{
}

void TrackChooser::chooseFiles()
{
    constexpr auto limit = static_cast<std::size_t> (ReferenceTrackModel::trackLimit);
    using Browser = juce::FileBrowserComponent;

    if (model.tracks().size() >= limit)
        return;

    dialog.ask ({ "Select a Wave/MP3/AIFF/FLAC file to play...",
                  TrackFile::chooserPattern,
                  Browser::openMode | Browser::canSelectFiles | Browser::canSelectMultipleItems,
                  {} },
                [&tracks = model] (const FileDialog::Files& files)
                {
                    if (files.size() > limit)
                        return;

                    for (const auto& file : files)
                    {
                        ReferenceTrackRequest request;
                        request.filePath = file.getFullPathName();
                        tracks.enqueue (std::move (request));
                    }
                });
}
