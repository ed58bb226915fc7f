#pragma once

/** Which signal one BlockProcessor filters. `stereo` also serves a mono bus; `display` has no audio, its curve is
    drawn. */
enum class BlockProcessorMode
{
    stereo = 0,
    mid = 1,
    side = 2,
    display = 3
};
