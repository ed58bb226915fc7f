#pragma once

#include "app/RenderTask.h"

#include <string>

/** Draws what smart bands did into a PNG file: input, target and result, the adjustments before and after, and each
   band with what all of them do together, measured. Message thread. Throws CommandError when the file cannot be
   written.
    @param result of a rendering that went by a target */
void drawRendering (const RenderResult& result, const std::string& path);
