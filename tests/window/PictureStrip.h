#pragma once

#include "window/TestScreen.h"

#include <vector>

/** Pictures of one size put side by side, as frames of a film are. */
namespace PictureStrip
{
/** A picture of half the width and half the height, each pixel the mean of four. */
[[nodiscard]] Picture halved (const Picture& picture);

/** So many frames a row, with a black line between them. @throws std::invalid_argument for frames of two sizes */
[[nodiscard]] Picture of (const std::vector<Picture>& frames, int framesPerRow);

/** So many frames out of many, evenly spread, with the first and the last. */
[[nodiscard]] std::vector<Picture> spread (const std::vector<Picture>& frames, int count);
} // namespace PictureStrip
