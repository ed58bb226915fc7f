#pragma once

#include <juce_graphics/juce_graphics.h>

/** The interface's colours, ARGB, each by what it is for. Nothing in the interface names a colour elsewhere. */
namespace Palette
{
using Argb = juce::uint32;

inline constexpr Argb barDark = 0xFF141414; ///< inner ends of the bars' gradients
inline constexpr Argb sliderPanel = 0xFF111416;
inline constexpr Argb scaleSelector = 0xFF1B1B1B;
inline constexpr Argb bubble = 0xFF1D1D1D;
inline constexpr Argb analysis = 0xFF0F0F0F;
inline constexpr Argb trackGround = 0xFF1D1D1D; ///< behind the waveform, and of rows that are not selected
inline constexpr Argb selectedRow = 0xFF232323;
inline constexpr Argb rowText = 0xFF565656; ///< of rows that are not selected
inline constexpr Argb rowTyping = 0xFF00537F;
inline constexpr Argb trackStatus = 0xFF0A0A0A;
inline constexpr Argb auditionHint = 0xFF320000;
inline constexpr Argb outlineBright = 0xFF009EFF;
inline constexpr Argb outlineDark = 0xFF4D4D4D;
inline constexpr Argb activeRangeBright = 0xFFFFFFFF;
inline constexpr Argb activeRangeDark = 0xFFC8C8C8;
inline constexpr Argb inactiveRangeBright = 0xFF14D222;
inline constexpr Argb inactiveRangeDark = 0xFF646464;
inline constexpr Argb centreGradient = 0xFF1E1E1E;
inline constexpr Argb menuSeparator = 0xFF1E1E1E;
inline constexpr Argb bandPanel = 0xFF202020;
inline constexpr Argb mainWindow = 0xFF222222;
inline constexpr Argb barLight = 0xFF282828; ///< outer ends of the bars' gradients
inline constexpr Argb menu = 0xFF282828;
inline constexpr Argb wall = 0xFF2A2A2A;
inline constexpr Argb sliderTrack = 0xFF3B3B3B;
inline constexpr Argb menuHighlight = 0xFF3B3B3B;
inline constexpr Argb inactiveBand = 0xFF555555;
inline constexpr Argb panelOutline = 0xFF555555;
inline constexpr Argb frequencyLabel = 0xFF7D7D7D;
inline constexpr Argb selectedScale = 0xFF808080;
inline constexpr Argb button = 0xFF808080;
inline constexpr Argb buttonOn = 0xFF00CC00;
inline constexpr Argb buttonDown = 0xFFCCCCCC;
inline constexpr Argb menuDisabled = 0xFF909090;
inline constexpr Argb thumb = 0xFF969696;
inline constexpr Argb thumbDragged = 0xFFAAAAAA;
inline constexpr Argb thumbInner = 0xFFC8C8C8;
inline constexpr Argb separator = 0xFFB4B4B4; ///< of the top bar
inline constexpr Argb soloFocus = 0xFFC8000F;
inline constexpr Argb secondaryLabel = 0xFFC8C8C8;
inline constexpr Argb markerFrame = 0xFFD3D3D3;
inline constexpr Argb hintLabel = 0xFFE6E6E6;
inline constexpr Argb menuText = 0xFFEAEAEA;
inline constexpr Argb menuTitle = 0xFFEAEAEB;
inline constexpr Argb heat = 0xFFFF8C00;    ///< of the strips, by an alpha
inline constexpr Argb warning = 0xFFFFA200; ///< badges, and a slider's ticks far from its thumb
inline constexpr Argb gainScaleInUse = 0xFFFFD900;
inline constexpr Argb levelMatch = 0xFF21D22C;
inline constexpr Argb target = 0xFF32CD32;
inline constexpr Argb message = 0xFFFF0000;
inline constexpr Argb icon = 0xFFFFFFFF;
inline constexpr Argb text = 0xFFFFFFFF;
inline constexpr Argb focusRing = 0x80FFFFFF; ///< around what the keyboard acts on
} // namespace Palette
