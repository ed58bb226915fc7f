#pragma once

#include "core/references/ReferenceTrackModel.h"
#include "gui/analysis/FileDialog.h"

/** Lets the user choose files to be loaded as reference tracks. Message thread. */
class TrackChooser
{
public:
    /** Both outlive this object. */
    TrackChooser (ReferenceTrackModel& model, FileDialog& dialog);

    /** Asks for one file or several, unless there are as many tracks as can be; more files than that are dropped as a
        whole. */
    void chooseFiles();

private:
    ReferenceTrackModel& model;
    FileDialog& dialog;
};
