#include "gui/band/GainDrag.h"

namespace
{
/** Pixels from the front plane to the back wall. */
constexpr float wholeRange = 150.0f;
} // namespace

void GainDrag::begin (float depth, int row) noexcept
{
    startDepth = depth;
    startRow = row;
    lastRow = row;
    glide.reset (depth);
}

float GainDrag::dragTo (int row) noexcept
{
    lastRow = row;
    return glide.moveTo (startDepth - static_cast<float> (startRow - row) / wholeRange);
}

void GainDrag::bandMoved (float depth) noexcept
{
    begin (depth, lastRow);
}
