#include "gui/analysis/TrackRowLayout.h"

#include <algorithm>

namespace
{
constexpr int left = 25;
constexpr int top = 198;
constexpr int height = 24;
constexpr int gap = 2;

/** Both margins, and the two buttons at the right. */
constexpr int besideTheRows = 96;
} // namespace

juce::Rectangle<int> TrackRowLayout::boundsOf (int index, int rowCount, int windowWidth) noexcept
{
    const auto width = std::max (0, (windowWidth - (gap * rowCount + besideTheRows)) / std::max (1, rowCount));
    return { (width + gap) * index + left, top, width, height };
}
