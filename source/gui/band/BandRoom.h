#pragma once

/** Sizes that the band's layout, the overlap panels and their limits share. Lengths are pixels. */
namespace BandRoom
{
/** The room component within the editor. */
inline constexpr int roomLeft = 25;
inline constexpr int roomTop = 42;
inline constexpr int roomMargins = 50;

/** A band's panel. */
inline constexpr int panelWidth = 186;
inline constexpr int panelHeight = 34;
inline constexpr int halfPanelHeight = panelHeight / 2;

/** Where the panel begins, counted from the middle of what it lies on. */
inline constexpr int panelLeftOfMiddle = 92;

/** From here on a band offers its high shelf. */
inline constexpr int shelfFromHz = 1600;
} // namespace BandRoom
