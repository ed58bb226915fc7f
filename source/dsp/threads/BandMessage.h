#pragma once

#include "dsp/BandDrawing.h"
#include "dsp/BlockProcessorMode.h"

#include <string>

/** One parameter update on its way to a BlockProcessor. */
struct BandMessage
{
    BlockProcessorMode mode = BlockProcessorMode::stereo;
    float value = 0.0f;
    std::string parameterId;
};

/** A message as it stands in a queue. `gainScaleApplied` says that the value already holds the gain scale, so that the
    design must not scale it again. */
struct QueuedMessage
{
    BandMessage message;
    bool gainScaleApplied = false;

    /** What the message came to when it was sent. */
    int band = 0;
    BandDrawing drawing;
};
