#pragma once

/** Tool tips of a band and its panels. The blank line at the end of each pads the bubble. */
namespace BandTips
{
inline constexpr auto control =
    "Gain Control: Click and drag on the main body of the control to adjust the gain.\n\n"
    "Q Bandwidth Handles: Click and drag the top/bottom handles to adjust the Q bandwidth.\n\n"
    "Hz Line: Click and drag the centre line to adjust the frequency.\n\n"
    "Double click on the Q and frequency controls to enter an amount manually.\n ";

inline constexpr auto qHandles =
    "The Q Bandwidth control determines the range of frequencies affected. Click and drag the Q bandwidth handle to "
    "make the band smaller for a thinner Q affecting a narrower range of frequencies. Click and drag the Q bandwidth "
    "handle to make the band larger for a wider Q affecting a broader range of frequencies.\n\n "
    "Click 'ctrl' to access EQ bands that are placed behind other EQ bands.\n ";

inline constexpr auto frequencyLine =
    "Click and drag to adjust the frequency of the band. Roll your mouse from the Hz adjustment control into the "
    "control panel readout to enter the Hz manually.\n\n"
    "Click 'ctrl' to access EQ bands that are placed behind other EQ bands.\n ";

inline constexpr auto readout =
    "The control panel readout displays the bands dB amount as default. Click to enter a dB amount manually.\n ";

inline constexpr auto solo = "Click the headphone icon to solo the EQ band.\n ";
inline constexpr auto bypass = "Click the power icon to bypass the EQ band.\n ";
inline constexpr auto close = "Click the X to delete the EQ band.\n ";

inline constexpr auto shelf =
    "The high-shelf/peak button allows you to switch between a high-shelf and peaking filter for that individual band. "
    "Bands created above 10kHz default to a high-shelf filter. The high-shelf icon appears on EQ bands above "
    "1.6kHz.\n ";

inline constexpr auto mid = "Select to use this band to filter only the Mid signal.\n ";
inline constexpr auto side = "Select to use this band to filter only the Side signal.\n ";
inline constexpr auto stereo =
    "Stereo: Click and drag to adjust the mid side balance. Click once to return to stereo.\n ";
} // namespace BandTips
