#pragma once

#include <gtest/gtest.h>

#include <juce_gui_basics/juce_gui_basics.h>

/** Pictures that were looked at once, and that the window is compared with from then on. */
namespace GoldenPicture
{
/** A pixel differs when one of its channels, 0 to 255, is off by more than this: another compiler's or library's last
    bit moves the edge of a shape by less, a colour that someone has changed by more. */
inline constexpr int channelTolerance = 8;

/** So many pixels of a picture may differ, in pixels of the display. The smallest thing that has a meaning of its own,
    the coloured fill of a band's two marks on the walls, is twice as large. */
inline constexpr int pixelTolerance = 12;

/** Where two pictures of one size differ. */
struct Difference
{
    int pixels = 0;

    /** The largest distance of two channels. */
    int largest = 0;

    /** What holds all pixels that differ. */
    juce::Rectangle<int> area;

    /** The expected picture, dimmed, with what differs in a glaring colour. */
    juce::Image picture;
};

/** @throws std::invalid_argument for pictures of two sizes */
[[nodiscard]] Difference differenceOf (const juce::Image& actual, const juce::Image& expected);

/** Compares a picture with the golden one of this name. A golden picture that is missing is a failure. Of what fails,
    the picture and the difference are left in the build folder, and the message says where. */
[[nodiscard]] testing::AssertionResult matches (const juce::Image& actual, const juce::String& name);

/** From now on matches() makes the golden picture what it is given. A file stays untouched while no pixel changes. */
void beginUpdate();
} // namespace GoldenPicture
