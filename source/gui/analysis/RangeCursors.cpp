#include "gui/analysis/RangeCursors.h"

#include "gui/look/Icons.h"

namespace
{
constexpr int size = 16;

juce::MouseCursor cursorOf (Icons::Role role)
{
    const auto document = juce::parseXML (Icons::svg (role));
    const auto drawable = document != nullptr ? juce::Drawable::createFromSVG (*document) : nullptr;

    if (drawable == nullptr)
        return {};

    juce::Image picture (juce::Image::ARGB, size, size, true, juce::SoftwareImageType());
    juce::Graphics g (picture);
    drawable->draw (g, 1.0f);
    return { picture, size / 2, size / 2 };
}
} // namespace

RangeCursors::RangeCursors()
    : addCursor (cursorOf (Icons::Role::cursorAdd)),
      removeCursor (cursorOf (Icons::Role::cursorRemove)),
      moveCursor (cursorOf (Icons::Role::cursorMove))
{
}

const juce::MouseCursor& RangeCursors::of (RangeMouse::Cursor cursor) const noexcept
{
    switch (cursor)
    {
        case RangeMouse::Cursor::add:
            return addCursor;
        case RangeMouse::Cursor::remove:
            return removeCursor;
        case RangeMouse::Cursor::move:
            break;
    }

    return moveCursor;
}
